#pragma once
// The structure of a RIS dump as risunlod writes it: schema headers, table definitions, the
// format line and the rows up to the end marker, read a block at a time.

#include "pds/blocklinereader.h"

#include <QByteArray>
#include <QList>
#include <QString>

class QIODevice;

namespace fx {

inline constexpr char kRISEndOfTable[] = "***RIS*** End of Table ***RIS***";
inline constexpr char kRISEndOfSchema[] = "***RIS*** End of Schema ***RIS***";
inline constexpr char kRISVariable[] = "***variable***";

/// One column of a dump table.
struct RISDumpColumn
{
    QString name;
    QString type;       ///< lower-cased as declared: "char(20)", "int not null", "decimal(10,2)"
    qsizetype span = 0; ///< fixed form: characters of a row the field takes, its separator blank included
};

/// A dump table's definition and the form of its rows.
struct RISDumpTable
{
    QString name;
    QList<RISDumpColumn> columns;
    bool fixed = false; ///< fixed-width rows; free form ("***variable***") otherwise
};

/// Reads a dump forward once: finds a schema, a table in it, its definition and its rows.
///
/// Names are compared in lower case. Failures are raised without a source (the caller's frame
/// names the procedure).
class RISDumpReader
{
public:
    explicit RISDumpReader(QIODevice &device, qsizetype blockSize = BlockLineReader::kDefaultBlockSize);

    /// The schema a header line names ("default schema", "create [secure] schema"); empty otherwise.
    static QByteArray SchemaOfLine(QByteArrayView line);
    /// The table a "create table" line names; empty for any other line.
    static QByteArray TableOfLine(QByteArrayView line);

    /// The next line of the dump without its line end; false at the end of the input.
    bool ReadLine(QByteArrayView &line);
    /// Reads on to the header of `schema`; false when the input ends first.
    bool FindSchema(const QString &schema);
    /// Reads on within the current schema to the definition of `table`; false when the schema
    /// or the input ends first.
    bool FindTable(const QString &table);
    /// Reads the definition, insert and format lines of the table FindTable found.
    RISDumpTable ReadTableHeader();
    /// The next rows of the table: whole lines with their line ends, valid until the next call;
    /// false once the rows end. Read on until false before asking EndOfTableFound().
    bool ReadRows(QByteArrayView &rows);
    /// True once the rows ended at the table's end marker.
    bool EndOfTableFound() const { return m_endOfTableFound; }

private:
    bool NextLine(QByteArrayView &line);
    void PushBack(QByteArrayView line);
    void ReadWidths(RISDumpTable &table, QByteArrayView line);
    /// Looks at a line where a row could stand: true if it ends the rows (and notes whether it
    /// was the end marker, or what must follow for the marker to come yet).
    bool EndsRows(QByteArrayView line);
    void FindEndMarkerAfterTrailer();

    BlockLineReader m_lines;
    QByteArray m_pushedBack;
    bool m_hasPushedBack = false;
    QByteArray m_definition;
    bool m_rowsEnded = false;
    bool m_inTrailer = false;
    bool m_trailerPending = false;  ///< lines after the rows still to be searched for the marker
    bool m_endOfTableFound = false;
};

/// The widest char column the text driver takes.
inline constexpr qsizetype kMaxTextCharWidth = 239;

/// Fixed form: the characters of a field the text file keeps, its span, a char column's
/// capped at kMaxTextCharWidth.
qsizetype FixedTextWidth(const RISDumpColumn &column);

/// The rows of a block as the text file holds them: free-form rows through
/// AppendFreeRowDelimited, fixed-form rows as they stand (with `replaceNull`, through
/// ReplaceNullNumbersInFixedRow), each field cut to its FixedTextWidth. Gives `rows` itself or a
/// view of `buffer`.
QByteArrayView RowsAsText(const RISDumpTable &table, QByteArrayView rows, bool replaceNull, QByteArray &buffer);

/// True for the dump types whose NULL is the number -32768: smallint, int, decimal, real, double.
bool IsRISNumberType(const QString &type);

/// Appends a free-form row as fields separated by the character 1, without quotes and with
/// doubled quotes made single; a NULL becomes an empty field. With `replaceNull` the number
/// -32768 becomes 0. `columns` picks how blanks between values are read: one blank ends each
/// value and a NULL takes two blanks (three are read too); a row that fits neither has its
/// runs of blanks taken as single separators.
void AppendFreeRowDelimited(QByteArrayView line, int columns, bool replaceNull, QByteArray &out);

/// Overwrites, in a fixed-form row, each -32768 of the fields flagged in `numeric` by "0" and
/// blanks, so that the row keeps its width.
void ReplaceNullNumbersInFixedRow(char *row, qsizetype length, const QList<RISDumpColumn> &columns);

} // namespace fx

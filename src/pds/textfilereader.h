#pragma once
// Our text driver: the rows of a text file as its Schema.ini entry describes them.

#include "pds/blocklinereader.h"
#include "pds/recordset.h"
#include "pds/schemaini.h"

#include <QFile>

#include <memory>

namespace fx {

/// Reads a text file row by row into typed values: "short" and "long" give qint64, "double"
/// double, "datetime" QDateTime, "char" and "memo" QString. An empty field is NULL, and so is a
/// field of blanks in fixed length, where text loses its trailing blanks. A number or date that
/// does not read as one is NULL. Delimited text keeps its blanks; quotes have no meaning.
class TextFileReader
{
public:
    /// Opens `textFile` with its Schema.ini entry; raises when either is missing.
    explicit TextFileReader(const QString &textFile, qsizetype blockSize = BlockLineReader::kDefaultBlockSize);
    ~TextFileReader();

    /// The columns with their ADO types and sizes.
    const QList<RecordsetField> &Fields() const { return m_fields; }
    /// The next row; false at the end of the file.
    bool Next(QVariantList &row);

private:
    QVariant Convert(int column, QByteArrayView field) const;

    TextFileFormat m_format;
    QList<RecordsetField> m_fields;
    QFile m_file;
    std::unique_ptr<BlockLineReader> m_lines;
    bool m_ansi = true;
};

} // namespace fx

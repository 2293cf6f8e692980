#pragma once
// Bulk rows into a table of the local store: the end of every import route.

#include "pds/recordset.h"
#include "pds/sqlitedb.h"

#include <memory>
#include <optional>

namespace fx {

/// Appends rows to `table`, creating it from `fields` when it does not exist, inside one
/// transaction per slice of rows so that memory and journal stay bounded.
///
/// Invariant: rows added before Finish() are committed only by Finish() or by a full slice; a
/// failure (or leaving without Finish) rolls the open slice back.
class TableImporter
{
public:
    static constexpr int kSliceRows = 10000;

    TableImporter(SqliteDb &db, const QString &table, const QList<RecordsetField> &fields);
    TableImporter(const TableImporter &) = delete;
    TableImporter &operator=(const TableImporter &) = delete;
    ~TableImporter();

    /// True when the table existed before (rows go in by column position, as INSERT ... SELECT *).
    bool TableExisted() const { return m_tableExisted; }
    void AddRow(const QVariantList &row);
    void Finish();
    qint64 RowCount() const { return m_rows; }

private:
    void BeginSlice();

    SqliteDb &m_db;
    bool m_tableExisted = false;
    int m_columnCount = 0;
    std::optional<SqliteStatement> m_insert;
    std::unique_ptr<SqliteTransaction> m_slice;
    int m_inSlice = 0;
    qint64 m_rows = 0;
};

/// True when the local store has a table of this name (compared without regard to case).
bool IsLocalTableExists(SqliteDb &db, const QString &table);

/// A name in brackets for a statement of the local store; a name holding "]" goes in double
/// quotes instead, with any double quote doubled.
QString BracketName(const QString &name);

} // namespace fx

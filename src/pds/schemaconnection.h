#pragma once
// An open connection to a project schema of the SQL kinds (Oracle, SQL Server, PostgreSQL, SQLite).

#include "pds/recordset.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace fx {

/// One column of a schema table as the catalog tells it.
struct ColumnDescription
{
    QString name;
    QString type;      ///< the database's own type text, as "char(20)" or "integer"
    int adoType = 0;   ///< the ADO type number it maps to
    qint64 size = 0;   ///< defined size, characters for text
};

/// One statement with "?" markers and the rows of values it runs with, each row binding its
/// values to the markers in order (a null QVariant binds NULL).
struct StatementBatch
{
    QString sql;
    QList<QVariantList> rows;
};

/// A connection to the database behind a project schema.
class SchemaConnection
{
public:
    virtual ~SchemaConnection() = default;

    /// Makes `schema` the default for the statements that follow. Reading and writing differ
    /// only in the text of Oracle's statement.
    virtual void UseSchema(const QString &schema, bool forWrite) = 0;
    /// Runs a query into an in-memory result.
    virtual Recordset Read(const QString &sql) = 0;
    /// Runs a query and hands its fields once, then its rows in slices of at most `sliceRows`.
    virtual void ReadInSlices(const QString &sql, int sliceRows,
                              const std::function<void(const QList<RecordsetField> &)> &onFields,
                              const std::function<void(const QList<QVariantList> &)> &onSlice) = 0;
    /// Runs one statement that returns no rows.
    virtual void Execute(const QString &sql) = 0;
    virtual QStringList Tables(const QString &schema) = 0;
    virtual QList<ColumnDescription> Columns(const QString &schema, const QString &table) = 0;

    /// Starts a transaction: what follows stays only with Commit().
    virtual void Begin() = 0;
    /// Makes the transaction's changes lasting and goes back to committing each statement.
    virtual void Commit() = 0;
    /// Undoes the transaction's changes and goes back to committing each statement.
    virtual void Rollback() = 0;
    /// Runs `sql` once for each of `rows`, its markers bound to the row's values; gives the
    /// rows changed in all.
    virtual qint64 ExecuteBatch(const QString &sql, const QList<QVariantList> &rows) = 0;
};

} // namespace fx

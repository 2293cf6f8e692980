#pragma once
// The project schema embedded: every schema is one SQLite file `<schema>.db` in a folder.

#include "pds/schemaconnection.h"
#include "pds/sqlitedb.h"

#include <memory>

namespace fx {

/// A schema connection of kind 4. It holds the file of the schema last chosen open.
class SqliteSchemaConnection : public SchemaConnection
{
public:
    /// Raises when the folder does not exist.
    explicit SqliteSchemaConnection(const QString &folder);

    /// The file that holds `schema`.
    QString SchemaFile(const QString &schema) const;

    /// Opens the schema's file (a blank schema keeps the current one); raises naming the file
    /// when it is missing.
    void UseSchema(const QString &schema, bool forWrite) override;
    Recordset Read(const QString &sql) override;
    void ReadInSlices(const QString &sql, int sliceRows,
                      const std::function<void(const QList<RecordsetField> &)> &onFields,
                      const std::function<void(const QList<QVariantList> &)> &onSlice) override;
    void Execute(const QString &sql) override;
    QStringList Tables(const QString &schema) override;
    QList<ColumnDescription> Columns(const QString &schema, const QString &table) override;
    /// Takes the file's write lock at once, so that a second writer waits or fails before any change.
    void Begin() override;
    void Commit() override;
    void Rollback() override;
    qint64 ExecuteBatch(const QString &sql, const QList<QVariantList> &rows) override;

private:
    /// The open schema; raises when none was chosen yet.
    SqliteDb &Db();

    QString m_folder;
    QString m_schema;
    std::unique_ptr<SqliteDb> m_db;
};

} // namespace fx

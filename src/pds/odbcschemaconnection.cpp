#include "pds/odbcschemaconnection.h"

#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pds/sqlstatements.h"

namespace fx {

QString ConfiguredOdbcDriver(const ConfigKey &key)
{
    return ReadConfigKey(ProgramDir() + QStringLiteral("Fendrix.ini"), key);
}

OdbcSchemaConnection::OdbcSchemaConnection(DBConType kind, const QString &connectionString)
    : m_kind(kind)
    , m_connection(connectionString)
{
}

void OdbcSchemaConnection::UseSchema(const QString &schema, bool forWrite)
{
    for (const QString &statement : SchemaStatements(m_kind, schema, forWrite))
        m_connection.Execute(statement);
}

Recordset OdbcSchemaConnection::Read(const QString &sql)
{
    return m_connection.Read(ServerStatement(m_kind, sql));
}

void OdbcSchemaConnection::ReadInSlices(const QString &sql, int sliceRows,
                                        const std::function<void(const QList<RecordsetField> &)> &onFields,
                                        const std::function<void(const QList<QVariantList> &)> &onSlice)
{
    m_connection.ReadInSlices(ServerStatement(m_kind, sql), sliceRows, onFields, onSlice);
}

void OdbcSchemaConnection::Execute(const QString &sql)
{
    m_connection.Execute(ServerStatement(m_kind, sql));
}

QString OdbcSchemaConnection::CatalogSchema(const QString &schema) const
{
    if (m_kind == DBConType::Oracle)
        return schema.toUpper();
    // A plain name goes bare into SET search_path, where the server folds it to lower case.
    if (m_kind == DBConType::PostgreSQL && PostgreSQLName(schema) == schema)
        return schema.toLower();
    return schema;
}

QStringList OdbcSchemaConnection::Tables(const QString &schema)
{
    return m_connection.Tables(CatalogSchema(schema));
}

QList<ColumnDescription> OdbcSchemaConnection::Columns(const QString &schema, const QString &table)
{
    const QString catalogSchema = CatalogSchema(schema);
    QList<ColumnDescription> columns =
        m_connection.Columns(catalogSchema, m_kind == DBConType::Oracle ? table.toUpper() : table);
    if (!columns.isEmpty())
        return columns;
    // The catalog matches names exactly; callers name tables in any case, as the servers' SQL lets them.
    for (const QString &name : m_connection.Tables(catalogSchema)) {
        if (name.compare(table, Qt::CaseInsensitive) == 0 && name != table)
            return m_connection.Columns(catalogSchema, name);
    }
    return columns;
}

void OdbcSchemaConnection::Begin()
{
    m_connection.SetAutoCommit(false);
}

void OdbcSchemaConnection::Commit()
{
    m_connection.EndTransaction(true);
    m_connection.SetAutoCommit(true);
}

void OdbcSchemaConnection::Rollback()
{
    m_connection.EndTransaction(false);
    m_connection.SetAutoCommit(true);
}

qint64 OdbcSchemaConnection::ExecuteBatch(const QString &sql, const QList<QVariantList> &rows)
{
    OdbcStatement statement(m_connection);
    statement.Prepare(ServerStatement(m_kind, sql));
    qint64 changed = 0;
    for (const QVariantList &row : rows)
        changed += statement.ExecutePrepared(row);
    return changed;
}

} // namespace fx

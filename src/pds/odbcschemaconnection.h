#pragma once
// The project schema in Oracle, SQL Server or PostgreSQL, reached through ODBC.

#include "frame/configkeys.h"
#include "pds/cris.h"
#include "pds/odbc.h"
#include "pds/schemaconnection.h"

namespace fx {

namespace configkey {
// The ODBC driver of each server kind, in Fendrix.ini beside the program.
inline constexpr ConfigKey OracleDriver{"ODBC", "OracleDriver", "Oracle"};
inline constexpr ConfigKey SQLServerDriver{"ODBC", "SQLServerDriver", "ODBC Driver 17 for SQL Server"};
inline constexpr ConfigKey PostgreSQLDriver{"ODBC", "PostgreSQLDriver", "PostgreSQL Unicode"};
} // namespace configkey

/// The ODBC driver name Fendrix.ini gives for a server kind, else the key's default.
QString ConfiguredOdbcDriver(const ConfigKey &key);

/// A schema connection of kind 1 (Oracle), 2 (SQL Server) or 3 (PostgreSQL). Every statement a
/// caller gives is in RIS syntax and goes to the server through ServerStatement.
class OdbcSchemaConnection : public SchemaConnection
{
public:
    /// Connects with `connectionString`; a failure's text never holds the password.
    OdbcSchemaConnection(DBConType kind, const QString &connectionString);

    void UseSchema(const QString &schema, bool forWrite) override;
    Recordset Read(const QString &sql) override;
    void ReadInSlices(const QString &sql, int sliceRows,
                      const std::function<void(const QList<RecordsetField> &)> &onFields,
                      const std::function<void(const QList<QVariantList> &)> &onSlice) override;
    void Execute(const QString &sql) override;
    QStringList Tables(const QString &schema) override;
    QList<ColumnDescription> Columns(const QString &schema, const QString &table) override;
    void Begin() override;
    void Commit() override;
    void Rollback() override;
    qint64 ExecuteBatch(const QString &sql, const QList<QVariantList> &rows) override;

private:
    /// The schema as the server's catalog spells it: Oracle keeps plain names in capitals.
    QString CatalogSchema(const QString &schema) const;

    DBConType m_kind;
    OdbcConnection m_connection;
};

} // namespace fx

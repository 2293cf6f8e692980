#include "pdssim/schemapostgres.h"
#include "pdssim/sitemessages.h"

#include "pdssim/schemadefinition.h"

#include "frame/failure.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/odbc.h"
#include "pds/sqlitedb.h"

#include <QFileInfo>

#include <sql.h>
#include <sqlext.h>

namespace pdssim {

namespace {

// Rows a statement and statements a transaction: large enough that round trips and commits
// stop mattering, small enough for the driver's buffers.
constexpr int kRowsPerInsert = 500;
constexpr int kInsertsPerCommit = 40;

/// Turns auto-commit off for the connection's life; commits go through Commit().
class ManualCommit
{
public:
    explicit ManualCommit(fx::OdbcConnection &connection) : m_dbc(connection.Handle())
    {
        SQLSetConnectAttr(m_dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
    }
    ~ManualCommit()
    {
        SQLEndTran(SQL_HANDLE_DBC, m_dbc, SQL_ROLLBACK);
        SQLSetConnectAttr(m_dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), SQL_IS_UINTEGER);
    }
    void Commit() { SQLEndTran(SQL_HANDLE_DBC, m_dbc, SQL_COMMIT); }

private:
    void *m_dbc;
};

QString Literal(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 17);
    default:
        return fx::DBQuote(value.toString());
    }
}

bool HasTable(fx::SqliteDb &db, const QString &table)
{
    return db.Read(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name = %1;").arg(fx::DBQuote(table)))
               .RecordCount() > 0;
}

void CopyTable(fx::SqliteDb &db, fx::OdbcConnection &server, ManualCommit &commit, const TableDefinition &table,
               const QString &target)
{
    // The file's own declared types: a site may declare a column narrower than the definition.
    QStringList columns;
    const fx::Recordset declared = db.Read(
        QStringLiteral("SELECT name, type FROM pragma_table_info(%1) ORDER BY cid;").arg(fx::DBQuote(QLatin1String(table.name))));
    for (const QVariantList &column : declared.Rows())
        columns << column.at(0).toString() + QLatin1Char(' ') + PostgreSQLTypeOfRISType(column.at(1).toString());
    server.Execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(target, columns.join(QStringLiteral(", "))));

    fx::SqliteStatement rows(db, QStringLiteral("SELECT * FROM %1 ORDER BY rowid;").arg(QLatin1String(table.name)));
    const QString head = QStringLiteral("INSERT INTO %1 VALUES ").arg(target);
    QString sql = head;
    int pending = 0, statements = 0;
    QStringList values;
    while (rows.Step()) {
        values.clear();
        for (int i = 0; i < rows.ColumnCount(); ++i)
            values << Literal(rows.Column(i));
        if (pending++)
            sql += QLatin1Char(',');
        sql += QLatin1Char('(') + values.join(QLatin1Char(',')) + QLatin1Char(')');
        if (pending == kRowsPerInsert) {
            server.Execute(sql);
            sql = head;
            pending = 0;
            if (++statements % kInsertsPerCommit == 0)
                commit.Commit();
        }
    }
    if (pending)
        server.Execute(sql);
    if (!table.uniqueIndex.isEmpty())
        server.Execute(QStringLiteral("CREATE UNIQUE INDEX u%1 ON %2 (%3)")
                           .arg(QLatin1String(table.name), target, table.uniqueIndex.join(QStringLiteral(", "))));
    for (const QString &column : table.indexes)
        server.Execute(QStringLiteral("CREATE INDEX i%1_%2 ON %3 (%2)").arg(QLatin1String(table.name), column, target));
    commit.Commit();
}

} // namespace

void LoadSchemaIntoPostgreSQL(const QString &sqliteFile, const QString &connectionString, const QString &schema)
{
    fx::Frame("LoadSchemaIntoPostgreSQL", [&] {
        if (!QFileInfo::exists(sqliteFile))
            fx::Raise(pdssim::sitemsg::SimSchemaFileNotFound, {sqliteFile});
        fx::SqliteDb db(sqliteFile, fx::SqliteDb::OpenMode::ReadOnly);
        fx::OdbcConnection server(connectionString);
        ManualCommit commit(server);
        server.Execute(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(schema));
        server.Execute(QStringLiteral("CREATE SCHEMA %1").arg(schema));
        for (const TableDefinition &table : ProjectTables())
            if (HasTable(db, QLatin1String(table.name)))
                CopyTable(db, server, commit, table, schema + QLatin1Char('.') + QLatin1String(table.name));
        commit.Commit();
    });
}

} // namespace pdssim

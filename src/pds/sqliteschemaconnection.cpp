#include "pds/sqliteschemaconnection.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/paths.h"
#include "pds/adotypes.h"
#include "pds/messages.h"

#include <sqlite3.h>

namespace fx {

SqliteSchemaConnection::SqliteSchemaConnection(const QString &folder)
    : m_folder(AddBackslash(folder))
{
    if (!IsFileExists(m_folder, true))
        Raise(msg::DirectoryNotExistsColon, {folder});
}

QString SqliteSchemaConnection::SchemaFile(const QString &schema) const
{
    return m_folder + schema.trimmed() + QStringLiteral(".db");
}

void SqliteSchemaConnection::UseSchema(const QString &schema, bool /*forWrite*/)
{
    if (schema.trimmed().isEmpty() || (m_db && schema.trimmed() == m_schema))
        return;
    const QString file = SchemaFile(schema);
    // SQLite would make a new empty file for a name it does not know: a typo must not do that.
    if (!IsFileExists(file))
        Raise(msg::DatabaseFileNotExists, {file});
    m_db = std::make_unique<SqliteDb>(file);
    m_schema = schema.trimmed();
}

SqliteDb &SqliteSchemaConnection::Db()
{
    if (!m_db)
        Raise(msg::SchemaNotDefined);
    return *m_db;
}

Recordset SqliteSchemaConnection::Read(const QString &sql)
{
    return Db().Read(sql);
}

void SqliteSchemaConnection::ReadInSlices(const QString &sql, int sliceRows,
                                          const std::function<void(const QList<RecordsetField> &)> &onFields,
                                          const std::function<void(const QList<QVariantList> &)> &onSlice)
{
    SqliteStatement statement(Db(), sql);
    const int count = statement.ColumnCount();
    QList<bool> declared;
    QList<RecordsetField> fields = DeclaredFields(statement, declared);
    QList<QVariantList> rows;
    auto readRow = [&] {
        QVariantList row;
        row.reserve(count);
        for (int i = 0; i < count; ++i)
            row.append(statement.Column(i));
        rows.append(std::move(row));
    };
    bool more = statement.Step();
    if (more) {
        // The fields go out before any row: a computed column takes the type of its first value.
        readRow();
        for (int i = 0; i < count; ++i) {
            if (!declared.at(i))
                TypeFieldByValue(fields[i], rows.first().at(i));
        }
        more = statement.Step();
    }
    onFields(fields);
    const int slice = qMax(1, sliceRows);
    while (more) {
        readRow();
        if (rows.size() >= slice) {
            onSlice(rows);
            rows.clear();
        }
        more = statement.Step();
    }
    if (!rows.isEmpty())
        onSlice(rows);
}

void SqliteSchemaConnection::Execute(const QString &sql)
{
    SqliteDb &db = Db();
    // A write's closing "commit" finds each statement already committed on its own, as the
    // servers do; SQLite alone would call that an error.
    if (sql.trimmed().compare(QLatin1String("commit"), Qt::CaseInsensitive) == 0 && sqlite3_get_autocommit(db.Handle()))
        return;
    db.Execute(sql);
}

QStringList SqliteSchemaConnection::Tables(const QString &schema)
{
    UseSchema(schema, false);
    const Recordset names = Db().Read(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name"));
    QStringList tables;
    for (const QVariantList &row : names.Rows())
        tables << row.at(0).toString();
    return tables;
}

QList<ColumnDescription> SqliteSchemaConnection::Columns(const QString &schema, const QString &table)
{
    UseSchema(schema, false);
    SqliteStatement query(Db(), QStringLiteral("SELECT name, type FROM pragma_table_info(?1) ORDER BY cid"));
    query.Bind(1, table);
    QList<ColumnDescription> columns;
    while (query.Step()) {
        ColumnDescription column;
        column.name = query.Column(0).toString();
        column.type = query.Column(1).toString();
        column.adoType = AdoTypeOfDeclaredType(column.type, &column.size);
        columns << column;
    }
    return columns;
}

void SqliteSchemaConnection::Begin()
{
    Db().Execute(QStringLiteral("BEGIN IMMEDIATE"));
}

void SqliteSchemaConnection::Commit()
{
    Db().Execute(QStringLiteral("COMMIT"));
}

void SqliteSchemaConnection::Rollback()
{
    SqliteDb &db = Db();
    // A failed statement may have ended the transaction itself already.
    if (!sqlite3_get_autocommit(db.Handle()))
        db.Execute(QStringLiteral("ROLLBACK"));
}

qint64 SqliteSchemaConnection::ExecuteBatch(const QString &sql, const QList<QVariantList> &rows)
{
    SqliteDb &db = Db();
    SqliteStatement statement(db, sql);
    qint64 changed = 0;
    for (const QVariantList &row : rows) {
        statement.Reset();
        for (qsizetype i = 0; i < row.size(); ++i)
            statement.Bind(int(i) + 1, row.at(i));
        statement.Step();
        changed += sqlite3_changes64(db.Handle());
    }
    return changed;
}

} // namespace fx

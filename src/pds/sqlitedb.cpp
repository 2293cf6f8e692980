#include "pds/sqlitedb.h"

#include "frame/failure.h"
#include "pds/adotypes.h"
#include "pds/jetformat.h"
#include "pds/jetfunctions.h"
#include "pds/messages.h"

#include <sqlite3.h>

namespace fx {

QString StoreDateText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("yyyy-MM-dd 00:00:00"));
    case QMetaType::QTime:
        return value.toTime().toString(QStringLiteral("HH:mm:ss"));
    default:
        return JetDateText(value.toDateTime());
    }
}

SqliteDb::SqliteDb(const QString &file, OpenMode mode)
    : m_file(file)
{
    int flags = SQLITE_OPEN_NOMUTEX;
    switch (mode) {
    case OpenMode::ReadWrite: flags |= SQLITE_OPEN_READWRITE; break;
    case OpenMode::ReadWriteCreate: flags |= SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE; break;
    case OpenMode::ReadOnly: flags |= SQLITE_OPEN_READONLY; break;
    }
    const int rc = sqlite3_open_v2(file.toUtf8().constData(), &m_db, flags, nullptr);
    if (rc != SQLITE_OK) {
        const QString text = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(m_db);
        m_db = nullptr;
        Raise(msg::DatabaseError, {QString::number(rc), text + QStringLiteral(" (") + file + QStringLiteral(")")});
    }
    sqlite3_extended_result_codes(m_db, 1);
    // Another process of ours may hold the file for a moment (a second reviewer's import).
    sqlite3_busy_timeout(m_db, 10000);
    try {
        RegisterJetFunctions(m_db);
    } catch (...) {
        sqlite3_close(std::exchange(m_db, nullptr));
        throw;
    }
}

SqliteDb::SqliteDb(SqliteDb &&other) noexcept
    : m_file(std::move(other.m_file))
    , m_db(std::exchange(other.m_db, nullptr))
{
}

SqliteDb::~SqliteDb()
{
    if (m_db)
        sqlite3_close_v2(m_db);
}

sqlite3 *SqliteDb::Handle() const
{
    if (!m_db)
        Raise(msg::DatabaseClosed, {m_file});
    return m_db;
}

void SqliteDb::Close()
{
    if (!m_db)
        return;
    const int rc = sqlite3_close(m_db);
    if (rc != SQLITE_OK) {
        const QString text = QString::fromUtf8(sqlite3_errmsg(m_db));
        // The handle goes anyway: SQLite finishes the close when the last statement is gone.
        sqlite3_close_v2(std::exchange(m_db, nullptr));
        Raise(msg::DatabaseError, {QString::number(rc), text + QStringLiteral(" (") + m_file + QStringLiteral(")")});
    }
    m_db = nullptr;
}

void SqliteDb::RaiseLastError(int code, const QString &sql) const
{
    QString text = QString::fromUtf8(sqlite3_errmsg(m_db));
    if (!sql.isEmpty())
        text += QStringLiteral(" (SQL: ") + sql + QStringLiteral(")");
    Raise(msg::DatabaseError, {QString::number(code), text});
}

void SqliteDb::Execute(const QString &sql)
{
    char *error = nullptr;
    const int rc = sqlite3_exec(Handle(), sql.toUtf8().constData(), nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        const QString text = QString::fromUtf8(error ? error : sqlite3_errstr(rc));
        sqlite3_free(error);
        Raise(msg::DatabaseError, {QString::number(rc), text + QStringLiteral(" (SQL: ") + sql + QStringLiteral(")")});
    }
}

qint64 SqliteDb::ExecuteCount(const QString &sql)
{
    SqliteStatement statement(*this, sql);
    const sqlite3_int64 before = sqlite3_total_changes64(m_db);
    while (statement.Step()) {
    }
    // After a statement that changes no rows (DDL), sqlite3_changes64 still tells the last DML.
    return sqlite3_total_changes64(m_db) == before ? 0 : sqlite3_changes64(m_db);
}

Recordset SqliteDb::Read(const QString &sql)
{
    SqliteStatement statement(*this, sql);
    return ReadAll(statement);
}

SqliteStatement::SqliteStatement(SqliteDb &db, const QString &sql)
    : m_db(&db)
    , m_sql(sql)
{
    const QByteArray text = sql.toUtf8();
    const int rc = sqlite3_prepare_v2(db.Handle(), text.constData(), int(text.size()), &m_stmt, nullptr);
    if (rc != SQLITE_OK)
        db.RaiseLastError(rc, sql);
}

SqliteStatement::SqliteStatement(SqliteStatement &&other) noexcept
    : m_db(other.m_db)
    , m_stmt(std::exchange(other.m_stmt, nullptr))
    , m_sql(std::move(other.m_sql))
{
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_stmt);
}

void SqliteStatement::Bind(int index, const QVariant &value)
{
    int rc = SQLITE_OK;
    if (value.isNull()) {
        rc = sqlite3_bind_null(m_stmt, index);
    } else {
        switch (value.typeId()) {
        case QMetaType::Int: case QMetaType::LongLong: case QMetaType::UInt: case QMetaType::Short:
        case QMetaType::UShort: case QMetaType::Bool: case QMetaType::Char: case QMetaType::SChar:
        case QMetaType::UChar: case QMetaType::Long:
            rc = sqlite3_bind_int64(m_stmt, index, value.toLongLong());
            break;
        case QMetaType::Double: case QMetaType::Float:
            rc = sqlite3_bind_double(m_stmt, index, value.toDouble());
            break;
        case QMetaType::QDateTime: case QMetaType::QDate: case QMetaType::QTime: {
            // The store keeps dates as local time text that sorts and compares as dates.
            const QByteArray text = StoreDateText(value).toUtf8();
            rc = sqlite3_bind_text64(m_stmt, index, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT,
                                     SQLITE_UTF8);
            break;
        }
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            rc = sqlite3_bind_blob64(m_stmt, index, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        default: {
            const QByteArray text = value.toString().toUtf8();
            rc = sqlite3_bind_text64(m_stmt, index, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT,
                                     SQLITE_UTF8);
            break;
        }
        }
    }
    if (rc != SQLITE_OK)
        m_db->RaiseLastError(rc, m_sql);
}

bool SqliteStatement::Step()
{
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    m_db->RaiseLastError(rc, m_sql);
}

void SqliteStatement::Reset()
{
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
}

int SqliteStatement::ColumnCount() const
{
    return sqlite3_column_count(m_stmt);
}

QString SqliteStatement::ColumnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_stmt, column));
}

QString SqliteStatement::ColumnDeclaredType(int column) const
{
    const char *declared = sqlite3_column_decltype(m_stmt, column);
    return declared ? QString::fromUtf8(declared) : QString();
}

QVariant SqliteStatement::Column(int column) const
{
    switch (sqlite3_column_type(m_stmt, column)) {
    case SQLITE_INTEGER:
        return QVariant(qint64(sqlite3_column_int64(m_stmt, column)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(m_stmt, column));
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(m_stmt, column)),
                                          sqlite3_column_bytes(m_stmt, column)));
    case SQLITE_BLOB:
        return QVariant(QByteArray(static_cast<const char *>(sqlite3_column_blob(m_stmt, column)),
                                   sqlite3_column_bytes(m_stmt, column)));
    default:
        return QVariant();
    }
}

QList<RecordsetField> DeclaredFields(const SqliteStatement &statement, QList<bool> &declared)
{
    QList<RecordsetField> fields;
    declared.clear();
    for (int i = 0; i < statement.ColumnCount(); ++i) {
        RecordsetField field;
        field.name = statement.ColumnName(i);
        const QString type = statement.ColumnDeclaredType(i);
        declared.append(!type.isEmpty());
        field.type = AdoTypeOfDeclaredType(type, &field.definedSize);
        fields.append(field);
    }
    return fields;
}

Recordset ReadAll(SqliteStatement &statement)
{
    const int count = statement.ColumnCount();
    QList<bool> typed;
    QList<RecordsetField> fields = DeclaredFields(statement, typed);
    QList<QVariantList> rows;
    while (statement.Step()) {
        QVariantList row;
        row.reserve(count);
        for (int i = 0; i < count; ++i) {
            QVariant value = statement.Column(i);
            if (!typed.at(i) && !value.isNull()) {
                typed[i] = true;
                TypeFieldByValue(fields[i], value);
            }
            row.append(std::move(value));
        }
        rows.append(std::move(row));
    }
    Recordset result(fields);
    for (QVariantList &row : rows)
        result.AppendRow(std::move(row));
    return result;
}

void TypeFieldByValue(RecordsetField &field, const QVariant &value)
{
    if (value.typeId() == QMetaType::LongLong)
        field.type = adotype::Integer;
    else if (value.typeId() == QMetaType::Double)
        field.type = adotype::Double;
    else if (value.typeId() == QMetaType::QByteArray)
        field.type = adotype::LongVarBinary;
}

SqliteTransaction::SqliteTransaction(SqliteDb &db)
    : m_db(db)
{
    m_db.Execute(QStringLiteral("BEGIN"));
}

SqliteTransaction::~SqliteTransaction()
{
    if (m_open && m_db.IsOpen())
        sqlite3_exec(m_db.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteTransaction::Commit()
{
    m_db.Execute(QStringLiteral("COMMIT"));
    m_open = false;
}

} // namespace fx

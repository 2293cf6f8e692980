#pragma once
// One small RAII wrapper over SQLite's C API: the local store and the embedded schema kind use it.

#include "pds/recordset.h"

#include <QString>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

namespace fx {

class SqliteDb;

/// A prepared statement; finalized when it goes.
class SqliteStatement
{
public:
    SqliteStatement(SqliteDb &db, const QString &sql);
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;
    SqliteStatement(SqliteStatement &&other) noexcept;
    ~SqliteStatement();

    /// Binds `value` to parameter `index` (from 1); a null QVariant binds NULL, a date the
    /// store's date text.
    void Bind(int index, const QVariant &value);
    /// Runs one step: true while a row is ready, false when done. Raises on an error.
    bool Step();
    /// Clears bindings and rewinds for another run.
    void Reset();

    int ColumnCount() const;
    QString ColumnName(int column) const;
    /// The declared type of a result column that comes straight from a table; empty otherwise.
    QString ColumnDeclaredType(int column) const;
    /// The value of a column of the current row: qint64, double, QString, QByteArray or null.
    QVariant Column(int column) const;

private:
    SqliteDb *m_db;
    sqlite3_stmt *m_stmt = nullptr;
    QString m_sql;
};

/// An open SQLite database file; closed when it goes. The SQL functions that Jet statements
/// need are registered on every connection it opens.
class SqliteDb
{
public:
    enum class OpenMode { ReadWrite, ReadWriteCreate, ReadOnly };

    /// Opens `file`; raises when it cannot (a missing file without ReadWriteCreate included).
    explicit SqliteDb(const QString &file, OpenMode mode = OpenMode::ReadWrite);
    SqliteDb(const SqliteDb &) = delete;
    SqliteDb &operator=(const SqliteDb &) = delete;
    SqliteDb(SqliteDb &&other) noexcept;
    ~SqliteDb();

    const QString &File() const { return m_file; }
    /// The connection; raises once it is closed.
    sqlite3 *Handle() const;
    bool IsOpen() const { return m_db != nullptr; }
    /// Closes the connection now; raises when SQLite refuses (a statement still unfinished).
    void Close();

    /// Runs one or more statements that return no rows.
    void Execute(const QString &sql);
    /// Runs one statement and gives the number of rows it changed (0 for one that changes none).
    qint64 ExecuteCount(const QString &sql);
    /// Runs one query into an in-memory result.
    Recordset Read(const QString &sql);

    /// Raises the connection's last error, with the statement if one is given.
    [[noreturn]] void RaiseLastError(int code, const QString &sql = QString()) const;

private:
    QString m_file;
    sqlite3 *m_db = nullptr;
};

/// A transaction that rolls back when it goes unless Commit() was called.
class SqliteTransaction
{
public:
    explicit SqliteTransaction(SqliteDb &db);
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;
    ~SqliteTransaction();
    void Commit();

private:
    SqliteDb &m_db;
    bool m_open = true;
};

/// A date, date-only or time value as the store keeps it: 'YYYY-MM-DD HH:MM:SS' local text
/// (a date alone at midnight, a time alone as 'HH:MM:SS'). Bind writes date values so.
QString StoreDateText(const QVariant &value);

/// Reads all rows of a prepared statement into a result, with field types taken from the
/// declared column types (or, for computed columns, from the first value that is not NULL).
Recordset ReadAll(SqliteStatement &statement);

/// The fields of a statement's result typed by their declared column types; `declared` tells
/// which had one (the others are computed columns).
QList<RecordsetField> DeclaredFields(const SqliteStatement &statement, QList<bool> &declared);

/// Types a computed column (one without a declared type) by a value of it, as Jet types an
/// expression; a NULL or a text leaves the field as it is.
void TypeFieldByValue(RecordsetField &field, const QVariant &value);

} // namespace fx

#pragma once
// The services over the local store's database files: creating, compacting, connecting,
// reading, writing, indexing, and the small helpers for SQL text.

#include "pds/recordset.h"
#include "pds/sqlitedb.h"

#include <QString>
#include <QVariant>

namespace fx {

/// Creates an empty database file (replacing one there with `overwrite`); logs the outcome and
/// answers false on a failure, which it never raises.
bool CreateMDB(const QString &file, bool overwrite = false);

/// Compacts a database file in place through a copy named file + "_tmp", which never stays
/// behind. No other connection may have the file open.
void CompactMDB(const QString &file);

/// Opens an existing database file; raises when it is missing or is no database.
SqliteDb Connect2MDB(const QString &file);

/// Closes the connection, then removes the journal files ("-journal", "-wal", "-shm") that stayed
/// beside its file, unless another connection still uses them or a crashed writer's journal must
/// first be rolled back (which this does).
void CloseConnection(SqliteDb &db);

/// The rows of a query, held in memory.
Recordset MDBRead(SqliteDb &db, const QString &sql);

/// Runs one statement; the number of rows it changed.
qint64 MDBWrite(SqliteDb &db, const QString &sql);

/// Builds the index "ix_<table>_<column>" on one column and logs the outcome. A failure is
/// logged only: the caller goes on with the database as it was. A primary key becomes a unique
/// index, as SQLite cannot add a primary key to a table that exists.
void CreateIndex(SqliteDb &db, const QString &table, const QString &column, bool unique = false,
                 bool primary = false);

/// The value, or `defaultValue` when it is NULL.
QVariant GetDBvalue(const QVariant &value, const QVariant &defaultValue);

/// The value of the named field in a row of a result, or `defaultValue` when it is NULL.
QVariant GetDBvalue(const Recordset &recordset, qsizetype row, const QString &field, const QVariant &defaultValue);

/// Makes `start` the next value of the table's autonumber column (INTEGER PRIMARY KEY
/// AUTOINCREMENT), whether or not the table has rows; rows with larger numbers still come first:
/// the next value is never below the largest one + 1.
void SetAutoNumberColumnStartID(SqliteDb &db, const QString &table, const QString &column, qint64 start);

/// The text as an SQL literal: every single quote doubled, the whole in single quotes.
QString DBQuote(const QString &text);

/// Sets the store's working database up for one user's bulk work on hundreds of thousands of
/// rows. For the working copy only: clash files keep SQLite's safe defaults.
void TuneWorkingDatabase(SqliteDb &db);

} // namespace fx

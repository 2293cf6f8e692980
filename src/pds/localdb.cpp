#include "pds/localdb.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "frame/translation.h"
#include "pds/messages.h"
#include "pds/tableimporter.h"

#include <QFile>

#include <sqlite3.h>

namespace fx {

namespace {

// Removes a file on every way out of a scope unless told to keep it.
class FileRemover
{
public:
    explicit FileRemover(QString path) : m_path(std::move(path)) {}
    FileRemover(const FileRemover &) = delete;
    FileRemover &operator=(const FileRemover &) = delete;
    ~FileRemover()
    {
        if (!m_path.isEmpty())
            QFile::remove(m_path);
    }
    void Keep() { m_path.clear(); }

private:
    QString m_path;
};

const QLatin1String kJournal("-journal");
const QLatin1String kWal("-wal");
const QLatin1String kShm("-shm");

bool AnyJournalBeside(const QString &file)
{
    return IsFileExists(file + kJournal) || IsFileExists(file + kWal) || IsFileExists(file + kShm);
}

// A stale log beside a new file of the same name would be replayed into it: they go together.
void DeleteDatabaseFiles(const QString &file)
{
    DeleteFileA(file);
    for (const QLatin1String &suffix : {kJournal, kWal, kShm})
        DeleteFileA(file + suffix);
}

void RemoveLeftOverJournals(const QString &file)
{
    if (!AnyJournalBeside(file))
        return;
    if (IsFileExists(file)) {
        bool alone = false;
        {
            // The probe's first read rolls a crashed writer's journal back, and its close, as the
            // last connection, folds a write-ahead log into the file and removes it.
            SqliteDb probe(file);
            sqlite3_busy_timeout(probe.Handle(), 0);
            try {
                probe.Execute(QStringLiteral("BEGIN EXCLUSIVE; ROLLBACK"));
                alone = true;
            } catch (const Failure &) {
                // Another connection is at work: what lies beside the file is its own.
            }
        }
        if (!alone)
            return;
    }
    DeleteFileA(file + kJournal);
    // A log still there belongs to a connection that is open; its index goes only with it.
    if (!IsFileExists(file + kWal))
        DeleteFileA(file + kShm);
}

QString FailureText(const Failure &failure)
{
    return FillMessageArgs(failure.Description());
}

} // namespace

bool CreateMDB(const QString &file, bool overwrite)
{
    return Frame("CreateMDB", [&] {
        LogMessage(msg::CreatingAccessDatabase, {file});
        try {
            if (IsFileExists(file)) {
                if (!overwrite)
                    Raise(msg::DatabaseFileAlreadyExists, {file});
                DeleteDatabaseFiles(file);
            }
            FileRemover halfMade(file);
            {
                SqliteDb db(file, SqliteDb::OpenMode::ReadWriteCreate);
                // Writing the header now makes a full disk or a read-only folder fail here; the
                // id ("FxDB") tells our files apart.
                db.Execute(QStringLiteral("PRAGMA application_id = 1182286914"));
                db.Close();
            }
            halfMade.Keep();
        } catch (const Failure &failure) {
            LogMessage(msg::CreatingAccessDatabaseFailed, {FailureText(failure)});
            return false;
        }
        // There is one file format only, the current one: the message names the newer of the two.
        LogMessage(msg::AccessDatabaseCreated, {QStringLiteral("2000")});
        return true;
    });
}

void CompactMDB(const QString &file)
{
    Frame("CompactMDB", [&] {
        if (!IsFileExists(file))
            Raise(msg::DatabaseFileNotExists, {file});
        const QString compacted = file + QStringLiteral("_tmp");
        FileRemover leftOver(compacted);
        DeleteFileA(compacted); // one from a run that was killed: VACUUM INTO refuses an existing file
        {
            SqliteDb db(file);
            // Held until the close: no other connection may write while the copy is taken.
            db.Execute(QStringLiteral("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT"));
            db.Execute(QStringLiteral("VACUUM INTO ") + DBQuote(compacted));
            db.Close();
        }
        QFile::setPermissions(compacted, QFile::permissions(file));
        MoveFileA(compacted, file);
    });
}

SqliteDb Connect2MDB(const QString &file)
{
    return Frame("Connect2MDB", [&] {
        if (!IsFileExists(file))
            Raise(msg::DatabaseFileNotExists, {file});
        SqliteDb db(file);
        // SQLite opens any file; reading the schema is what tells a database from other data.
        db.Execute(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        return db;
    });
}

void CloseConnection(SqliteDb &db)
{
    Frame("CloseConnection", [&] {
        const QString file = db.File();
        db.Close();
        RemoveLeftOverJournals(file);
    });
}

Recordset MDBRead(SqliteDb &db, const QString &sql)
{
    return Frame("MDBRead", [&] { return db.Read(sql); });
}

qint64 MDBWrite(SqliteDb &db, const QString &sql)
{
    return Frame("MDBWrite", [&] { return db.ExecuteCount(sql); });
}

void CreateIndex(SqliteDb &db, const QString &table, const QString &column, bool unique, bool primary)
{
    Frame("CreateIndex", [&] {
        LogMessage(msg::CreatingIndex, {table, column});
        try {
            const QString name = QStringLiteral("ix_") + table + QLatin1Char('_') + column;
            db.Execute(QStringLiteral("CREATE ") + (unique || primary ? QStringLiteral("UNIQUE ") : QString())
                       + QStringLiteral("INDEX ") + BracketName(name) + QStringLiteral(" ON ") + BracketName(table)
                       + QStringLiteral(" (") + BracketName(column) + QLatin1Char(')'));
        } catch (const Failure &failure) {
            LogMessage(msg::CreatingIndexFailed, {FailureText(failure)});
            return;
        }
        LogMessage(msg::IndexCreated, {});
    });
}

QVariant GetDBvalue(const QVariant &value, const QVariant &defaultValue)
{
    return Frame("GetDBvalue", [&] { return value.isNull() ? defaultValue : value; });
}

QVariant GetDBvalue(const Recordset &recordset, qsizetype row, const QString &field, const QVariant &defaultValue)
{
    return Frame("GetDBvalue", [&] {
        const QVariant value = recordset.Value(row, field);
        return value.isNull() ? defaultValue : value;
    });
}

void SetAutoNumberColumnStartID(SqliteDb &db, const QString &table, const QString &column, qint64 start)
{
    Frame("SetAutoNumberColumnStartID", [&] {
        // sqlite_sequence keys on the name as the table was created, whatever case the caller uses.
        SqliteStatement find(db, QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'table' "
                                                "AND name = ?1 COLLATE NOCASE"));
        find.Bind(1, table);
        const bool found = find.Step();
        const QString name = found ? find.Column(0).toString() : QString();
        const bool autoIncrement = found && find.Column(1).toString().contains(QLatin1String("AUTOINCREMENT"), Qt::CaseInsensitive);
        SqliteStatement key(db, QStringLiteral("SELECT count(*) FROM pragma_table_info(?1) WHERE pk = 1 "
                                               "AND name = ?2 COLLATE NOCASE AND upper(type) = 'INTEGER'"));
        key.Bind(1, name);
        key.Bind(2, column);
        key.Step();
        if (!autoIncrement || key.Column(0).toLongLong() != 1)
            Raise(msg::NotAutoNumberColumn, {column, table});

        // SQLite hands out the larger of the kept number and the largest in the table, plus one.
        SqliteTransaction transaction(db);
        SqliteStatement update(db, QStringLiteral("UPDATE sqlite_sequence SET seq = ?2 WHERE name = ?1"));
        update.Bind(1, name);
        update.Bind(2, start - 1);
        update.Step();
        if (sqlite3_changes64(db.Handle()) == 0) {
            SqliteStatement insert(db, QStringLiteral("INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)"));
            insert.Bind(1, name);
            insert.Bind(2, start - 1);
            insert.Step();
        }
        transaction.Commit();
    });
}

QString DBQuote(const QString &text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

void TuneWorkingDatabase(SqliteDb &db)
{
    Frame("TuneWorkingDatabase", [&] {
        // Write-ahead log: commits append, and a reader never waits for the writer. With it,
        // synchronous NORMAL may lose the last commits to a power cut but never spoils the file.
        // The log needs shared memory, which network shares lack: hence never for a clash file.
        // The cache holds the hot pages of a 500,000-row table; temporary sorts spill to files
        // beyond it, which keeps the process's memory bounded.
        db.Execute(QStringLiteral("PRAGMA main.journal_mode = WAL;"
                                  "PRAGMA main.synchronous = NORMAL;"
                                  "PRAGMA main.journal_size_limit = 67108864;"
                                  "PRAGMA main.cache_size = -65536;"
                                  "PRAGMA main.mmap_size = 268435456;"
                                  "PRAGMA temp_store = FILE;"));
    });
}

} // namespace fx

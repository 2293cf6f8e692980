#include "frame/logmessage.h"
#include "pds/localdb.h"

#include "support/failures.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

class LogRecorder : public ILogSink
{
public:
    void ShowLogMessage(const QString &text) override { lines << text; }
    QStringList lines;
};

class LocalDb : public ::testing::Test
{
protected:
    QString Path(const char *name) const { return m_dir.filePath(QString::fromUtf8(name)); }

    // A database file with table t (id autonumber, name text) holding `rows` rows.
    QString MakeDatabase(const char *name, int rows)
    {
        const QString file = Path(name);
        EXPECT_TRUE(CreateMDB(file));
        SqliteDb db = Connect2MDB(file);
        db.Execute(QStringLiteral("CREATE TABLE t (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT(50))"));
        SqliteTransaction transaction(db);
        for (int i = 0; i < rows; ++i)
            db.Execute(QStringLiteral("INSERT INTO t (name) VALUES ('row %1 with some text to take room')").arg(i));
        transaction.Commit();
        return file;
    }

    QTemporaryDir m_dir;
    LogRecorder m_log;
    LogSinkRegistration m_registration{&m_log};
};

qint64 NextId(SqliteDb &db)
{
    db.Execute(QStringLiteral("INSERT INTO t (name) VALUES ('next')"));
    return db.Read(QStringLiteral("SELECT max(id) FROM t")).Value(0, 0).toLongLong();
}

} // namespace

TEST_F(LocalDb, create_mdb_logs_its_outcome_and_answers_false_instead_of_raising)
{
    const QString file = Path("new.fxdb");
    EXPECT_TRUE(CreateMDB(file));
    EXPECT_FALSE(CreateMDB(file));
    EXPECT_TRUE(CreateMDB(file, true));
    EXPECT_FALSE(CreateMDB(Path("missing/new.fxdb")));
    EXPECT_FALSE(QFileInfo::exists(Path("missing/new.fxdb")));
    ASSERT_EQ(m_log.lines.size(), 8);
    EXPECT_EQ(m_log.lines.at(0), QStringLiteral("Creating new Access database: '") + file + QStringLiteral("'..."));
    EXPECT_EQ(m_log.lines.at(1), QStringLiteral("Access 2000 database created successfully"));
    EXPECT_EQ(m_log.lines.at(3), QStringLiteral("Creating Access database failed: Database file '") + file
                                     + QStringLiteral("' already exists"));
    EXPECT_EQ(m_log.lines.at(5), m_log.lines.at(1));
    EXPECT_TRUE(m_log.lines.at(7).startsWith(QStringLiteral("Creating Access database failed: Database error")));
    EXPECT_GT(QFileInfo(file).size(), 0); // a real database, header written
}

TEST_F(LocalDb, connect_read_and_write_raise_under_their_own_names)
{
    const QString missing = Path("none.fxdb");
    EXPECT_EQ(fxtest::FailureText([&] { Connect2MDB(missing); }),
              QStringLiteral("Connect2MDB: Database file '%0%' not exists|||") + missing);
    const QString notDb = Path("text.fxdb");
    QFile text(notDb);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    EXPECT_TRUE(fxtest::FailureText([&] { Connect2MDB(notDb); }).startsWith(QStringLiteral("Connect2MDB: Database error")));

    SqliteDb db = Connect2MDB(MakeDatabase("rw.fxdb", 3));
    EXPECT_EQ(MDBWrite(db, QStringLiteral("UPDATE t SET name = 'x' WHERE id < 3")), 2);
    EXPECT_EQ(MDBWrite(db, QStringLiteral("CREATE TABLE u (a)")), 0); // not the last update's count
    EXPECT_EQ(MDBRead(db, QStringLiteral("SELECT count(*) FROM t WHERE name = 'x'")).Value(0, 0).toLongLong(), 2);
    EXPECT_TRUE(fxtest::FailureText([&] { MDBRead(db, QStringLiteral("SELECT nothing FROM t")); })
                    .startsWith(QStringLiteral("MDBRead: Database error")));
    EXPECT_TRUE(fxtest::FailureText([&] { MDBWrite(db, QStringLiteral("DELETE FROM nowhere")); })
                    .startsWith(QStringLiteral("MDBWrite: Database error")));
}

TEST_F(LocalDb, quoted_text_survives_sql_and_null_fields_give_the_default)
{
    EXPECT_EQ(DBQuote(QStringLiteral("O'Brien's")), QStringLiteral("'O''Brien''s'"));
    EXPECT_EQ(DBQuote(QString()), QStringLiteral("''"));
    SqliteDb db(QStringLiteral(":memory:"), SqliteDb::OpenMode::ReadWriteCreate);
    const Recordset result =
        db.Read(QStringLiteral("SELECT ") + DBQuote(QStringLiteral("it's 'quoted'")) + QStringLiteral(" AS a, NULL AS b, '' AS c"));
    EXPECT_EQ(GetDBvalue(result, 0, QStringLiteral("a"), 0), QStringLiteral("it's 'quoted'"));
    EXPECT_EQ(GetDBvalue(result, 0, QStringLiteral("B"), 0), QVariant(0));
    EXPECT_EQ(GetDBvalue(result.Value(0, 2), 0), QVariant(QString()));
    EXPECT_EQ(GetDBvalue(QVariant(), QStringLiteral("none")), QStringLiteral("none"));
    EXPECT_TRUE(fxtest::FailureText([&] { GetDBvalue(result, 0, QStringLiteral("d"), 0); })
                    .startsWith(QStringLiteral("GetDBvalue: Field '%0%' not found")));
}

TEST_F(LocalDb, a_failed_index_is_logged_and_leaves_the_database_usable)
{
    SqliteDb db = Connect2MDB(MakeDatabase("index.fxdb", 2));
    db.Execute(QStringLiteral("UPDATE t SET name = 'same'"));
    m_log.lines.clear();
    CreateIndex(db, QStringLiteral("t"), QStringLiteral("name"), true);
    ASSERT_EQ(m_log.lines.size(), 2);
    EXPECT_EQ(m_log.lines.at(0), QStringLiteral("Creating index on table: 't' column: 'name'..."));
    EXPECT_TRUE(m_log.lines.at(1).startsWith(QStringLiteral("Creating index failed: Database error")));
    EXPECT_EQ(MDBWrite(db, QStringLiteral("INSERT INTO t (name) VALUES ('same')")), 1);

    CreateIndex(db, QStringLiteral("t"), QStringLiteral("id"), false, true);
    EXPECT_EQ(m_log.lines.last(), QStringLiteral("Index created successfully"));
    CreateIndex(db, QStringLiteral("t"), QStringLiteral("name"));
    EXPECT_EQ(m_log.lines.last(), QStringLiteral("Index created successfully"));
    EXPECT_EQ(MDBRead(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name = 't'"))
                  .Value(0, 0).toLongLong(), 2);
}

TEST_F(LocalDb, close_connection_removes_a_left_over_journal_but_not_a_log_in_use)
{
    const QString file = MakeDatabase("close.fxdb", 1);
    const QString journal = file + QStringLiteral("-journal");
    SqliteDb writer = Connect2MDB(file);
    writer.Execute(QStringLiteral("PRAGMA journal_mode = PERSIST; BEGIN IMMEDIATE; INSERT INTO t (name) VALUES ('kept')"));
    SqliteDb idle = Connect2MDB(file);
    CloseConnection(idle);
    EXPECT_TRUE(QFileInfo::exists(journal)); // the writer's transaction needs it
    writer.Execute(QStringLiteral("COMMIT"));
    CloseConnection(writer);
    EXPECT_FALSE(QFileInfo::exists(journal));

    SqliteDb first = Connect2MDB(file);
    first.Execute(QStringLiteral("PRAGMA journal_mode = WAL"));
    SqliteDb second = Connect2MDB(file);
    second.Execute(QStringLiteral("INSERT INTO t (name) VALUES ('in the log')"));
    CloseConnection(first);
    EXPECT_TRUE(QFileInfo::exists(file + QStringLiteral("-wal"))); // the second one still needs them
    EXPECT_TRUE(QFileInfo::exists(file + QStringLiteral("-shm")));
    EXPECT_EQ(MDBRead(second, QStringLiteral("SELECT count(*) FROM t")).Value(0, 0).toLongLong(), 3);
    CloseConnection(second);
    for (const char *suffix : {"-journal", "-wal", "-shm"})
        EXPECT_FALSE(QFileInfo::exists(file + QString::fromUtf8(suffix))) << suffix;
    SqliteDb reopened = Connect2MDB(file);
    EXPECT_EQ(MDBRead(reopened, QStringLiteral("SELECT count(*) FROM t")).Value(0, 0).toLongLong(), 3);
    EXPECT_TRUE(fxtest::FailureText([&] { MDBRead(second, QStringLiteral("SELECT 1")); }).contains(QStringLiteral("is closed")));
}

TEST_F(LocalDb, compact_mdb_shrinks_the_file_keeps_the_rows_and_leaves_no_tmp)
{
    const QString file = MakeDatabase("compact.fxdb", 3000);
    {
        SqliteDb db = Connect2MDB(file);
        db.Execute(QStringLiteral("DELETE FROM t WHERE id > 10"));
    }
    const qint64 before = QFileInfo(file).size();
    const QString tmp = file + QStringLiteral("_tmp");
    QFile stale(tmp);
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.close();
    CompactMDB(file);
    EXPECT_LT(QFileInfo(file).size(), before / 4);
    EXPECT_FALSE(QFileInfo::exists(tmp));
    SqliteDb db = Connect2MDB(file);
    EXPECT_EQ(MDBRead(db, QStringLiteral("SELECT count(*), max(id) FROM t")).Row(0), (QVariantList{qint64(10), qint64(10)}));
    EXPECT_FALSE(fxtest::FailureText([&] { CompactMDB(Path("none.fxdb")); }).isEmpty());
}

TEST_F(LocalDb, set_auto_number_start_gives_the_next_id_with_and_without_rows)
{
    const QString file = Path("auto.fxdb");
    ASSERT_TRUE(CreateMDB(file));
    SqliteDb db = Connect2MDB(file);
    db.Execute(QStringLiteral("CREATE TABLE T (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT); CREATE TABLE plain (id INTEGER PRIMARY KEY)"));
    SetAutoNumberColumnStartID(db, QStringLiteral("t"), QStringLiteral("ID"), 1000); // empty, no sequence row yet
    EXPECT_EQ(NextId(db), 1000);
    SetAutoNumberColumnStartID(db, QStringLiteral("t"), QStringLiteral("id"), 5000); // with rows below it
    EXPECT_EQ(NextId(db), 5000);
    SetAutoNumberColumnStartID(db, QStringLiteral("t"), QStringLiteral("id"), 10); // never below the rows
    EXPECT_EQ(NextId(db), 5001);
    EXPECT_EQ(MDBRead(db, QStringLiteral("SELECT count(*) FROM sqlite_sequence")).Value(0, 0).toLongLong(), 1);
    EXPECT_EQ(fxtest::FailureText([&] { SetAutoNumberColumnStartID(db, QStringLiteral("plain"), QStringLiteral("id"), 5); }),
              QStringLiteral("SetAutoNumberColumnStartID: Column '%0%' of table '%1%' is not an autonumber column|||id|||plain"));
    EXPECT_FALSE(fxtest::FailureText([&] { SetAutoNumberColumnStartID(db, QStringLiteral("t"), QStringLiteral("name"), 5); }).isEmpty());
}

TEST_F(LocalDb, the_working_database_is_tuned_and_a_clash_file_connection_is_not)
{
    const QString working = MakeDatabase("working.fxdb", 1);
    const QString clash = MakeDatabase("clash.fxdb", 1);
    SqliteDb db = Connect2MDB(working);
    db.Execute(QStringLiteral("ATTACH ") + DBQuote(clash) + QStringLiteral(" AS clash"));
    TuneWorkingDatabase(db);
    EXPECT_EQ(MDBRead(db, QStringLiteral("PRAGMA main.journal_mode")).Value(0, 0), QStringLiteral("wal"));
    EXPECT_EQ(MDBRead(db, QStringLiteral("PRAGMA main.synchronous")).Value(0, 0).toLongLong(), 1);
    EXPECT_EQ(MDBRead(db, QStringLiteral("PRAGMA clash.journal_mode")).Value(0, 0), QStringLiteral("delete"));
    {
        SqliteTransaction undone(db); // rollback still works
        db.Execute(QStringLiteral("DELETE FROM t"));
    }
    EXPECT_EQ(MDBRead(db, QStringLiteral("SELECT count(*) FROM t")).Value(0, 0).toLongLong(), 1);
    db.Execute(QStringLiteral("DETACH clash"));
    CloseConnection(db);
    EXPECT_FALSE(QFileInfo::exists(working + QStringLiteral("-wal")));
}

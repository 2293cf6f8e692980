#include "frame/failure.h"
#include "store/workingdatabase.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

QVariant Pragma(SqliteDb &db, const char *name)
{
    return db.Read(QStringLiteral("PRAGMA %1;").arg(QString::fromLatin1(name))).Value(0, 0);
}

class StoreSettings : public ::testing::Test
{
protected:
    QTemporaryDir m_dir;
    WorkingDatabase m_store{m_dir.filePath(QStringLiteral("work.fxdb"))};
    SqliteDb &m_db = m_store.Db();
};

} // namespace

TEST_F(StoreSettings, a_build_skips_the_journal_on_disk_and_reviews_are_journaled_and_synced_again)
{
    SetStoreWriteMode(m_db, StoreWriteMode::Building);
    EXPECT_EQ(Pragma(m_db, "journal_mode").toString(), QStringLiteral("memory"));
    EXPECT_EQ(Pragma(m_db, "synchronous").toInt(), 0);
    EXPECT_GE(Pragma(m_db, "threads").toInt(), 1);

    // A review must survive a crash the moment it is made.
    SetStoreWriteMode(m_db, StoreWriteMode::Reviewing);
    EXPECT_EQ(Pragma(m_db, "journal_mode").toString(), QStringLiteral("delete"));
    EXPECT_EQ(Pragma(m_db, "synchronous").toInt(), 2);
    EXPECT_GE(Pragma(m_db, "threads").toInt(), 1);
}

TEST_F(StoreSettings, the_join_cache_holds_only_while_the_join_runs_whether_it_succeeds_or_fails)
{
    const QVariant own = Pragma(m_db, "cache_size");
    QVariant during;
    WithJoinCache(m_db, [&] { during = Pragma(m_db, "cache_size"); });
    EXPECT_EQ(during.toInt(), -65536);
    EXPECT_EQ(Pragma(m_db, "cache_size"), own);

    m_db.Execute(QStringLiteral("PRAGMA cache_size = -1000;"));
    EXPECT_THROW(WithJoinCache(m_db, [&] { m_db.Execute(QStringLiteral("SELECT * FROM no_such_table;")); }), Failure);
    EXPECT_EQ(Pragma(m_db, "cache_size").toInt(), -1000);
}

// Whole sites of every kind, and Fendrix's gateway running on them as it would on a real site.

#include "frame/unc.h"
#include "pds/scratchfiles.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/projectdatabase.h"
#include "pds/sqlitedb.h"
#include "pdssim/projectfiles.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/siteserver.h"

#include "sitekind.h"
#include "support/sandbox.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

constexpr int kClashes = 300;

// Every file below a folder with the hash of its bytes, in name order.
QStringList FileHashes(const QString &root)
{
    QStringList lines;
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        lines << path.mid(root.size()) + u' '
                     + QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex());
    }
    lines.sort();
    return lines;
}

class SiteKinds : public testing::TestWithParam<const char *>
{
protected:
    // Builds the site of the parameter's kind and points this process's Fendrix at it.
    bool BuildAndInstall()
    {
        const std::optional<QString> kind = fxtest::SiteKind(GetParam());
        if (!kind)
            return false;
        options.root = box.Root() + u"site"_s;
        options.project = project;
        options.clashes = kClashes;
        options.kind = *kind;
        options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
        BuildSite(options);
        InstallSiteConfig(SiteLayout(options.root), box.ProgramDir());
        UseProjectDatabase(cris, GetProjectDatabase(SiteUserConfigFile(SiteLayout(options.root), project), project));
        return true;
    }

    fxtest::Sandbox box;
    // A name of its own per run, so that runs side by side on one PostgreSQL server never meet.
    const QString project = u"S"_s + RandomScratchName().toUpper();
    const QString schema = u"pd_"_s + project;
    SiteOptions options;
    CRIS cris;
};

} // namespace

TEST(Site, a_site_of_the_same_seed_is_built_byte_for_byte_again_and_another_seed_differs)
{
    fxtest::Sandbox box;
    SiteOptions options{box.Root() + u"site"_s, u"DEMO"_s, 1000, 5, u"ris"_s, true, QStringLiteral(PDSSIM_EXECUTABLE)};
    BuildSite(options);
    const QStringList first = FileHashes(options.root);
    QDir(options.root).removeRecursively();
    BuildSite(options);
    EXPECT_EQ(FileHashes(options.root), first);
    EXPECT_GT(first.size(), 10);

    QDir(options.root).removeRecursively();
    options.seed = 6;
    BuildSite(options);
    EXPECT_NE(FileHashes(options.root), first);
}

TEST_P(SiteKinds, the_gateway_reads_writes_imports_and_lists_the_schema_of_the_site)
{
    if (!BuildAndInstall())
        GTEST_SKIP() << "no PostgreSQL test server";
    const SiteLayout layout(options.root);

    // The project row leads to the project folder and its seed file, as the schema stores it.
    const Recordset project102 =
        cris.DBRead(schema, u"SELECT network_address, path_name, rdb_file_spec FROM pdtable_102 WHERE type_of_rdb_data=99;"_s);
    ASSERT_EQ(project102.RecordCount(), 1);
    const QString server = project102.Value(0, 0).toString().trimmed();
    const QString folder = LocalPath2UNC(server, project102.Value(0, 1).toString().trimmed());
    EXPECT_EQ(server, SiteServer());
    EXPECT_TRUE(QFile::exists(folder + project102.Value(0, 2).toString().trimmed()))
        << folder.toStdString() << " | " << project102.Value(0, 1).toString().toStdString() << " | "
        << project102.Value(0, 2).toString().toStdString();

    EXPECT_EQ(cris.DBRead(schema, u"SELECT COUNT(*) FROM pdtable_132"_s).Value(0, 0).toLongLong(), kClashes);
    for (const char *table : {"pdtable_131", "pdtable_132", "pdtable_133", "pdtable_134", "pdtable_135", "pdtable_119"})
        EXPECT_TRUE(cris.IsTableExists(schema, QString::fromLatin1(table).toUpper())) << table;
    EXPECT_TRUE(cris.IsColumnExists(schema, u"pdtable_132"_s, u"UNIQUE_CLASH_ID"_s));
    EXPECT_FALSE(cris.IsColumnExists(schema, u"pdtable_132"_s, u"no_such_column"_s));

    // A lock taken through the gateway is what the next read sees.
    cris.DBWrite(schema, u"UPDATE pdtable_102 SET lock_owner = 'rev''s pc', lock_status = 1 WHERE type_of_rdb_data = 99"_s,
                 true);
    const Recordset lock = cris.DBRead(schema, u"SELECT lock_owner, lock_status FROM pdtable_102 WHERE type_of_rdb_data = 99"_s);
    EXPECT_EQ(lock.Value(0, 0).toString().trimmed(), u"rev's pc"_s);
    EXPECT_EQ(lock.Value(0, 1).toInt(), 1);

    // The clash tables come into a local store whole.
    const QString store = box.Root() + u"store.db"_s;
    ASSERT_TRUE(CreateMDB(store));
    for (const char *table : {"pdtable_132", "pdtable_133", "pdtable_135"}) {
        const QString name = QString::fromLatin1(table);
        cris.DBImport2Access(store, name, u"SELECT * FROM "_s + name + u";"_s, schema);
        EXPECT_EQ(SqliteDb(store).Read(u"SELECT COUNT(*) FROM "_s + name).Value(0, 0).toLongLong(),
                  cris.DBRead(schema, u"SELECT COUNT(*) FROM "_s + name).Value(0, 0).toLongLong())
            << table;
    }
    EXPECT_EQ(SqliteDb(store)
                  .Read(u"SELECT COUNT(*) FROM pdtable_133 c WHERE NOT EXISTS "
                        "(SELECT 1 FROM pdtable_132 k WHERE k.unique_clash_id = c.unique_clash_id)"_s)
                  .Value(0, 0)
                  .toLongLong(),
              0);
}

INSTANTIATE_TEST_SUITE_P(, SiteKinds, testing::Values("sqlite", "ris", "postgres"),
                         [](const testing::TestParamInfo<const char *> &info) { return std::string(info.param); });

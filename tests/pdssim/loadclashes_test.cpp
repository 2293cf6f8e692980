// Opening a project into the clash store from pdssim sites: the three open states, the lock
// prompts, saving to a clash file, and nothing left behind when a load or a save fails or the
// project is closed.

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/scratchfiles.h"
#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/projectdatabase.h"
#include "pds/projectlocks.h"
#include "pds/projectschema.h"
#include "pds/sqlitedb.h"
#include "pds/tableimporter.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/loadclashes.h"
#include "store/messages.h"

#include "sitekind.h"
#include "support/failures.h"
#include "support/loglines.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

class ClashLoad : public fxtest::SiteKindTest
{
protected:
    // Builds the site and makes it the program's: its settings, its user config file.
    void Build(bool edge, int clashes = 12)
    {
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, m_kind, clashes, edge, box.ProgramDir()));
        UseProjectDatabase(cris, GetProjectDatabase(SiteUserConfigFile(*layout, project), project));
    }

    qint64 SchemaCount(const QString &sql) { return cris.DBRead(u"pd_"_s + project, sql).Value(0, 0).toLongLong(); }
    qint64 StoreCount(const QString &sql) { return ClashConnection().Read(sql).Value(0, 0).toLongLong(); }

    // The working copies the store left in the work folder, the copies of a save included.
    QStringList WorkCopies() const { return QDir(box.Temp()).entryList({u"fx*.fxdb*"_s}, QDir::Files); }
    QStringList SaveCopies() const { return QDir(box.Temp()).entryList({u"fxsave*"_s}, QDir::Files); }

    // Every row of a query, in the order it gives them.
    static QList<QVariantList> Rows(SqliteDb &db, const QString &sql) { return db.Read(sql).Rows(); }

    // What a clash file must bring back: the clashes as the reviewer left them, the units and
    // the project's paths.
    QList<QList<QVariantList>> StoreContent()
    {
        QList<QList<QVariantList>> content;
        for (const QString &sql : {u"SELECT * FROM base_clash_table ORDER BY clash_id"_s, u"SELECT * FROM dgn_settings"_s,
                                   u"SELECT * FROM proj_file_settings"_s})
            content << Rows(ClashConnection(), sql);
        return content;
    }

    QString ControlFile() const { return layout->ControlFile(); }

    void ExpectNothingOpen()
    {
        EXPECT_EQ(GetProjectName(), QString::fromLatin1(msg::NoProject));
        EXPECT_TRUE(GetClashFile().isEmpty());
        EXPECT_TRUE(GetWorkDB().isEmpty());
        EXPECT_FALSE(IsSchemaAvailable());
        EXPECT_FALSE(IsReadOnly());
        EXPECT_EQ(fxtest::FailureText([] { ClashConnection(); }), u"ClashConnection: "_s + QString::fromLatin1(msg::NoProjectOpen));
        EXPECT_EQ(WorkCopies(), QStringList());
    }

    // A name of its own per test, so that tests side by side on one PostgreSQL server never meet.
    const QString project = u"E"_s + RandomScratchName().toUpper();
    std::optional<SiteLayout> layout;
    CRIS cris;
};

} // namespace

TEST_P(ClashLoad, a_project_opens_online_with_the_schemas_clashes_then_again_from_its_saved_clash_file_and_offline)
{
    Build(false);
    ExpectNothingOpen();
    InitClashes(ControlFile(), project);
    EXPECT_EQ(GetProjectName(), project);
    EXPECT_TRUE(IsSchemaAvailable());
    EXPECT_FALSE(IsReadOnly());
    EXPECT_TRUE(GetClashFile().isEmpty());
    EXPECT_FALSE(GetProjectProjFile().PROJ_FILE.isEmpty());
    const qint64 clashes = SchemaCount(u"SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status <> 99"_s);
    EXPECT_GT(clashes, 0);
    EXPECT_EQ(StoreCount(u"SELECT COUNT(*) FROM pdtable_132"_s), clashes);
    EXPECT_EQ(StoreCount(u"SELECT COUNT(*) FROM base_clash_table"_s), clashes);
    EXPECT_EQ(StoreCount(u"SELECT COUNT(DISTINCT unique_clash_id) FROM pdtable_133"_s), StoreCount(u"SELECT COUNT(*) FROM pdtable_133"_s));
    EXPECT_EQ(StoreCount(u"SELECT COUNT(*) FROM pdtable_101"_s), SchemaCount(u"SELECT COUNT(*) FROM pdtable_101"_s));
    EXPECT_FALSE(IsProjectLocked(cris, project)) << "the markers are held for the import only";
    EXPECT_FALSE(IsIntAreaLocked(cris, project));
    const QString workDB = GetWorkDB();
    EXPECT_TRUE(QFile::exists(workDB));
    EXPECT_TRUE(workDB.startsWith(box.Temp()));

    // The store carries the project's paths and its seed file's units from the start.
    const DGNSettings units = GetModelDGNSettings(cris, project);
    EXPECT_EQ(Rows(ClashConnection(), u"SELECT * FROM dgn_settings"_s),
              (QList<QVariantList>{{units.masterUnits, units.subUnits, qint64(units.subPerMaster), qint64(units.uorPerSub)}}));
    const ProjFile projFile = GetProjectProjFile();
    EXPECT_EQ(Rows(ClashConnection(), u"SELECT * FROM proj_file_settings"_s),
              (QList<QVariantList>{{projFile.PROJ_ADDR, projFile.PROJ_FILE}}));
    EXPECT_EQ(GetUorPerSub() * GetSubPerMast(), units.uorPerSub * units.subPerMaster);

    // A reviewer's change travels in the file, and the file names its project itself.
    ClashConnection().Execute(u"UPDATE base_clash_table SET review_comment = 'it''s kept' "
                              u"WHERE clash_id = (SELECT MIN(clash_id) FROM base_clash_table)"_s);
    const auto content = StoreContent();
    const QString clashFile = box.Root() + u"saved.FXDB"_s;
    SaveClashes2File(clashFile);
    EXPECT_EQ(GetClashFile(), QString()) << "the open store goes on as it was";
    EXPECT_EQ(GetWorkDB(), workDB);
    FreeClashes();
    EXPECT_FALSE(QFile::exists(workDB));
    ExpectNothingOpen();
    FreeClashes();

    // Online from the file while another user holds the project: no marker is asked about.
    ProjectLockA(cris, project, u"FX_other"_s);
    {
        fxtest::RecordingMessageBox boxes(IdNo);
        InitClashes(clashFile, u"NOT_THIS_ONE"_s);
        EXPECT_TRUE(boxes.boxes.empty());
    }
    EXPECT_EQ(GetProjectName(), project);
    EXPECT_EQ(GetClashFile(), clashFile);
    EXPECT_TRUE(IsSchemaAvailable());
    EXPECT_FALSE(IsReadOnly());
    EXPECT_NE(GetWorkDB(), clashFile);
    EXPECT_EQ(GetProjectProjFile().PROJ_ADDR, projFile.PROJ_ADDR);
    EXPECT_EQ(GetProjectProjFile().PROJ_FILE, projFile.PROJ_FILE);
    EXPECT_EQ(StoreContent(), content);
    LockHolder holder;
    EXPECT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_other"_s);
    ProjectUnlockA(cris, project);

    // Another machine: its user config file points at a folder without the project's schema.
    SetUserConfigFile(box.WriteFile(u"elsewhere.ini"_s, (u"["_s + project + u"Database]\nType=SQLite\nPath="_s + box.Temp() + u"\n"_s).toUtf8()));
    InitClashes(clashFile, QString());
    EXPECT_EQ(GetProjectName(), project);
    EXPECT_FALSE(IsSchemaAvailable());
    EXPECT_FALSE(IsReadOnly());
    EXPECT_EQ(GetClashFile(), clashFile);
    EXPECT_EQ(StoreContent(), content);
    EXPECT_EQ(WorkCopies().size(), 1) << "the earlier copy went when the project was opened again";
    const QString refused = u"InitClashes: SetProjectDefinition: "_s + ArgForm(msg::PdsProjectSchemaNotExists, {project});
    EXPECT_EQ(fxtest::FailureText([&] { InitClashes(ControlFile(), project); }), refused);
    ExpectNothingOpen();
    EXPECT_EQ(fxtest::LogLineCount(refused), 1);
}

TEST_P(ClashLoad, a_save_compresses_overwrites_its_target_and_keeps_each_tables_schema_and_a_failed_one_leaves_it_as_it_was)
{
    Build(false, 300);
    InitClashes(ControlFile(), project);
    SqliteDb &store = ClashConnection();
    store.Execute(u"CREATE TABLE MSysAnything (id INT); INSERT INTO MSysAnything VALUES (1);"_s);
    // Most rows deleted: their pages stay in the store's file, free.
    for (const QString &table : {u"base_clash_table"_s, u"pdtable_132"_s, u"pdtable_133"_s, u"pdtable_135"_s,
                                 u"intersection"_s, u"linkages"_s})
        store.Execute(u"DELETE FROM %1 WHERE rowid % 10 <> 0"_s.arg(table));
    const auto pragma = [](SqliteDb &db, const char *name) { return db.Read(QString::fromLatin1(name)).Value(0, 0).toLongLong(); };
    const qint64 freePages = pragma(store, "PRAGMA freelist_count");
    ASSERT_GT(freePages, 0);
    const qint64 usedBytes = (pragma(store, "PRAGMA page_count") - freePages) * pragma(store, "PRAGMA page_size");
    const QString target = box.WriteFile(u"target.fxdb"_s, QByteArray("an older save"));
    SaveClashes2File(target);
    EXPECT_LE(GetFileSize(target), usedBytes) << "the free pages stayed behind";
    EXPECT_TRUE(IsValidMDB(target));
    EXPECT_EQ(SaveCopies(), QStringList());

    {
        SqliteDb saved(target, SqliteDb::OpenMode::ReadOnly);
        EXPECT_EQ(pragma(saved, "PRAGMA freelist_count"), 0);
        const QStringList tables = GetDBTables(store);
        EXPECT_TRUE(tables.contains(u"base_clash_table"_s));
        EXPECT_TRUE(tables.contains(u"dgn_settings"_s));
        EXPECT_EQ(GetDBTables(saved), tables);
        EXPECT_FALSE(IsLocalTableExists(saved, u"MSysAnything"_s));
        const QString schema = u"SELECT type, name, tbl_name, sql FROM sqlite_master WHERE tbl_name NOT LIKE 'MSys%' AND tbl_name NOT LIKE 'sqlite%' ORDER BY name"_s;
        EXPECT_EQ(Rows(saved, schema), Rows(store, schema)) << "types, keys and indices as declared";
        for (const QString &table : tables) {
            const QString all = u"SELECT * FROM [%1] ORDER BY rowid"_s.arg(table);
            EXPECT_EQ(Rows(saved, all), Rows(store, all)) << table.toStdString();
        }
    }

    // A table the copy cannot name fails the next save half-way; the target stays as saved.
    const QByteArray older = fxtest::Sandbox::ReadFile(target);
    ClashConnection().Execute(u"CREATE TABLE [odd$name] (id INT);"_s);
    const QString failure = fxtest::FailureText([&] { SaveClashes2File(target); });
    EXPECT_TRUE(failure.startsWith(u"SaveClashes2File: "_s)) << failure.toStdString();
    EXPECT_TRUE(failure.contains(u"no such table"_s)) << failure.toStdString();
    EXPECT_EQ(fxtest::Sandbox::ReadFile(target), older);
    EXPECT_EQ(SaveCopies(), QStringList());
    EXPECT_EQ(fxtest::LogLineCount(failure), 1);

    // The final copy into a folder that is not there.
    ClashConnection().Execute(u"DROP TABLE [odd$name];"_s);
    const QString nowhere = box.Root() + u"missing/target.fxdb"_s;
    const QString copyFailure = fxtest::FailureText([&] { SaveClashes2File(nowhere); });
    EXPECT_TRUE(copyFailure.startsWith(u"SaveClashes2File: CopyFileA: "_s)) << copyFailure.toStdString();
    EXPECT_FALSE(QFile::exists(nowhere));
    EXPECT_EQ(SaveCopies(), QStringList());

    // The store stays usable: the next save goes through.
    SaveClashes2File(target);
    EXPECT_TRUE(IsValidMDB(target));
    EXPECT_EQ(GetProjectNumber4MDB(target), project);
}

TEST_P(ClashLoad, a_project_locked_by_another_user_asks_first_and_opens_read_only_without_touching_the_markers)
{
    Build(true, 40);
    {
        fxtest::RecordingMessageBox boxes(IdNo);
        InitClashes(ControlFile(), project);
        ASSERT_EQ(boxes.boxes.size(), 2u);
        const fxtest::ShownBox &first = boxes.boxes.at(0);
        EXPECT_TRUE(first.text.startsWith(u"Project marker file is locked by 'FX_jdoe' since "_s)) << first.text.toStdString();
        EXPECT_TRUE(first.text.endsWith(u".\nTo unlock press 'Yes'.\nTo continue anyway (read only mode) without unlocking press 'No'"_s))
            << first.text.toStdString();
        EXPECT_EQ(first.flags & 0xF, quint32(MbYesNoCancel));
        EXPECT_EQ(first.flags & 0x300, quint32(MbDefButton3));
        EXPECT_EQ(first.flags & 0xF0, quint32(MbIconCritical));
        EXPECT_TRUE(boxes.boxes.at(1).text.startsWith(u"Some of area marker files are locked by 'UNKNOWN' since "_s))
            << boxes.boxes.at(1).text.toStdString();
        EXPECT_EQ(boxes.boxes.at(1).flags & 0x300, quint32(MbDefButton3));
    }
    EXPECT_TRUE(IsReadOnly());
    EXPECT_TRUE(IsSchemaAvailable());
    LockHolder holder;
    EXPECT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_jdoe"_s) << "no marker of ours was set or cleared";
    EXPECT_TRUE(IsIntAreaLocked(cris, project));
    EXPECT_GT(StoreCount(u"SELECT COUNT(*) FROM base_clash_table"_s), 0);

    // Cancel, the default of the box, refuses the project and leaves nothing behind.
    Process().BatchMode = true;
    EXPECT_EQ(fxtest::FailureText([&] { InitClashes(ControlFile(), project); }),
              u"InitClashes: LoadClashes: "_s + QString::fromLatin1(msg::ProjectMarkerLocked));
    Process().BatchMode = false;
    ExpectNothingOpen();

    // Allowed to open locked projects, the answer No gives a writable session.
    SetIniValue(SiteUserConfigFile(*layout, project), u"Options"_s, u"AllowOpenLockedProject"_s, u"1"_s);
    {
        fxtest::RecordingMessageBox boxes(IdNo);
        InitClashes(ControlFile(), project);
        ASSERT_EQ(boxes.boxes.size(), 2u);
        EXPECT_TRUE(boxes.boxes.at(0).text.endsWith(u"To continue anyway without unlocking press 'No'"_s))
            << boxes.boxes.at(0).text.toStdString();
    }
    EXPECT_FALSE(IsReadOnly());

    // Yes clears the other user's markers; ours are taken and given back around the import.
    {
        fxtest::RecordingMessageBox boxes(IdYes);
        InitClashes(ControlFile(), project);
        EXPECT_EQ(boxes.boxes.size(), 2u) << "unlocking the project leaves the areas to ask about";
    }
    EXPECT_FALSE(IsReadOnly());
    EXPECT_FALSE(IsProjectLocked(cris, project));
    EXPECT_FALSE(IsIntAreaLocked(cris, project));
}

TEST_P(ClashLoad, a_load_that_fails_after_the_import_frees_the_store_and_the_markers)
{
    Build(false);
    const QString schema = u"pd_"_s + project;
    cris.DBWrite(schema, u"INSERT INTO pdtable_132 SELECT * FROM pdtable_132 WHERE unique_clash_id = "
                         u"(SELECT MIN(unique_clash_id) FROM pdtable_132);"_s, true);
    cris.DBWrite(schema, u"UPDATE pdtable_132 SET if_approval_status = 99 WHERE unique_clash_id = "
                         u"(SELECT MIN(unique_clash_id) FROM pdtable_132);"_s, true);
    EXPECT_EQ(fxtest::FailureText([&] { InitClashes(ControlFile(), project); }),
              u"InitClashes: LoadClashes: "_s + ArgForm(msg::DoubleClashes, {project, u"\n"_s}));
    ExpectNothingOpen();
    EXPECT_FALSE(IsProjectLocked(cris, project));
    EXPECT_FALSE(IsIntAreaLocked(cris, project));

    cris.DBWrite(schema, u"DELETE FROM pdtable_132;"_s, true);
    EXPECT_EQ(fxtest::FailureText([&] { InitClashes(ControlFile(), project); }),
              u"InitClashes: LoadClashes: "_s + ArgForm(msg::NoClashesInProject, {project, u"\n"_s}));
    ExpectNothingOpen();
    EXPECT_FALSE(IsProjectLocked(cris, project));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ClashLoad, testing::Values("sqlite", "ris", "postgres"));

TEST(ClashStoreSize, the_limit_itself_passes_one_byte_more_fails_and_past_four_fifths_a_warning_shows)
{
    fxtest::Sandbox box;
    Process().BatchMode = false;
    const QString file = box.WriteFile(u"big.fxdb"_s, QByteArray(1000, 'x'));
    const QString ini = box.ProgramDir() + u"Fendrix.ini"_s;
    EXPECT_EQ(MaxDBSize(), 2147483648LL);
    SetIniValue(ini, u"Settings"_s, u"MaxDBSize"_s, u"1000"_s);
    EXPECT_EQ(MaxDBSize(), 1000);
    {
        fxtest::RecordingMessageBox boxes(IdOk);
        CheckIfMaxDBSizeIsReached(file, false);
        EXPECT_TRUE(boxes.boxes.empty());
        CheckIfMaxDBSizeIsReached(file, true);
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_EQ(boxes.boxes.at(0).text,
                  u"80 percent (1 KB) of maximal allowed Fendrix database file size '"_s + file +
                      u"' has been reached.\nPlease save all changes to file to compress the database (File->Save changes) "
                      u"and reload clashes from this file (File->Load clashes from file)"_s);
        EXPECT_EQ(boxes.boxes.at(0).flags & 0xF0, quint32(MbIconCritical));
    }
    SetIniValue(ini, u"Settings"_s, u"MaxDBSize"_s, u"999"_s);
    EXPECT_EQ(fxtest::FailureText([&] { CheckIfMaxDBSizeIsReached(file, false); }),
              u"CheckIfMaxDBSizeIsReached: "_s + ArgForm(msg::MaxDBSizeReached, {file, u"1"_s}));
    SetIniValue(ini, u"Settings"_s, u"MaxDBSize"_s, u"1250"_s);
    {
        fxtest::RecordingMessageBox boxes(IdOk);
        CheckIfMaxDBSizeIsReached(file, true);
        EXPECT_TRUE(boxes.boxes.empty()) << "exactly four fifths is not past them";
    }
}

// The gateway's own rules, apart from any database.

#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/projectdatabase.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(ParseSQL, the_table_ends_at_a_blank_else_at_a_semicolon_else_at_the_end)
{
    const QString cases[][3] = {
        {u"SELECT * FROM pdtable_131 WHERE a = 1;"_s, u"pdtable_131"_s, u" WHERE a = 1;"_s},
        {u"select * from pdtable_131;"_s, u"pdtable_131"_s, u";"_s},
        {u"SELECT * FROM pdtable_131"_s, u"pdtable_131"_s, QString()},
        {u"SELECT from_date, x FROM  t2 ORDER BY x"_s, u"t2"_s, u" ORDER BY x"_s},
        {u"SELECT a_from, x\nFROM t3"_s, u"t3"_s, QString()},
    };
    for (const auto &[sql, table, rest] : cases) {
        const ParsedSQL parsed = ParseSQL(sql);
        EXPECT_EQ(parsed.table, table) << sql.toStdString();
        EXPECT_EQ(parsed.rest, rest) << sql.toStdString();
    }
    EXPECT_EQ(fxtest::FailureText([] { ParseSQL(u"  "_s); }), u"CRIS::ParseSQL: "_s + ArgForm(msg::SqlNotDefined));
    EXPECT_EQ(fxtest::FailureText([] { ParseSQL(u"SELECT 1"_s); }), u"CRIS::ParseSQL: "_s + ArgForm(msg::TableNameNotDefined));
}

TEST(CRIS, the_temporary_folder_is_private_below_temp_and_goes_with_the_gateway)
{
    fxtest::Sandbox box;
    QString folder;
    {
        CRIS cris;
        folder = cris.GetTempDir();
        EXPECT_TRUE(folder.startsWith(box.Temp()));
        EXPECT_NE(folder, box.Temp());
        EXPECT_TRUE(QDir(folder).exists());
        // A missing folder given falls back to TEMP.
        cris.SetTempDir(box.Root() + u"missing"_s);
        EXPECT_TRUE(cris.GetTempDir().startsWith(box.Temp()));
        EXPECT_FALSE(QDir(folder).exists());
        folder = cris.GetTempDir();
    }
    EXPECT_FALSE(QDir(folder).exists());
    box.Env().Set("TEMP", box.Root() + u"gone"_s);
    box.Env().Set("TMPDIR", box.Root() + u"gone"_s);
    EXPECT_EQ(fxtest::FailureText([] { CRIS().GetTempDir(); }),
              u"CRIS::GetTempDir: CRIS::SetTempDir: "_s + ArgForm(msg::CrisTempDirMissing));
}

TEST(CRIS, number_separators_are_set_for_the_work_and_restored_after_it)
{
    fxtest::Sandbox box;
    const QString registry = GetConfigDir() + u"Registry.ini"_s;
    QDir().mkpath(GetConfigDir());
    QFile file(registry);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Control Panel\\International]\nsDecimal=,\nsThousand=.\n");
    file.close();
    CRIS cris;
    cris.SetLanguageSettings();
    EXPECT_EQ(GetIniValue(registry, u"Control Panel\\International"_s, u"sDecimal"_s), u"."_s);
    EXPECT_EQ(GetIniValue(registry, u"Control Panel\\International"_s, u"sThousand"_s), u","_s);
    cris.SetLanguageSettings(); // a second call keeps the user's values, not ours
    cris.RestoreLanguageSettings();
    EXPECT_EQ(GetIniValue(registry, u"Control Panel\\International"_s, u"sDecimal"_s), u","_s);
    EXPECT_EQ(GetIniValue(registry, u"Control Panel\\International"_s, u"sThousand"_s), u"."_s);
}

TEST(ProjectDatabase, the_user_config_file_names_the_kind_and_without_it_the_project_is_on_ris)
{
    fxtest::Sandbox box;
    const QString config = box.WriteFile(u"user.ini"_s, "[PLANTDatabase]\nType=SQLite\nPath=/srv/schemas\n"
                                                        "[PGDatabase]\nType=3\nServer=db:5433\nDatabase=pds\n"
                                                        "User=rev\nPassword=it's\n[BADDatabase]\nType=Access\n");
    const ProjectDatabase plant = GetProjectDatabase(config, u"PLANT"_s);
    EXPECT_EQ(plant.type, DBConType::SQLite);
    EXPECT_EQ(plant.path, u"/srv/schemas"_s);
    const ProjectDatabase pg = GetProjectDatabase(config, u"pg"_s);
    EXPECT_EQ(pg.type, DBConType::PostgreSQL);
    EXPECT_EQ(pg.server + u'|' + pg.database + u'|' + pg.user + u'|' + pg.password, u"db:5433|pds|rev|it's"_s);
    EXPECT_EQ(GetProjectDatabase(config, u"OTHER"_s).type, DBConType::RIS);
    EXPECT_EQ(fxtest::FailureText([&] { GetProjectDatabase(config, u"BAD"_s); }),
              u"GetProjectDatabase: "_s + ArgForm(msg::UnknownDatabaseType, {u"Access"_s}));

    CRIS cris;
    ProjectDatabase here = plant;
    here.path = box.Root();
    UseProjectDatabase(cris, here);
    EXPECT_EQ(cris.GetDBConType(), DBConType::SQLite);
}

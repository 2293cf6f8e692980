#include "pdssim/projectfiles.h"
#include "pdssim/sitemessages.h"
#include "pdssim/siteconfig.h"
#include "pdssim/siteserver.h"

#include "frame/inifile.h"
#include "frame/registry.h"
#include "frame/settings.h"
#include "frame/unc.h"
#include "pds/cris.h"
#include "frame/messages.h"
#include "pds/messages.h"
#include "pds/projectdatabase.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

TEST(SiteConfig, installed_in_the_program_folder_it_leads_fendrix_to_the_ris_tools_shell_and_project_folders)
{
    fxtest::Sandbox box;
    const SiteLayout layout(box.Root() + u"site"_s);
    WriteSiteConfig(layout, {u"demo"_s, u"ris"_s, true});
    box.WriteFile(u"site/ris/BIN/risbatch"_s, "#!/bin/sh\n");
    box.WriteFile(u"site/ris/BIN/risunlod"_s, "#!/bin/sh\n");
    WriteProjectFiles(layout, u"demo"_s, DgnSettings());
    const QString pipingFolder = ModelServerFolder(layout, u"demo"_s, u"Piping"_s);
    WriteModelFiles(layout, {{u"P101"_s, pipingFolder, ModelFileSpec(u"P101"_s), {}}}, DgnSettings());

    // Nothing is found before the program folder has the site's entries.
    EXPECT_EQ(fx::CRIS::FindRISPath(), QString());
    InstallSiteConfig(layout, box.ProgramDir());
    EXPECT_EQ(fx::CRIS::FindRISPath(), layout.RisBinDir());

    const fx::RegRoot lm = fx::RegRoot::LocalMachine;
    const QString shell = u"Software\\Intergraph\\PD_SHELL"_s;
    ASSERT_EQ(fx::RegGetSubKeys(lm, shell).value(0), SitePdShellVersion());
    const QString shellKey = shell + u'\\' + SitePdShellVersion();
    EXPECT_EQ(fx::RegGetValue(lm, shellKey, u"ControlFile"_s).text, layout.ControlFile());
    const QString pdsperl = fx::RegGetValue(lm, shellKey, u"PathName"_s).text + u"share/pdsperl"_s;
    EXPECT_TRUE(QFileInfo(pdsperl).isExecutable());

    // The server paths the schema stores come out at the site's folders.
    EXPECT_EQ(fx::LocalPath2UNC(SiteServer(), ServerPath(layout, layout.ProjectDir(u"demo"_s))), layout.ProjectDir(u"demo"_s));
    EXPECT_EQ(fx::LocalPath2UNC(u"\\\\PDSSRV"_s, pipingFolder) + u"p101.dgn"_s,
              layout.ProjectDir(u"demo"_s) + u"piping/models/p101.dgn"_s);
    EXPECT_TRUE(QFileInfo::exists(layout.ProjectDir(u"demo"_s) + u"piping/models/p101.dgn"_s));
    EXPECT_TRUE(QFileInfo::exists(layout.ProjectDir(u"demo"_s) + u"mdlsdz.dgn"_s));
    EXPECT_EQ(fxtest::FailureText([] { fx::LocalPath2UNC(u"pdssrv"_s, u"D:\\other"_s); }),
              u"LocalPath2UNC: "_s + fx::ArgForm(fx::msg::DirectoryOnServerNotAccessible, {u"D:\\other"_s, u"pdssrv"_s}));

    // The program folder's own entries stay; every clash type of the schema is named.
    const QString ini = box.ProgramDir() + u"Fendrix.ini"_s;
    EXPECT_TRUE(fx::IniFile::SectionNames(ini).contains(u"Settings"_s));
    const QString types = fx::GetIniValue(ini, u"ClashTypesDefinition"_s, {}, {}, false);
    EXPECT_EQ(types, u"1;2;3;4;5;6"_s);
    EXPECT_EQ(fx::GetIniValue(ini, u"ModelStatusDefinition"_s, u"3"_s), u"Approved"_s);

    const fx::ProjectDatabase database = fx::GetProjectDatabase(SiteUserConfigFile(layout, u"demo"_s), u"demo"_s);
    EXPECT_EQ(database.type, fx::DBConType::RIS);
    EXPECT_EQ(database.path, layout.RisBinDir());
}

TEST(SiteConfig, the_database_section_follows_the_kind_and_an_unknown_kind_is_refused)
{
    fxtest::Sandbox box;
    const SiteLayout layout(box.Root() + u"site"_s);
    const QString file = SiteUserConfigFile(layout, u"p1"_s);
    WriteSiteConfig(layout, {u"p1"_s, u"SQLite"_s, false});
    fx::ProjectDatabase database = fx::GetProjectDatabase(file, u"p1"_s);
    EXPECT_EQ(database.type, fx::DBConType::SQLite);
    EXPECT_EQ(database.path, layout.SqliteSchemaDir());
    EXPECT_EQ(fx::GetIniValue(layout.ConfigDir() + u"Fendrix.ini"_s, u"ClashTypesDefinition"_s, u"6"_s),
              u"Construction - Construction"_s);

    WriteSiteConfig(layout, {u"p1"_s, u"postgres=host=db.local port=5433;dbname=fx user=clash password=s3cr=t"_s, false});
    database = fx::GetProjectDatabase(file, u"p1"_s);
    EXPECT_EQ(database.type, fx::DBConType::PostgreSQL);
    EXPECT_EQ(database.server, u"db.local:5433"_s);
    EXPECT_EQ(database.database, u"fx"_s);
    EXPECT_EQ(database.user, u"clash"_s);
    EXPECT_EQ(database.password, u"s3cr=t"_s);

    EXPECT_EQ(fxtest::FailureText([&] { WriteSiteConfig(layout, {u"p1"_s, u"postgres=user=x"_s, false}); }),
              u"WriteSiteConfig: "_s + fx::ArgForm(pdssim::sitemsg::SimConnectionIncomplete, {u"postgres=user=x"_s}));
    EXPECT_EQ(fxtest::FailureText([&] { WriteSiteConfig(layout, {u"p1"_s, u"oracle"_s, false}); }),
              u"WriteSiteConfig: "_s + fx::ArgForm(pdssim::sitemsg::SimUnknownDatabaseKind, {u"oracle"_s}));
}

} // namespace

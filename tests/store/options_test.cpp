// The table of options: each key's section, scope and default, how its accessors read it, and
// where the viewer choice is kept.

#include "frame/inifile.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "store/clashstore.h"
#include "store/options.h"
#include "viewers/externalviewers.h"

#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// The table as the settings files of every site hold it; "<program>" stands for the program's
// folder. The built-in viewer and MSTNPath take the defaults of a machine without viewers.
struct TableRow
{
    const char *section;
    const char *key;
    bool project;
    const char *defaultValue;
};

// Named in ctest by its key, so that the test names stay the same from build to build.
[[maybe_unused]] void PrintTo(const TableRow &row, std::ostream *out)
{
    *out << row.key;
}

const TableRow kTable[] = {
    {"Options", "ShowClashesInSPR", true, "1"},
    {"Options", "ShowClashesInBuiltInViewer", true, "1"},
    {"Options", "MSTNPath", false, ""},
    {"Options", "DGNSeedFile", true, "<program>Seed/Seed.dgn"},
    {"Options", "AutoGenerateSPRSession", true, "1"},
    {"Options", "DRIFile", true, ""},
    {"Options", "SPRWorkingDirectory", true, ""},
    {"Options", "ShowClashDialog", true, "1"},
    {"Options", "View", true, "0"},
    {"Options", "ViewMode", true, "0"},
    {"Options", "ShowViewControl", true, "1"},
    {"Options", "CompSeparator", true, ""},
    {"Options", "PDSReportFile", true, ""},
    {"Options", "AllowOpenLockedProject", false, "0"},
    {"Options", "CompAColor", false, "255"},
    {"Options", "CompBColor", false, "65280"},
    {"DescrDialog", "ApprovedDescr", false, "Approved by Fendrix"},
    {"DescrDialog", "UnapprovedDescr", false, "Unapproved by Fendrix"},
    {"DescrDialog", "Descr", false, ""},
    {"DescrDialog", "AddUserID", false, "1"},
    {"DescrDialog", "ChangeClashDescr", false, "1"},
    {"DescrDialog", "OverwriteClashDescr", false, "1"},
    {"DescrDialog", "ShowDescrDialog", false, "1"},
    {"AutoFilter", "SetAutoFilter", false, "1"},
    {"AutoFilter", "ShowFilterDialog", false, "1"},
    {"VolumeFilter", "Area", true, ""},
    {"VolumeFilter", "EastingLow", true, ""},
    {"VolumeFilter", "NorthingLow", true, ""},
    {"VolumeFilter", "ElevationLow", true, ""},
    {"VolumeFilter", "EastingHigh", true, ""},
    {"VolumeFilter", "NorthingHigh", true, ""},
    {"VolumeFilter", "ElevationHigh", true, ""},
    {"DVCS", "EastingCenter", true, ""},
    {"DVCS", "NorthingCenter", true, ""},
    {"DVCS", "ElevationCenter", true, ""},
    {"AdvancedFilter", "LastUsedFilterColumn", false, ""},
};

class Options : public testing::Test
{
protected:
    void SetUp() override
    {
        SetUserConfigFile(file);
        ClashStore().ProjectDefinition.name = u"P1"_s;
    }
    void TearDown() override { FreeClashes(); }

    void Write(const QString &section, const char *key, const QString &value)
    {
        SetIniValue(file, section, QString::fromLatin1(key), value);
    }

    fxtest::Sandbox box;
    const QString file = box.AppData() + u"reviewer.ini"_s;
};

const OptionKey &KeyOf(const char *name)
{
    for (const OptionKey *key : OptionTable())
        if (qstrcmp(key->key, name) == 0)
            return *key;
    ADD_FAILURE() << "no option " << name;
    return *OptionTable().first();
}

class OptionRow : public Options, public testing::WithParamInterface<TableRow>
{
};

} // namespace

TEST_F(Options, the_table_holds_every_key_once_in_its_order_with_its_section_and_scope)
{
    ASSERT_EQ(OptionTable().size(), qsizetype(std::size(kTable)));
    for (qsizetype i = 0; i < OptionTable().size(); ++i) {
        const OptionKey &key = *OptionTable().at(i);
        const TableRow &row = kTable[i];
        EXPECT_STREQ(key.key, row.key) << "place " << i;
        EXPECT_EQ(OptionSection(key), (row.project ? u"P1"_s : QString()) + QString::fromLatin1(row.section)) << row.key;
    }
}

TEST_P(OptionRow, reads_its_default_until_its_own_section_holds_a_value)
{
    const TableRow &row = GetParam();
    const OptionKey &key = KeyOf(row.key);
    QString expected = QString::fromLatin1(row.defaultValue);
    expected.replace(u"<program>"_s, ProgramDir()).replace(u'/', QDir::separator());
    EXPECT_EQ(GetOption(key), expected) << "an empty file";

    // The other scope's section is not this key's: a project key is no shared one, and back.
    const QString own = QString::fromLatin1(row.section);
    Write(row.project ? own : u"P1"_s + own, row.key, u"elsewhere"_s);
    EXPECT_EQ(GetOption(key), expected);
    Write(row.project ? u"P1"_s + own : own, row.key, QString());
    EXPECT_EQ(GetOption(key), expected) << "an empty value";

    SetOption(key, u"7"_s);
    EXPECT_EQ(GetOption(key), u"7"_s);
    EXPECT_EQ(GetIniValue(file, row.project ? u"P1"_s + own : own, QString::fromLatin1(row.key)), u"7"_s);
}

INSTANTIATE_TEST_SUITE_P(Table, OptionRow, testing::ValuesIn(kTable),
                         [](const testing::TestParamInfo<TableRow> &info) { return std::string(info.param.key); });

TEST_F(Options, flags_are_off_for_zero_and_locked_projects_open_only_for_one)
{
    const struct
    {
        const char *value;
        bool showClashDialog;
        bool allowOpenLocked;
    } cases[] = {{"0", false, false}, {"1", true, true}, {"7", true, false}, {"yes", true, false}, {"", true, false}};
    for (const auto &c : cases) {
        SetOption(option::ShowClashDialog, QString::fromLatin1(c.value));
        SetOption(option::AllowOpenLockedProject, QString::fromLatin1(c.value));
        EXPECT_EQ(GetOptionFlag(option::ShowClashDialog), c.showClashDialog) << c.value;
        EXPECT_EQ(GetOptionFlag(option::AllowOpenLockedProject), c.allowOpenLocked) << c.value;
    }
}

TEST_F(Options, a_colour_that_is_no_whole_colour_number_reads_as_its_default)
{
    EXPECT_EQ(GetOptionColor(option::CompAColor), 255);
    EXPECT_EQ(GetOptionColor(option::CompBColor), 65280);
    for (const char *garbage : {"green", "12,5", "12.5", "-1", "16777216", "99999999999999999999", " "}) {
        SetOption(option::CompBColor, QString::fromLatin1(garbage));
        EXPECT_EQ(GetOptionColor(option::CompBColor), 65280) << garbage;
    }
    SetOption(option::CompBColor, u"16777215"_s);
    EXPECT_EQ(GetOptionColor(option::CompBColor), 16777215);
}

TEST_F(Options, the_built_in_viewer_is_the_default_where_no_external_viewer_runs_and_a_windows_file_keeps_its_choice)
{
    EXPECT_EQ(GetClashViewer(), ClashViewer::BuiltIn);
    // A Windows site's file: its choice stays there for the Windows program, and here, where
    // neither of its viewers runs, the built-in one shows the clashes.
    Write(u"P1Options"_s, "ShowClashesInSPR", u"0"_s);
    EXPECT_EQ(GetClashViewer(), ClashViewer::BuiltIn);
    SetClashViewer(ClashViewer::BuiltIn);
    EXPECT_EQ(GetIniValue(file, u"P1Options"_s, u"ShowClashesInSPR"_s), u"0"_s);

    SetClashViewer(ClashViewer::SmartPlantReview);
    EXPECT_EQ(GetClashViewer(), ClashViewer::SmartPlantReview);
    EXPECT_EQ(GetIniValue(file, u"P1Options"_s, u"ShowClashesInSPR"_s), u"1"_s);
    SetClashViewer(ClashViewer::MicroStation);
    EXPECT_EQ(GetClashViewer(), ClashViewer::MicroStation);
    EXPECT_EQ(GetIniValue(file, u"P1Options"_s, u"ShowClashesInSPR"_s), u"0"_s);

#ifndef Q_OS_WIN
    // Without MicroStation's automation no program named at MSTNPath can show a clash: a file
    // without our key still gets the built-in viewer.
    const QString mstn = box.WriteFile(u"bin/ustation"_s, "#!/bin/sh\n");
    QFile::setPermissions(mstn, QFile::permissions(mstn) | QFileDevice::ExeOwner);
    Write(u"Options"_s, "MSTNPath", mstn);
    SetIniValue(file, u"P1Options"_s, u"ShowClashesInBuiltInViewer"_s, std::nullopt);
    EXPECT_EQ(GetClashViewer(), ClashViewer::BuiltIn);
#endif
}

TEST_F(Options, the_default_microstation_is_the_first_installed_version_7)
{
    EXPECT_EQ(GetDefaultMSTNPath(), QString()) << "no installation in the registry";
    const QString v8 = box.WriteFile(u"mstn8/ustation.exe"_s, "");
    const QString v7 = box.WriteFile(u"mstn7/ustation.exe"_s, "");
    const QString registry = box.ProgramDir() + u"Registry.ini"_s;
    IniFile::Write(registry, {{u"Software\\Bentley\\MicroStation\\V8"_s, u"PathName"_s, v8},
                              {u"Software\\Bentley\\MicroStation\\V8"_s, u"Version"_s, u"08.05.02"_s},
                              {u"Software\\Bentley\\MicroStation\\Gone"_s, u"PathName"_s, box.Root() + u"gone.exe"_s},
                              {u"Software\\Bentley\\MicroStation\\Gone"_s, u"Version"_s, u"07.01.00"_s},
                              {u"Software\\Bentley\\MicroStation\\NoVersion"_s, u"PathName"_s, v8},
                              {u"Software\\Bentley\\MicroStation\\V7"_s, u"PathName"_s, v7},
                              {u"Software\\Bentley\\MicroStation\\V7"_s, u"Version"_s, u"07.01.05"_s}});
    EXPECT_EQ(GetDefaultMSTNPath(), v7);
    EXPECT_EQ(GetOption(option::MSTNPath), v7);
}

// The options dialog without its window: reading bad settings, the checks of OK in their order,
// the writing in the order of the table, the private copy of the advanced filter, and the design
// volume offsets.

#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/messages.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "store/advancedfilter.h"
#include "store/advancedfilteredit.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/messages.h"
#include "store/optionsform.h"
#include "store/optionsmessages.h"
#include "store/volumefilter.h"

#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSettings>

#include <functional>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class OptionsForm : public testing::Test
{
protected:
    void SetUp() override
    {
        Process().WorkDir = box.Temp();
        // Whether tips show goes to the sandbox, not to the user's own settings store.
        for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, box.Root() + u"settings"_s);
        SetUserConfigFile(file);
        ClashStore().ProjectDefinition.name = u"P1"_s;
    }
    void TearDown() override
    {
        FreeClashes();
        Process().WorkDir.clear();
    }

    // The description of what OK's checks refuse; empty when they pass.
    static QString Refusal(const OptionsSettings &settings)
    {
        try {
            CheckOptionsSettings(settings);
        } catch (const Failure &failure) {
            return failure.Description();
        }
        return QString();
    }

    static void ReadOnly(const QString &path) { QFile::setPermissions(path, QFileDevice::ReadOwner); }

    fxtest::Sandbox box;
    const QString file = box.WriteFile(u"config/reviewer.ini"_s, "");
};

} // namespace

TEST_F(OptionsForm, garbage_in_the_settings_reads_as_the_defaults_and_keeps_what_is_stored)
{
    box.WriteFile(u"config/reviewer.ini"_s,
                  "[Options]\nCompAColor=red\nCompBColor=1.5\nAllowOpenLockedProject=yes\n"
                  "[P1DVCS]\nEastingCenter=1,5e\n[AdvancedFilter]\nLastUsedFilterColumn=9\n"
                  "[AdvancedFilterNoSuchColumn]\n0=x\n");
    SetIniValue(GetConfigFile(), u"Settings"_s, u"AutoLoad"_s, u"7"_s);
    const QByteArray before = fxtest::Sandbox::ReadFile(file);

    OptionsSettings settings = ReadOptionsSettings();
    EXPECT_EQ(settings.compAColor, 255);
    EXPECT_EQ(settings.compBColor, 65280);
    EXPECT_FALSE(settings.allowOpenLockedProject);
    EXPECT_EQ(settings.centres[0], u"1,5e"_s) << "shown as it stands, for the user to correct";
    EXPECT_EQ(settings.lastUsedFilterColumn, -1);
    EXPECT_TRUE(settings.autoLoad) << "AutoLoad 7 stands ticked";
    EXPECT_EQ(settings.userConfigFile, file);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file), before) << "reading writes nothing";

    SetIniValue(file, u"AdvancedFilter"_s, u"LastUsedFilterColumn"_s, u"6"_s);
    EXPECT_EQ(ReadOptionsSettings().lastUsedFilterColumn, 6);
    SetIniValue(file, u"AdvancedFilter"_s, u"LastUsedFilterColumn"_s, u"two"_s);
    EXPECT_EQ(ReadOptionsSettings().lastUsedFilterColumn, -1);
}

TEST_F(OptionsForm, ok_refuses_at_the_first_failing_check_in_the_order_of_the_checks)
{
    OptionsSettings s = ReadOptionsSettings();
    s.viewer = ClashViewer::MicroStation;
    s.mstnPath = box.WriteFile(u"mstn/ustation.exe"_s, "");
    s.dgnSeedFile = box.WriteFile(u"seed/seed.dgn"_s, "");
    s.bounds = {u"1"_s, u"-2,5"_s, u".5"_s, u"1e3"_s, u" 7 "_s, QString()};
    s.pdsReportFile = box.WriteFile(u"report.txt"_s, "");
    SetIniValue(GetConfigFile(), u"Settings"_s, u"AutoLoad"_s, u"0"_s);
    ASSERT_EQ(Refusal(s), QString());

    const QString missing = box.Root() + u"missing"_s;
    const std::pair<std::function<void()>, QString> checks[] = {
        {[&] { ReadOnly(GetConfigFile()); }, ArgForm(msg::FileWriteDenied, {GetConfigFile()})},
        {[&] { s.userConfigFile = u"  "_s; }, ArgForm(msg::UserConfigFileNotDefined)},
        {[&] { s.userConfigFile = missing; }, ArgForm(msg::UserConfigFileNotExists, {missing})},
        {[&] { ReadOnly(file); }, ArgForm(msg::FileWriteDenied, {file})},
        {[&] { s.mstnPath.clear(); }, ArgForm(msg::MicroStationFileNotDefined)},
        {[&] { s.mstnPath = missing; }, ArgForm(msg::MicroStationFileNotExists, {missing})},
        {[&] { s.dgnSeedFile = missing; }, ArgForm(msg::MicroStationSeedFileNotExists, {missing})},
        {[&] { ReadOnly(s.dgnSeedFile); }, ArgForm(msg::FileWriteDenied, {s.dgnSeedFile})},
        {[&] { s.bounds[0] = u"1,5e"_s; }, ArgForm(msg::EastingLowNotCorrect, {u"1,5e"_s})},
        {[&] { s.bounds[1] = u"1.2.3"_s; }, ArgForm(msg::NorthingLowNotCorrect, {u"1.2.3"_s})},
        {[&] { s.bounds[2] = u"x"_s; }, ArgForm(msg::ElevationLowNotCorrect, {u"x"_s})},
        {[&] { s.bounds[3] = u"1 2"_s; }, ArgForm(msg::EastingHighNotCorrect, {u"1 2"_s})},
        {[&] { s.bounds[4] = u"--1"_s; }, ArgForm(msg::NorthingHighNotCorrect, {u"--1"_s})},
        {[&] { s.bounds[5] = u"1e999"_s; }, ArgForm(msg::ElevationHighNotCorrect, {u"1e999"_s})},
        {[&] { s.pdsReportFile = missing; }, ArgForm(msg::PDSReportFileNotExists, {missing})},
    };
    // Broken from the last check to the first, each refusal names the earliest broken one.
    for (auto check = std::rbegin(checks); check != std::rend(checks); ++check) {
        check->first();
        EXPECT_EQ(Refusal(s), check->second);
    }
}

TEST_F(OptionsForm, ok_checks_the_session_of_smartplant_review_only_when_it_is_chosen)
{
    OptionsSettings s = ReadOptionsSettings();
    s.viewer = ClashViewer::SmartPlantReview;
    s.autoGenerateSPRSession = true;
    s.sprWorkingDirectory = box.Root() + u"nowhere"_s;
    EXPECT_EQ(Refusal(s), ArgForm(msg::SPRWorkingDirectoryNotExists, {s.sprWorkingDirectory}));
    // The tests may run as root, which no mode bit stops: /proc refuses anyone.
    s.sprWorkingDirectory = u"/proc/self"_s;
    EXPECT_EQ(Refusal(s), ArgForm(msg::DirectoryWriteDenied, {s.sprWorkingDirectory}));
    s.sprWorkingDirectory = box.Temp();
    EXPECT_EQ(Refusal(s), QString());

    s.autoGenerateSPRSession = false;
    EXPECT_EQ(Refusal(s), ArgForm(msg::SPRConfigurationFileNotDefined));
    s.driFile = box.Root() + u"plant.dri"_s;
    EXPECT_EQ(Refusal(s), ArgForm(msg::SPRConfigurationFileNotExists, {s.driFile}));
    box.WriteFile(u"plant.dri"_s, "");
    EXPECT_EQ(Refusal(s), QString());

    // The built-in viewer needs nothing, whatever the other viewers' fields hold.
    s.viewer = ClashViewer::BuiltIn;
    s.driFile.clear();
    s.mstnPath.clear();
    EXPECT_EQ(Refusal(s), QString());
}

TEST_F(OptionsForm, ok_writes_each_section_in_the_order_of_the_table_then_config_ini)
{
    OptionsSettings s = ReadOptionsSettings();
    s.viewer = ClashViewer::MicroStation;
    s.compSeparator = u"-"_s;
    s.neverChangeDescr = true;
    s.area = u"A1"_s;
    s.bounds[3] = u"100"_s;
    s.centres = {u"1"_s, u"2"_s, u"3"_s};
    s.lastUsedFilterColumn = 2;
    s.autoLoad = true;
    const QString other = box.WriteFile(u"other.ini"_s, "[Kept]\nKey=1\n");
    s.userConfigFile = other;
    WriteOptionsSettings(s, nullptr);

    // The sections in the order their first key has in the table, and within each the keys in
    // the table's order; the view settings that the dialog has no control for are not written.
    QStringList written;
    for (const QString &section : IniFile::SectionNames(other))
        for (const QString &key : IniFile::KeyNames(other, section))
            written << section + u"/"_s + key;
    QStringList sections{u"Kept"_s};
    for (const OptionKey *key : OptionTable())
        if (!sections.contains(OptionSection(*key)))
            sections << OptionSection(*key);
    QStringList expected{u"Kept/Key"_s};
    for (const QString &section : sections)
        for (const OptionKey *key : OptionTable())
            if (OptionSection(*key) == section && key != &option::View && key != &option::ViewMode
                && key != &option::ShowViewControl)
                expected << section + u"/"_s + QString::fromLatin1(key->key);
    EXPECT_EQ(written, expected);
    EXPECT_EQ(GetIniValue(other, u"P1Options"_s, u"ShowClashesInSPR"_s), u"0"_s);
    EXPECT_EQ(GetIniValue(other, u"DescrDialog"_s, u"ChangeClashDescr"_s), u"0"_s);
    EXPECT_EQ(GetIniValue(other, u"P1VolumeFilter"_s, u"EastingHigh"_s), u"100"_s);

    // The file chosen becomes the user's, and AutoLoad follows in Config.ini.
    EXPECT_EQ(GetUserConfigFile(), other);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), other);
    EXPECT_TRUE(ConfigAutoLoad());
}

TEST_F(OptionsForm, the_advanced_filter_is_edited_on_a_copy_that_only_copy_back_carries_over)
{
    const QString section = AdvancedFilterSection(u"Discipline"_s);
    IniFile::Write(file, {{section, u"0"_s, u"Piping"_s}, {section, u"1"_s, u"Civil"_s}, {u"Options"_s, u"X"_s, u"1"_s}});
    const QByteArray before = fxtest::Sandbox::ReadFile(file);
    QString copy;
    {
        AdvancedFilterEdit edit(file);
        copy = edit.File();
        EXPECT_NE(copy, file);
        // No project: only the kept values, ticked.
        EXPECT_EQ(edit.ColumnValues(u"Discipline"_s),
                  (QList<FilterValueEntry>{{u"Piping"_s, true}, {u"Civil"_s, true}}));
        edit.KeepValues(u"Discipline"_s, {u"Equipment"_s});
        edit.KeepValues(u"Clash type"_s, {u"Hard"_s, u"NOT DEFINED"_s});
        EXPECT_EQ(edit.KeptValues(u"Discipline"_s), QStringList{u"Equipment"_s});
        EXPECT_EQ(fxtest::Sandbox::ReadFile(file), before) << "the user's file is untouched until OK";
        try {
            edit.ColumnValues(u"Colour"_s);
            ADD_FAILURE() << "an unknown column is refused";
        } catch (const Failure &failure) {
            EXPECT_TRUE(failure.Description().contains(ArgForm(msg::UnknownFilterColumn, {u"Colour"_s})));
        }
    }
    EXPECT_FALSE(QFile::exists(copy)) << "Cancel: the copy goes with the dialog";
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file), before);

    AdvancedFilterEdit edit(file);
    edit.KeepValues(u"Discipline"_s, {u"Equipment"_s});
    edit.CopyBack(file);
    EXPECT_EQ(GetAdvancedFilter(file),
              u"(NOT [discipline_a] IN('Equipment') OR NOT [discipline_b] IN('Equipment') OR ([discipline_a] IS NULL "
              "OR [discipline_b] IS NULL))"_s);
    EXPECT_EQ(GetIniValue(file, u"Options"_s, u"X"_s), u"1"_s) << "other sections stay";
    edit.Clear();
    edit.CopyBack(file);
    EXPECT_EQ(GetAdvancedFilter(file), QString());
}

TEST_F(OptionsForm, values_are_ticked_like_the_pattern)
{
    const struct
    {
        const char *text;
        const char *pattern;
        bool like;
    } cases[] = {{"PIPE-12", "pipe*", true}, {"PIPE-12", "P?PE-##", true},  {"PIPE-1A", "PIPE-##", false},
                 {"Civil", "[a-c]ivil", true}, {"Civil", "[!c]ivil", false}, {"a.b", "a.b", true},
                 {"axb", "a.b", false},        {"50%", "50%", true},        {"x", "[", false}};
    for (const auto &c : cases)
        EXPECT_EQ(IsLike(QString::fromLatin1(c.text), QString::fromLatin1(c.pattern)), c.like)
            << c.text << " like " << c.pattern;
}

TEST_F(OptionsForm, offsets_and_areas_of_the_volume_page)
{
    const auto refusal = [](const std::array<QString, 3> &centres) {
        try {
            CheckDvcsOffsets(centres);
        } catch (const Failure &failure) {
            return failure.Description();
        }
        return QString();
    };
    EXPECT_EQ(refusal({u"1,5"_s, u"-2.5e3"_s, QString()}), QString());
    EXPECT_EQ(refusal({u"1"_s, u"1,5e"_s, u"z"_s}), ArgForm(msg::DvcsNorthingNotCorrect, {u"1,5e"_s}));
    EXPECT_EQ(refusal({u"1,5e"_s, u"z"_s, u"z"_s}), ArgForm(msg::DvcsEastingNotCorrect, {u"1,5e"_s}));
    EXPECT_EQ(refusal({u"0"_s, u"0"_s, u"z"_s}), ArgForm(msg::DvcsElevationNotCorrect, {u"z"_s}));
    EXPECT_FALSE(IsDvcsDefined({u"0"_s, u"0,0"_s, QString()}));
    EXPECT_TRUE(IsDvcsDefined({QString(), u"0,5"_s, QString()}));

    const QList<InterferenceArea> areas{{u"A1 (Piping)"_s, u"A1"_s, {1, 2, 3, 4.5, 5.25, -6}},
                                        {u"A1 (Civil)"_s, u"A1"_s, {9, 9, 9, 9, 9, 9}}};
    EXPECT_EQ(AreaBoundTexts(areas, u"A1 (Civil)"_s),
              (std::array<QString, 6>{u"1.000"_s, u"2.000"_s, u"3.000"_s, u"4.500"_s, u"5.250"_s, u"-6.000"_s}))
        << "the first area of the name counts";
    EXPECT_EQ(AreaBoundTexts(areas, u"B2 (Piping)"_s), (std::array<QString, 6>{}));
    EXPECT_EQ(AreaBoundTexts(areas, QString()), (std::array<QString, 6>{}));
}

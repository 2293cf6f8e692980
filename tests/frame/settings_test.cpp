#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

TEST(GetIniValue, empty_or_missing_value_gives_the_default_and_a_section_gives_its_key_names)
{
    fxtest::Sandbox box;
    const QString file = box.WriteFile(u"s.ini"_s, "[S]\nEmpty=\nBlank=   \nQuoted=\" x \"\nplain=  y  \n; note\n[Void]\n");
    const QString def = u"def"_s;
    for (const auto &[section, key] : {std::pair("S", "Empty"), {"S", "Blank"}, {"S", "Missing"}, {"Nope", "plain"}})
        EXPECT_EQ(GetIniValue(file, QString::fromUtf8(section), QString::fromUtf8(key), def), def) << key;
    EXPECT_EQ(GetIniValue(file, u"S"_s, u"Quoted"_s), u"x"_s);
    EXPECT_EQ(GetIniValue(file, u"s"_s, u"PLAIN"_s), u"y"_s);
    EXPECT_EQ(GetIniValue(box.Root() + u"none.ini"_s, u"S"_s, u"k"_s), QString());
    EXPECT_EQ(GetIniValue(file, u"s"_s, QString(), QString(), false), u"Empty;Blank;Quoted;plain"_s);
    EXPECT_EQ(GetIniValue(file, u"Void"_s, QString(), QString(), false), QString());
    QStringList names, values;
    GetIniSection2Array(file, u"S"_s, names, values);
    EXPECT_EQ(names.join(u','), u"Empty,Blank,Quoted,plain"_s);
    EXPECT_EQ(values.join(u','), u",,x,y"_s);
    GetIniSection2Array(file, u"Void"_s, names, values);
    EXPECT_TRUE(names.isEmpty() && values.isEmpty());
}

TEST(GetIniValue, values_and_listings_longer_than_the_buffer_are_cut_as_windows_cuts_them)
{
    fxtest::Sandbox box;
    QByteArray content = "[S]\nk=" + QByteArray(40000, 'v') + "\n[Big]\n";
    QString listed;
    for (int i = 0; i < 20000; ++i) {
        const QByteArray name = "key_" + QByteArray::number(i).rightJustified(6, '0') + QByteArray(50, 'n');
        content += name + "=1\n";
        listed += QString::fromLatin1(name) + u';';
    }
    const QString file = box.WriteFile(u"s.ini"_s, content);
    EXPECT_EQ(GetIniValue(file, u"S"_s, u"k"_s).size(), 32767);
    EXPECT_EQ(GetIniValue(file, u"S"_s, u"k"_s, QString(), true, true).size(), 40000);
    // The call fills 1,048,574 characters and two NULs; the listing keeps one character less.
    EXPECT_EQ(GetIniValue(file, u"Big"_s, QString(), QString(), false, true), listed.left((1 << 20) - 3));
}

TEST(GetConfigDir, first_non_blank_variable_gives_the_folder_made_if_missing)
{
    fxtest::Sandbox box;
    const QString cases[][5] = { // APPDATA, USERPROFILE, XDG_CONFIG_HOME, HOME; the folder or the failure
        {u"ROOT/app/"_s, u"ROOT/profile"_s, u"ROOT/xdg"_s, u"ROOT/home"_s, u"ROOT/app/Norvane/Fendrix/"_s},
        {u"  "_s, u"ROOT/profile"_s, u"ROOT/xdg"_s, u"ROOT/home"_s, u"ROOT/profile/Norvane/Fendrix/"_s},
        {{}, u" "_s, u"ROOT/xdg"_s, u"ROOT/home"_s, u"ROOT/xdg/Norvane/Fendrix/"_s},
        {{}, {}, u" "_s, u"ROOT/home"_s, u"ROOT/home/.config/Norvane/Fendrix/"_s},
        {{}, u" "_s, {}, u" "_s, u"GetConfigDir: "_s + ArgForm(msg::ConfigDirMissing, {QString()})},
        {u"/proc/self/nonexistent"_s, {}, {}, {},
         u"GetConfigDir: CreateFolderA: "_s + ArgForm(msg::CreatingDirectoryFailed, {u"/proc/self/nonexistent/Norvane/Fendrix/"_s})},
    };
    for (const auto &c : cases) {
        int i = 0;
        for (const char *var : {"APPDATA", "USERPROFILE", "XDG_CONFIG_HOME", "HOME"})
            box.Env().Set(var, QString(c[i++]).replace(u"ROOT/"_s, box.Root()));
        const QString expected = QString(c[4]).replace(u"ROOT/"_s, box.Root());
        const QString failure = fxtest::FailureText([] { GetConfigDir(); });
        if (!failure.isEmpty())
            EXPECT_EQ(failure, expected);
        else
            EXPECT_TRUE(GetConfigDir() == expected && QFileInfo(expected).isDir()) << qPrintable(expected);
    }
}

TEST(UserConfigFile, is_the_user_name_in_the_config_folder_unless_a_path_in_an_existing_folder_is_given)
{
    fxtest::Sandbox box;
    EXPECT_EQ(GetUserConfigFile(), GetConfigDir() + GetLogonUserName() + u".ini"_s);
    const QString given = box.Root() + u"mine.ini"_s;
    SetUserConfigFile(given);
    EXPECT_EQ(fxtest::FailureText([&] { SetUserConfigFile(box.Root() + u"missing/user.ini"_s); }),
              u"SetUserConfigFile: "_s + ArgForm(msg::ConfigDirMissing, {box.Root() + u"missing/"_s}));
    EXPECT_EQ(GetUserConfigFile(), given);
}

// Config.ini is shared with the Windows program, so each key must land in its section.
TEST(ConfigKeys, values_land_where_the_windows_program_looks_and_auto_load_is_on_for_anything_but_zero)
{
    fxtest::Sandbox box;
    EXPECT_FALSE(ConfigAutoLoad());
    SetConfigLanguage(u"German"_s);
    SetConfigAutoLoad(true);
    SetConfigUserConfigFile(ExecutionModeKind::Approve, u"/a.ini"_s);
    SetConfigUserConfigFile(ExecutionModeKind::Check, u"/c.ini"_s);
    SetConfigControlFile(u"d:\\pds\\pds.cmd"_s);
    SetConfigProject(u"d:\\pds\\pds.cmd"_s, u"PROJ1"_s);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetConfigFile()),
              QByteArray("[Language]\nLanguage=German\n[Settings]\nAutoLoad=1\n[UserConfigFile]\nApprove=/a.ini\n"
                         "Check=/c.ini\n[Fendrix]\nControlFile=d:\\pds\\pds.cmd\n[d:\\pds\\pds.cmd]\nProject=PROJ1\n"));
    SetIniValue(GetConfigFile(), u"Settings"_s, u"AutoLoad"_s, u"yes"_s);
    EXPECT_TRUE(ConfigAutoLoad());
}

TEST(ConfigKeys, a_user_config_file_kept_in_the_older_section_a_mode_form_reads_until_a_new_one_is_written)
{
    fxtest::Sandbox box;
    SetIniValue(GetConfigFile(), u"Approve"_s, u"UserConfigFile"_s, u"/old-a.ini"_s);
    SetIniValue(GetConfigFile(), u"Approve"_s, u"EventWindow"_s, u"0"_s);
    SetIniValue(GetConfigFile(), u"Check"_s, u"UserConfigFile"_s, u"/old-c.ini"_s);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), u"/old-a.ini"_s);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Check), u"/old-c.ini"_s);

    SetConfigUserConfigFile(ExecutionModeKind::Approve, u"/new.ini"_s);
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), u"/new.ini"_s);
    // Emptied, the old value does not come back; the other mode and the section's other keys stay.
    SetConfigUserConfigFile(ExecutionModeKind::Approve, QString());
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Approve), QString());
    EXPECT_EQ(ConfigUserConfigFile(ExecutionModeKind::Check), u"/old-c.ini"_s);
    EXPECT_EQ(GetIniValue(GetConfigFile(), u"Approve"_s, u"EventWindow"_s), u"0"_s);
}

} // namespace

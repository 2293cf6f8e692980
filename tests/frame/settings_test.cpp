#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;

namespace {

QString Ini(const fxtest::Sandbox &box, const QByteArray &content)
{
    return box.WriteFile(QStringLiteral("s.ini"), content);
}

TEST(GetIniValue, empty_or_missing_value_gives_the_default_and_values_come_trimmed_and_unquoted)
{
    fxtest::Sandbox box;
    const QString file = Ini(box, "[S]\nEmpty=\nBlank=   \nQuoted=\" x \"\nPlain=  y  \n");
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("Empty"), QStringLiteral("def")), QStringLiteral("def"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("Blank"), QStringLiteral("def")), QStringLiteral("def"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("Missing"), QStringLiteral("def")), QStringLiteral("def"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("Nope"), QStringLiteral("Plain"), QStringLiteral("def")), QStringLiteral("def"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("Quoted")), QStringLiteral("x"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("s"), QStringLiteral("PLAIN")), QStringLiteral("y"));
    EXPECT_EQ(GetIniValue(box.Root() + QStringLiteral("none.ini"), QStringLiteral("S"), QStringLiteral("k")), QString());
}

TEST(GetIniValue, value_longer_than_the_buffer_is_cut_to_one_character_less)
{
    fxtest::Sandbox box;
    const QByteArray longValue(40000, 'v');
    const QString file = Ini(box, "[S]\nk=" + longValue + "\n");
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("k")).size(), 32767);
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("k"), QString(), true, true).size(), 40000);
}

TEST(GetIniValue, section_listing_is_the_key_names_separated_by_semicolons)
{
    fxtest::Sandbox box;
    const QString file = Ini(box, "[S]\nitem0=a\nItem1=b\n; note\nitem2=\n[Empty]\n");
    EXPECT_EQ(GetIniValue(file, QStringLiteral("s"), QString(), QString(), false, true), QStringLiteral("item0;Item1;item2"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("Empty"), QString(), QString(), false, true), QString());
}

TEST(GetIniValue, section_listing_too_long_for_the_buffer_is_cut_as_windows_cuts_it)
{
    fxtest::Sandbox box;
    QByteArray content = "[Big]\n";
    QString listed;
    for (int i = 0; i < 20000; ++i) {
        const QByteArray name = "key_" + QByteArray::number(i).rightJustified(6, '0') + QByteArray(50, 'n');
        content += name + "=1\n";
        listed += QString::fromLatin1(name) + QLatin1Char(';');
    }
    const QString file = Ini(box, content);
    // The call fills 1,048,574 characters and two NULs; the listing keeps one character less.
    const QString result = GetIniValue(file, QStringLiteral("Big"), QString(), QString(), false, true);
    EXPECT_EQ(result, listed.left((1 << 20) - 3));
}

TEST(GetIniSection2Array, gives_names_with_their_values_and_empty_lists_for_an_empty_section)
{
    fxtest::Sandbox box;
    const QString file = Ini(box, "[S]\na=1\nB= 2 \nc=\n[Empty]\n");
    QStringList names{QStringLiteral("stale")};
    QStringList values{QStringLiteral("stale")};
    GetIniSection2Array(file, QStringLiteral("S"), names, values);
    EXPECT_EQ(names, QStringList({QStringLiteral("a"), QStringLiteral("B"), QStringLiteral("c")}));
    EXPECT_EQ(values, QStringList({QStringLiteral("1"), QStringLiteral("2"), QString()}));
    GetIniSection2Array(file, QStringLiteral("S"), names, values, true);
    EXPECT_EQ(names.size(), 3);
    EXPECT_TRUE(values.isEmpty());
    GetIniSection2Array(file, QStringLiteral("Empty"), names, values);
    EXPECT_TRUE(names.isEmpty());
    EXPECT_TRUE(values.isEmpty());
}

TEST(SetIniValue, value_reads_back_and_nulls_remove_key_or_section)
{
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("new.ini");
    SetIniValue(file, QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("v"));
    SetIniValue(file, QStringLiteral("S"), QStringLiteral("j"), QStringLiteral("w"));
    SetIniValue(file, QStringLiteral("T"), QStringLiteral("m"), QStringLiteral("x"));
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("K")), QStringLiteral("v"));
    SetIniValue(file, QStringLiteral("S"), QStringLiteral("k"), std::nullopt);
    EXPECT_EQ(GetIniValue(file, QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("gone")), QStringLiteral("gone"));
    SetIniValue(file, QStringLiteral("s"), std::nullopt, std::nullopt);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file), QByteArray("[T]\nm=x\n"));
    // Writing into a folder that does not exist is swallowed.
    SetIniValue(box.Root() + QStringLiteral("no/such.ini"), QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("v"));
}

struct ConfigDirCase
{
    const char *name;
    const char *appData;
    const char *userProfile;
    const char *xdg;
    const char *home;
    const char *expectedBase; ///< below the sandbox root; nullptr: the folder is missing
};

void PrintTo(const ConfigDirCase &c, std::ostream *os)
{
    *os << c.name;
}

class GetConfigDirFrom : public testing::TestWithParam<ConfigDirCase>
{
};

TEST_P(GetConfigDirFrom, first_non_blank_variable_gives_the_folder)
{
    fxtest::Sandbox box;
    const ConfigDirCase &c = GetParam();
    auto set = [&](const char *var, const char *value) {
        if (value)
            box.Env().Set(var, QString::fromUtf8(value).replace(QStringLiteral("ROOT/"), box.Root()));
        else
            box.Env().Unset(var);
    };
    set("APPDATA", c.appData);
    set("USERPROFILE", c.userProfile);
    set("XDG_CONFIG_HOME", c.xdg);
    set("HOME", c.home);
    if (!c.expectedBase) {
        try {
            GetConfigDir();
            FAIL() << "no failure";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Source(), QStringLiteral("GetConfigDir"));
            EXPECT_EQ(failure.Description(), ArgForm(msg::ConfigDirMissing, {QString()}));
        }
        return;
    }
    const QString expected = box.Root() + QString::fromUtf8(c.expectedBase) + QStringLiteral("/Norvane/Fendrix/");
    EXPECT_EQ(GetConfigDir(), expected);
    EXPECT_TRUE(QFileInfo(expected).isDir());
    EXPECT_EQ(GetConfigFile(), expected + QStringLiteral("Config.ini"));
}

INSTANTIATE_TEST_SUITE_P(
    Variables, GetConfigDirFrom,
    testing::Values(ConfigDirCase{"appdata", "ROOT/app", "ROOT/profile", "ROOT/xdg", "ROOT/home", "app"},
                    ConfigDirCase{"appdata_with_separator", "ROOT/app/", nullptr, nullptr, nullptr, "app"},
                    ConfigDirCase{"blank_appdata_uses_userprofile", "  ", "ROOT/profile", "ROOT/xdg", "ROOT/home", "profile"},
                    ConfigDirCase{"unset_appdata_uses_userprofile", nullptr, "ROOT/profile", nullptr, nullptr, "profile"},
                    ConfigDirCase{"then_xdg_config_home", nullptr, "", "ROOT/xdg", "ROOT/home", "xdg"},
                    ConfigDirCase{"then_config_below_home", nullptr, nullptr, " ", "ROOT/home", "home/.config"},
                    ConfigDirCase{"none_is_a_failure", "", " ", nullptr, "", nullptr}),
    [](const testing::TestParamInfo<ConfigDirCase> &info) { return info.param.name; });

TEST(GetConfigDir, folder_that_cannot_be_made_raises_the_failure_of_its_creation)
{
    fxtest::Sandbox box;
    box.Env().Set("APPDATA", QStringLiteral("/proc/self/nonexistent"));
    try {
        GetConfigDir();
        FAIL() << "no failure";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Source(), QStringLiteral("GetConfigDir"));
        EXPECT_EQ(failure.Description(),
                  QStringLiteral("CreateFolderA: ") +
                      ArgForm(msg::CreatingDirectoryFailed, {QStringLiteral("/proc/self/nonexistent/Norvane/Fendrix/")}));
    }
}

TEST(UserConfigFile, defaults_to_the_user_name_in_the_config_folder)
{
    fxtest::Sandbox box;
    const QString path = GetUserConfigFile();
    EXPECT_EQ(path, GetConfigDir() + GetLogonUserName() + QStringLiteral(".ini"));
    EXPECT_FALSE(GetLogonUserName().isEmpty());
}

TEST(UserConfigFile, given_path_is_kept_as_it_is_when_its_folder_exists)
{
    fxtest::Sandbox box;
    const QString path = box.Root() + QStringLiteral("mine.ini");
    SetUserConfigFile(path);
    EXPECT_EQ(GetUserConfigFile(), path);
    SetUserConfigFile(QStringLiteral("  "));
    EXPECT_EQ(GetUserConfigFile(), GetConfigDir() + GetLogonUserName() + QStringLiteral(".ini"));
}

TEST(UserConfigFile, path_in_a_missing_folder_fails_with_that_folder)
{
    fxtest::Sandbox box;
    const QString before = box.Root() + QStringLiteral("kept.ini");
    SetUserConfigFile(before);
    const QString folder = box.Root() + QStringLiteral("missing/");
    try {
        SetUserConfigFile(folder + QStringLiteral("user.ini"));
        FAIL() << "no failure";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Source(), QStringLiteral("SetUserConfigFile"));
        EXPECT_EQ(failure.Description(), ArgForm(msg::ConfigDirMissing, {folder}));
    }
    EXPECT_EQ(GetUserConfigFile(), before);
}

} // namespace

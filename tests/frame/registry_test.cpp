#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/registry.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;

namespace {

const QString kPds = QStringLiteral("SOFTWARE\\Intergraph\\PDS");

const QByteArray kMachine = "[SOFTWARE\\Intergraph\\PDS]\n"
                            "ControlFile=d:\\pds\\pds.cmd\n"
                            "Count=dword:0000002a\n"
                            "Blob=hex:00,ff,1A\n"
                            "Lines=multi_sz:Path=D:\\PDS|Type=0\n"
                            "@=default text\n"
                            "BadNumber=dword:xyz\n"
                            "BadBytes=hex:0g\n"
                            "[SOFTWARE\\Intergraph\\RIS\\05.04\\Bin]\n"
                            "[software\\intergraph\\ris\\06.00]\n"
                            "[SOFTWARE\\Other]\n"
                            "[\\\\srv\\SOFTWARE\\Remote]\n"
                            "Where=there\n";

void ExpectFailure(const std::function<void()> &call, const char *source, const QString &description)
{
    try {
        call();
        ADD_FAILURE() << "no failure";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Number(), 1);
        EXPECT_EQ(failure.Source(), QString::fromUtf8(source));
        EXPECT_EQ(failure.Description(), description);
    }
}

class Registry : public testing::Test
{
protected:
    void SetUp() override { box.WriteFile(QStringLiteral("program/Registry.ini"), kMachine); }
    fxtest::Sandbox box;
};

TEST_F(Registry, values_of_every_type_are_read)
{
    const RegValue text = RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("controlfile"));
    EXPECT_EQ(text.type, RegValue::Type::String);
    EXPECT_EQ(text.text, QStringLiteral("d:\\pds\\pds.cmd"));
    const RegValue number = RegGetValue(RegRoot::LocalMachine, QStringLiteral("software\\intergraph\\pds"), QStringLiteral("Count"));
    EXPECT_EQ(number.type, RegValue::Type::DWord);
    EXPECT_EQ(number.number, 42u);
    const RegValue bytes = RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("Blob"));
    EXPECT_EQ(bytes.type, RegValue::Type::Binary);
    EXPECT_EQ(bytes.bytes, QByteArray("\x00\xff\x1a", 3));
    const RegValue lines = RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("Lines"));
    EXPECT_EQ(lines.type, RegValue::Type::MultiString);
    EXPECT_EQ(lines.lines, QStringList({QStringLiteral("Path=D:\\PDS"), QStringLiteral("Type=0")}));
    EXPECT_EQ(RegGetValue(RegRoot::LocalMachine, kPds, QString()).text, QStringLiteral("default text"));
}

TEST_F(Registry, failures_name_root_key_and_value)
{
    const QString root = QStringLiteral("HKEY_LOCAL_MACHINE");
    ExpectFailure([] { RegGetValue(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Missing"), QStringLiteral("x")); },
                  "RegGetValue", ArgForm(msg::RegistryCannotOpenKey, {root, QStringLiteral("SOFTWARE\\Missing")}));
    ExpectFailure([] { RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("Absent")); }, "RegGetValue",
                  ArgForm(msg::RegistryCannotQueryType, {root, kPds, QStringLiteral("Absent")}));
    ExpectFailure([] { RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("BadNumber")); }, "RegGetValue",
                  ArgForm(msg::RegistryCannotQueryValue, {root, kPds, QStringLiteral("BadNumber")}));
    ExpectFailure([] { RegGetValue(RegRoot::LocalMachine, kPds, QStringLiteral("BadBytes")); }, "RegGetValue",
                  ArgForm(msg::RegistryCannotQueryValue, {root, kPds, QStringLiteral("BadBytes")}));
    ExpectFailure([] { RegGetValues(RegRoot::CurrentUser, kPds); }, "RegGetValues",
                  ArgForm(msg::RegistryCannotOpenKey, {QStringLiteral("HKEY_CURRENT_USER"), kPds}));
    ExpectFailure([] { RegKeyExists(RegRoot::LocalMachine, kPds, QStringLiteral("\\\\nowhere")); }, "RegKeyExists",
                  ArgForm(msg::RegistryCannotOpenComputer, {QStringLiteral("nowhere")}));
}

TEST_F(Registry, key_exists_by_its_own_section_or_one_below_it)
{
    EXPECT_TRUE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\INTERGRAPH")));
    EXPECT_TRUE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("Software\\Intergraph\\RIS\\05.04")));
    EXPECT_TRUE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Other\\")));
    EXPECT_FALSE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Intergraph\\RI")));
    EXPECT_FALSE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Remote")));
    EXPECT_FALSE(RegKeyExists(RegRoot::CurrentUser, kPds));
}

TEST_F(Registry, sub_keys_are_the_next_step_below_including_implied_keys)
{
    EXPECT_EQ(RegGetSubKeys(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Intergraph")),
              QStringList({QStringLiteral("PDS"), QStringLiteral("RIS")}));
    EXPECT_EQ(RegGetSubKeys(RegRoot::LocalMachine, QStringLiteral("software\\intergraph\\ris")),
              QStringList({QStringLiteral("05.04"), QStringLiteral("06.00")}));
    EXPECT_EQ(RegGetSubKeys(RegRoot::LocalMachine, QString()), QStringList{QStringLiteral("SOFTWARE")});
    EXPECT_TRUE(RegGetSubKeys(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Other")).isEmpty());
    EXPECT_EQ(RegGetValues(RegRoot::LocalMachine, kPds).size(), 7);
    EXPECT_TRUE(RegGetValues(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Intergraph")).isEmpty());
}

TEST_F(Registry, remote_computer_is_the_sections_under_its_name)
{
    EXPECT_TRUE(RegKeyExists(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Remote"), QStringLiteral("SRV")));
    EXPECT_FALSE(RegKeyExists(RegRoot::LocalMachine, kPds, QStringLiteral("\\\\srv")));
    EXPECT_EQ(RegGetValue(RegRoot::LocalMachine, QStringLiteral("SOFTWARE\\Remote"), QStringLiteral("Where"),
                          QStringLiteral("\\\\srv"))
                  .text,
              QStringLiteral("there"));
    EXPECT_EQ(RegGetSubKeys(RegRoot::LocalMachine, QString(), QStringLiteral("srv")), QStringList{QStringLiteral("SOFTWARE")});
}

struct StoredCase
{
    const char *name;
    const char *given;
    RegValue::Type type;
    const char *text;
    quint32 number;
};

void PrintTo(const StoredCase &c, std::ostream *os)
{
    *os << c.name;
}

class RegSetValueStores : public testing::TestWithParam<StoredCase>
{
};

TEST_P(RegSetValueStores, numbers_as_dword_and_everything_else_as_trimmed_text)
{
    fxtest::Sandbox box;
    const StoredCase &c = GetParam();
    RegSetValue(RegRoot::CurrentUser, QStringLiteral("Software\\Norvane\\Fendrix"), QStringLiteral("v"),
                QString::fromUtf8(c.given));
    const RegValue value = RegGetValue(RegRoot::CurrentUser, QStringLiteral("SOFTWARE\\norvane\\fendrix"), QStringLiteral("V"));
    EXPECT_EQ(value.type, c.type);
    if (c.type == RegValue::Type::DWord)
        EXPECT_EQ(value.number, c.number);
    else
        EXPECT_EQ(value.text, QString::fromUtf8(c.text));
}

INSTANTIATE_TEST_SUITE_P(
    Values, RegSetValueStores,
    testing::Values(StoredCase{"integer", "42", RegValue::Type::DWord, "", 42},
                    StoredCase{"padded_integer", " 7 ", RegValue::Type::DWord, "", 7},
                    StoredCase{"one_dot_is_a_number_rounded_half_to_even", "2.5", RegValue::Type::DWord, "", 2},
                    StoredCase{"negative_number_as_its_32_bits", "-1", RegValue::Type::DWord, "", 0xFFFFFFFFu},
                    StoredCase{"dotted_version_stays_text", "7.0.5", RegValue::Type::String, "7.0.5", 0},
                    StoredCase{"too_big_for_32_bits_stays_text", "4294967296", RegValue::Type::String, "4294967296", 0},
                    StoredCase{"text_is_trimmed", "  some text  ", RegValue::Type::String, "some text", 0},
                    StoredCase{"text_like_a_type_marker_stays_text", "dword:00000001", RegValue::Type::String, "dword:00000001", 0},
                    StoredCase{"quoted_text_keeps_its_quotes", "\"q\"", RegValue::Type::String, "\"q\"", 0},
                    StoredCase{"empty_text", "", RegValue::Type::String, "", 0}),
    [](const testing::TestParamInfo<StoredCase> &info) { return info.param.name; });

TEST(RegistryFiles, user_keys_live_in_the_config_folder_and_created_keys_exist_empty)
{
    fxtest::Sandbox box;
    RegCreateKey(RegRoot::CurrentUser, QStringLiteral("Software\\Empty"));
    RegCreateKey(RegRoot::CurrentUser, QStringLiteral("software\\empty"));
    EXPECT_TRUE(RegKeyExists(RegRoot::CurrentUser, QStringLiteral("SOFTWARE\\EMPTY")));
    EXPECT_TRUE(RegGetValues(RegRoot::CurrentUser, QStringLiteral("Software\\Empty")).isEmpty());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetConfigDir() + QStringLiteral("Registry.ini")), QByteArray("[Software\\Empty]\n"));
}

} // namespace

#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/registry.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QString kPds = u"SOFTWARE\\Intergraph\\PDS"_s;
constexpr RegRoot kLM = RegRoot::LocalMachine;

// A value as "type:data", or the failure as "source: description".
QString Read(RegRoot root, const QString &key, const QString &name, const QString &computer = QString())
{
    try {
        const RegValue value = RegGetValue(root, key, name, computer);
        switch (value.type) {
        case RegValue::Type::DWord: return u"dword:"_s + QString::number(value.number);
        case RegValue::Type::Binary: return u"hex:"_s + QString::fromLatin1(value.bytes.toHex());
        case RegValue::Type::MultiString: return u"multi_sz:"_s + value.lines.join(u'|');
        case RegValue::Type::String: break;
        }
        return u"sz:"_s + value.text;
    } catch (const Failure &failure) {
        return failure.Source() + u": "_s + failure.Description();
    }
}

class Registry : public testing::Test
{
protected:
    void SetUp() override
    {
        box.WriteFile(u"program/Registry.ini"_s, "[SOFTWARE\\Intergraph\\PDS]\nControlFile=d:\\pds\\pds.cmd\n"
                                                 "Count=dword:0000002a\nBlob=hex:00,ff,1A\nLines=multi_sz:Path=D:\\PDS|Type=0\n"
                                                 "@=default text\nBadNumber=dword:xyz\nBadBytes=hex:0g\n"
                                                 "[SOFTWARE\\Intergraph\\RIS\\05.04\\Bin]\n[software\\intergraph\\ris\\06.00]\n"
                                                 "[SOFTWARE\\Other]\n[\\\\srv\\SOFTWARE\\Remote]\nWhere=there\n");
    }
    fxtest::Sandbox box;
};

TEST_F(Registry, values_read_as_their_type_and_failures_name_root_key_and_value)
{
    const QString lm = u"HKEY_LOCAL_MACHINE"_s;
    const QString cases[][4] = { // key, value, computer, what is read
        {kPds, u"controlfile"_s, {}, u"sz:d:\\pds\\pds.cmd"_s},
        {u"software\\intergraph\\pds"_s, u"Count"_s, {}, u"dword:42"_s},
        {kPds, u"Blob"_s, {}, u"hex:00ff1a"_s},
        {kPds, u"Lines"_s, {}, u"multi_sz:Path=D:\\PDS|Type=0"_s},
        {kPds, {}, {}, u"sz:default text"_s},
        {u"SOFTWARE\\Remote"_s, u"Where"_s, u"\\\\srv"_s, u"sz:there"_s},
        {u"SOFTWARE\\Missing"_s, u"x"_s, {}, u"RegGetValue: "_s + ArgForm(msg::RegistryCannotOpenKey, {lm, u"SOFTWARE\\Missing"_s})},
        {kPds, u"Absent"_s, {}, u"RegGetValue: "_s + ArgForm(msg::RegistryCannotQueryType, {lm, kPds, u"Absent"_s})},
        {kPds, u"BadNumber"_s, {}, u"RegGetValue: "_s + ArgForm(msg::RegistryCannotQueryValue, {lm, kPds, u"BadNumber"_s})},
        {kPds, u"BadBytes"_s, {}, u"RegGetValue: "_s + ArgForm(msg::RegistryCannotQueryValue, {lm, kPds, u"BadBytes"_s})},
        {kPds, u"x"_s, u"\\\\nowhere"_s, u"RegGetValue: "_s + ArgForm(msg::RegistryCannotOpenComputer, {u"nowhere"_s})},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Read(kLM, c[0], c[1], c[2]), c[3]) << qPrintable(c[0] + u'/' + c[1]);
}

TEST_F(Registry, keys_exist_by_their_own_section_or_one_below_and_list_the_next_step_below)
{
    EXPECT_TRUE(RegKeyExists(kLM, u"SOFTWARE\\INTERGRAPH"_s));
    EXPECT_TRUE(RegKeyExists(kLM, u"Software\\Intergraph\\RIS\\05.04\\"_s));
    EXPECT_FALSE(RegKeyExists(kLM, u"SOFTWARE\\Intergraph\\RI"_s));
    EXPECT_FALSE(RegKeyExists(kLM, u"SOFTWARE\\Remote"_s));
    EXPECT_TRUE(RegKeyExists(kLM, u"SOFTWARE\\Remote"_s, u"SRV"_s));
    EXPECT_FALSE(RegKeyExists(kLM, kPds, u"\\\\srv"_s));
    EXPECT_EQ(RegGetSubKeys(kLM, u"software\\intergraph"_s), QStringList({u"PDS"_s, u"RIS"_s}));
    EXPECT_EQ(RegGetSubKeys(kLM, u"software\\intergraph\\ris"_s), QStringList({u"05.04"_s, u"06.00"_s}));
    EXPECT_EQ(RegGetSubKeys(kLM, QString()), QStringList{u"SOFTWARE"_s});
    EXPECT_EQ(RegGetSubKeys(kLM, QString(), u"srv"_s), QStringList{u"SOFTWARE"_s});
    EXPECT_EQ(RegGetValues(kLM, kPds).join(u','), u"ControlFile,Count,Blob,Lines,,BadNumber,BadBytes"_s);
}

TEST(RegistryUserKeys, are_made_once_in_the_config_folder_and_store_numbers_as_dword_and_the_rest_as_trimmed_text)
{
    fxtest::Sandbox box;
    RegCreateKey(RegRoot::CurrentUser, u"Software\\Empty"_s);
    RegCreateKey(RegRoot::CurrentUser, u"software\\empty"_s);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetConfigDir() + u"Registry.ini"_s), QByteArray("[Software\\Empty]\n"));
    EXPECT_EQ(Read(RegRoot::CurrentUser, u"Software\\Fendrix"_s, u"v"_s),
              u"RegGetValue: "_s + ArgForm(msg::RegistryCannotOpenKey, {u"HKEY_CURRENT_USER"_s, u"Software\\Fendrix"_s}));
    const char *cases[][2] = { // stored, read back
        {" 42 ", "dword:42"}, {"2.5", "dword:2"}, {"-1", "dword:4294967295"}, {"7.0.5", "sz:7.0.5"},
        {"4294967296", "sz:4294967296"}, {"  some text  ", "sz:some text"}, {"dword:00000001", "sz:dword:00000001"},
        {"\"q\"", "sz:\"q\""}, {"", "sz:"},
    };
    for (const auto &c : cases) {
        RegSetValue(RegRoot::CurrentUser, u"Software\\Fendrix"_s, u"v"_s, QString::fromUtf8(c[0]));
        EXPECT_EQ(Read(RegRoot::CurrentUser, u"SOFTWARE\\fendrix"_s, u"V"_s), QString::fromUtf8(c[1])) << c[0];
    }
}

} // namespace

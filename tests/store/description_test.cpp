// The description settings, the rules of the description dialog, and report files.

#include "frame/settings.h"
#include "frame/translation.h"
#include "store/description.h"
#include "store/pdsreportfile.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

QString UserConfig(const fxtest::Sandbox &box)
{
    const QString file = box.AppData() + u"reviewer.ini"_s;
    SetUserConfigFile(file);
    return file;
}

} // namespace

TEST(Description, settings_default_in_the_user_config_file_and_flags_are_off_only_for_zero)
{
    fxtest::Sandbox box;
    const QString file = UserConfig(box);
    const QString user = GetLogonUserName();
    EXPECT_EQ(GetDescription(1, false), u"Approved by Fendrix"_s);
    EXPECT_EQ(GetDescription(2, true), u"Approved by Fendrix: "_s + user);
    EXPECT_EQ(GetDescription(3, true), u"Unapproved by Fendrix: "_s + user);
    EXPECT_EQ(GetDescription(0, true), u": "_s + user);

    SetIniValue(file, u"DescrDialog"_s, u"AddUserID"_s, u"no"_s);
    EXPECT_TRUE(GetOptionFlag(option::AddUserID));
    SetIniValue(file, u"DescrDialog"_s, u"AddUserID"_s, u"0"_s);
    SetIniValue(file, u"DescrDialog"_s, u"Descr"_s, u"checked"_s);
    EXPECT_EQ(GetDescription(0, true), u"checked"_s);
    EXPECT_EQ(GetDescription(2, true), u"Approved by Fendrix"_s);
    // The settings are the user's own, not Config.ini's.
    EXPECT_EQ(GetIniValue(GetConfigFile(), u"DescrDialog"_s, u"AddUserID"_s), QString());
}

TEST(DescriptionDialog, opens_from_the_settings_and_gates_the_option_boxes_by_permission)
{
    fxtest::Sandbox box;
    UserConfig(box);
    SetOptionFlag(option::OverwriteClashDescr, false);
    SetOptionFlag(option::ShowDescrDialog, false);
    SetOption(option::UnapprovedDescr, u"Not a clash"_s);

    DescriptionDialogModel form(3, false);
    EXPECT_EQ(form.Caption(), u"Unapprove Clash: Please enter your description here"_s);
    EXPECT_EQ(form.Text(), u"Not a clash"_s);
    EXPECT_TRUE(form.AddUserID());
    EXPECT_TRUE(form.DoNotOverwriteDescr());
    EXPECT_FALSE(form.DoNotChangeDescr());
    EXPECT_TRUE(form.NeverShow());
    EXPECT_EQ(form.AddUserIDLabel(), u"Add User ID to description (Not a clash: "_s + GetLogonUserName() + u")"_s);
    // Without the permission "Options" the user box and the two option boxes stay as they are.
    EXPECT_FALSE(form.AddUserIDEnabled());
    EXPECT_FALSE(form.DoNotChangeDescrEnabled());
    EXPECT_FALSE(form.NeverShowEnabled());
    form.SetDoNotChangeDescr(true);
    form.SetAddUserID(false);
    EXPECT_FALSE(form.DoNotChangeDescr());
    EXPECT_TRUE(form.AddUserID());

    EXPECT_EQ(DescriptionDialogModel(0, true).Caption(), u"Please enter your description here"_s);
    EXPECT_EQ(DescriptionDialogModel(1, true).Caption(), u"Approve Real Clash: Please enter your description here"_s);
}

TEST(DescriptionDialog, an_emptied_text_falls_back_and_not_changing_clears_the_user_box)
{
    fxtest::Sandbox box;
    UserConfig(box);
    DescriptionDialogModel form(2, true);
    EXPECT_TRUE(form.AddUserIDEnabled());
    form.SetText(QString());
    EXPECT_EQ(form.Text(), u"Approved by Fendrix"_s);
    EXPECT_TRUE(form.TextSelected());
    form.SetText(u"pipe vs steel"_s);
    EXPECT_FALSE(form.TextSelected());

    form.SetDoNotChangeDescr(true);
    EXPECT_FALSE(form.TextEnabled());
    EXPECT_FALSE(form.AddUserID());
    EXPECT_FALSE(form.AddUserIDEnabled());
    form.SetText(u"pipe vs steel "_s);
    EXPECT_EQ(form.AddUserIDLabel(), u"Add User ID to description"_s);

    // A description alone may be emptied.
    DescriptionDialogModel plain(0, true);
    plain.SetText(QString());
    EXPECT_TRUE(plain.Text().isEmpty());
    EXPECT_EQ(plain.AddUserIDLabel(), u"Add User ID to description"_s);
}

TEST(DescriptionDialog, ok_keeps_the_choices_as_next_defaults_unless_the_file_is_read_only)
{
    fxtest::Sandbox box;
    const QString file = UserConfig(box);
    DescriptionDialogModel form(1, true);
    form.SetText(u"Real, see 'P-101'"_s);
    form.SetDoNotOverwriteDescr(true);
    form.SetNeverShow(true);
    form.Accept();
    EXPECT_EQ(GetDescription(1, false), u"Real, see 'P-101'"_s);
    EXPECT_FALSE(GetOptionFlag(option::OverwriteClashDescr));
    EXPECT_FALSE(GetOptionFlag(option::ShowDescrDialog));
    EXPECT_TRUE(GetOptionFlag(option::ChangeClashDescr));
    EXPECT_TRUE(GetOptionFlag(option::AddUserID));
    EXPECT_EQ(GetDescription(3, false), u"Unapproved by Fendrix"_s);

    DescriptionDialogModel again(1, true);
    again.SetDoNotChangeDescr(true);
    QFile(file).setPermissions(QFileDevice::ReadOwner);
    EXPECT_EQ(FillMessageArgs(fxtest::FailureText([&] { again.Accept(); })),
              u"frmDescription::cmdOK: File '"_s + file + u"': write permission denied"_s);
    QFile(file).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_TRUE(GetOptionFlag(option::ChangeClashDescr));
    EXPECT_TRUE(GetOptionFlag(option::AddUserID));
}

TEST(PDSReportFile, clash_numbers_come_from_the_first_ten_columns_of_whole_positive_numbers)
{
    fxtest::Sandbox box;
    const QByteArray report =
        "                 INTERFERENCE REPORT  -  PROJECT demo\r\n"
        "  Clash No  Type        Model A            Model B\r\n"
        "----------  ----------  -----------------  -----------------\r\n"
        "       123  Hard/Hard   pip001             str004\r\n"
        "      123 abc\r\n"
        "0000000045  Hard/Soft   pip001             hvac02\r\n"
        "      12.5  Hard/Hard   pip002             str004\r\n"
        "     1,234  Hard/Hard   pip002             str005\r\n"
        "         0  Hard/Hard   pip003             str001\r\n"
        "       -17  Hard/Hard   pip003             str002\r\n"
        "12345678901 Hard/Hard   pip004             str002\r\n"
        "\r\n"
        "        98\n"
        "Total:        6\n"
        // A damaged line: the digits before a NUL are no number of their own.
        + QByteArray("7\0 00B2001\n", 12);
    const QString file = box.WriteFile(u"report.txt"_s, report);
    EXPECT_EQ(ReadPDSReportFile(file),
              (QStringList{u"123"_s, u"123"_s, u"45"_s, u"1234567890"_s, u"98"_s}));
    EXPECT_TRUE(fxtest::FailureText([&] { ReadPDSReportFile(box.Temp() + u"none.txt"_s); })
                    .startsWith(u"ReadPDSReportFile: "_s));
}

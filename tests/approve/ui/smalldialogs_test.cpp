#include "approve/ui/frmabout.h"
#include "approve/ui/frmdaytip.h"
#include "approve/ui/frmdescription.h"
#include "approve/ui/frmfiltermessage.h"
#include "approve/ui/frmsavechanges.h"
#include "approve/ui/frmsplash.h"
#include "frame/configkeys.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "store/description.h"
#include "store/options.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"
#include "approve/ui/dialogdriver.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRadioButton>
#include <QSettings>
#include <QTimer>

#include <gtest/gtest.h>

using namespace fx;
using fxtest::Click;
using fxtest::Find;
using fxtest::ModalDriver;
using fxtest::Screenshot;
using fxtest::Text;

namespace {

QString UserConfig(const OptionKey &key)
{
    return GetIniValue(GetUserConfigFile(), OptionSection(key), QString::fromLatin1(key.key));
}

class SmallDialogs : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // The tips' settings go to the sandbox, not to the user's own settings store.
        for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, box.Root() + Text("settings"));
        // The user config file of this sandbox, also when the tests share one process.
        SetUserConfigFile(QString());
    }

    fxtest::Sandbox box;
};

} // namespace

TEST_F(SmallDialogs, the_splash_dispatches_once_when_closed_early_and_shows_progress)
{
    FrmSplash splash(false);
    EXPECT_EQ(splash.WaitMilliseconds(), 3000);
    splash.Show();
    EXPECT_TRUE(splash.isVisible());
    int dispatched = 0;
    splash.Start([&] { ++dispatched; });
    LogMessage(Text("Checking TEMP directory ..."));
    EXPECT_EQ(Find<QLabel>(&splash, "lblStatus")->text(), Text("Checking TEMP directory ..."));
    EXPECT_TRUE(Find<QLabel>(&splash, "lblVersion")->text().contains(ProgramVersion()));
    Screenshot(&splash, "frmSplash");

    splash.close();
    EXPECT_EQ(dispatched, 1);
    EXPECT_FALSE(splash.isVisible());
    EXPECT_FALSE(Find<QTimer>(&splash, "Timer1")->isActive()) << "the timer can't dispatch a second time";
    splash.show();
    splash.close();
    EXPECT_EQ(dispatched, 1);

    FrmSplash clicked(false);
    clicked.Show();
    int clickDispatched = 0;
    clicked.Start([&] { ++clickDispatched; });
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&clicked, &press);
    EXPECT_EQ(clickDispatched, 1) << "a click hands over at once";
    EXPECT_FALSE(clicked.isVisible());

    // Forced away before the usage text or a failure, it hands over to nothing.
    FrmSplash batch(true);
    EXPECT_EQ(batch.WaitMilliseconds(), 1000);
    batch.Show();
    EXPECT_FALSE(batch.isVisible());
    int batchDispatched = 0;
    batch.Start([&] { ++batchDispatched; });
    batch.ForceUnload();
    batch.close();
    EXPECT_EQ(batchDispatched, 0);
}

TEST_F(SmallDialogs, the_save_dialog_without_a_reachable_project_offers_the_file_and_asks_before_dropping)
{
    fxtest::RecordingMessageBox boxes(IdNo);
    bool stayedAfterNo = false;
    ModalDriver driver([&](QWidget *dialog) {
        Screenshot(dialog, "frmSaveChanges");
        EXPECT_FALSE(Find<QRadioButton>(dialog, "Option1_0")->isEnabled());
        EXPECT_TRUE(Find<QRadioButton>(dialog, "Option1_1")->isChecked());
        Click(dialog, "Option1_2");
        Click(dialog, "cmdOK");
        stayedAfterNo = dialog->isVisible();
        Click(dialog, "Option1_1");
        Click(dialog, "cmdOK");
    });
    EXPECT_EQ(FrmSaveChanges::ShowForm(nullptr), SaveChangesToFile);
    EXPECT_TRUE(driver.Ran());
    EXPECT_FALSE(driver.ClosedByGuard());
    EXPECT_TRUE(stayedAfterNo) << "No to \"Are you sure?\" keeps the dialog open";
    ASSERT_EQ(boxes.boxes.size(), 1u) << "saving to a file asks nothing";
    EXPECT_EQ(boxes.boxes[0].text, Text("Are you sure?"));
    EXPECT_EQ(boxes.boxes[0].flags & (MbYesNo | MbDefButton2), quint32(MbYesNo | MbDefButton2)) << "No is the default";

    ModalDriver cancel([](QWidget *dialog) { Click(dialog, "cmdCancel"); });
    EXPECT_EQ(FrmSaveChanges::ShowForm(nullptr), SaveChangesCancelled);
}

TEST_F(SmallDialogs, the_description_dialog_keeps_its_settings_on_ok_and_nothing_on_cancel)
{
    ModalDriver driver([](QWidget *dialog) {
        auto *text = Find<QLineEdit>(dialog, "txtDescription");
        EXPECT_EQ(text->text(), Text("Approved by Fendrix"));
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkNeverShow")->isEnabled()) << "everybody holds Options without a privilege database";
        text->selectAll();
        text->insert(Text("Checked on site"));
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkAddUserID")->text().contains(Text("Checked on site")));
        Click(dialog, "chkNeverShow");
        Click(dialog, "chkDoNotOverwriteDescr");
        Screenshot(dialog, "frmDescription");
        Click(dialog, "cmdOK");
    });
    EXPECT_TRUE(FrmDescription::ShowForm(1, nullptr));
    EXPECT_EQ(UserConfig(option::ApprovedDescr), Text("Checked on site"));
    EXPECT_EQ(UserConfig(option::ShowDescrDialog), Text("0"));
    EXPECT_EQ(UserConfig(option::OverwriteClashDescr), Text("0"));
    EXPECT_EQ(UserConfig(option::ChangeClashDescr), Text("1"));

    const QByteArray before = fxtest::Sandbox::ReadFile(GetUserConfigFile());
    ModalDriver cancel([](QWidget *dialog) {
        auto *text = Find<QLineEdit>(dialog, "txtDescription");
        EXPECT_EQ(text->text(), Text("Unapproved by Fendrix"));
        // Emptied, the text of a status change falls back to its default, selected.
        text->selectAll();
        text->del();
        EXPECT_EQ(text->text(), Text("Unapproved by Fendrix"));
        EXPECT_EQ(text->selectedText(), text->text());
        Click(dialog, "chkDoNotChangeDescr");
        EXPECT_FALSE(text->isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkAddUserID")->isChecked());
        Click(dialog, "cmdCancel");
    });
    EXPECT_FALSE(FrmDescription::ShowForm(3, nullptr));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(GetUserConfigFile()), before);

    // A read-only user config file refuses OK, and the dialog stays for Cancel.
    QFile::setPermissions(GetUserConfigFile(), QFileDevice::ReadOwner);
    fxtest::RecordingMessageBox boxes;
    bool stayed = false;
    ModalDriver readOnly([&](QWidget *dialog) {
        Click(dialog, "cmdOK");
        stayed = dialog->isVisible();
        Click(dialog, "cmdCancel");
    });
    EXPECT_FALSE(FrmDescription::ShowForm(2, nullptr));
    EXPECT_TRUE(stayed);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(boxes.boxes[0].text.contains(Text("write permission denied"))) << qPrintable(boxes.boxes[0].text);
    QFile::setPermissions(GetUserConfigFile(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(SmallDialogs, the_filter_message_stores_never_show_and_cancel_skips_the_filter)
{
    ModalDriver driver([](QWidget *dialog) {
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkSetFilterAutomaticaly")->isChecked());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkNeverShow")->isChecked());
        Click(dialog, "chkNeverShow");
        Screenshot(dialog, "frmFilterMessage");
        Click(dialog, "cmdOK");
    });
    EXPECT_FALSE(FrmFilterMessage::ShowForm(nullptr));
    EXPECT_EQ(UserConfig(option::ShowFilterDialog), Text("0"));
    EXPECT_EQ(UserConfig(option::SetAutoFilter), Text("1"));

    ModalDriver cancel([](QWidget *dialog) {
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkNeverShow")->isChecked());
        Click(dialog, "chkSetFilterAutomaticaly");
        Click(dialog, "cmdCancel");
    });
    EXPECT_TRUE(FrmFilterMessage::ShowForm(nullptr));
    EXPECT_EQ(UserConfig(option::SetAutoFilter), Text("1")) << "Cancel changes no standing setting";
    EXPECT_EQ(UserConfig(option::ShowFilterDialog), Text("0"));
}

TEST_F(SmallDialogs, the_tip_of_the_day_goes_on_where_it_stopped_and_can_be_switched_off)
{
    box.WriteFile(Text("program/tip.txt"), "First tip\n\nSecond///tip\nThird tip\n");
    ModalDriver driver([](QWidget *dialog) {
        auto *tip = Find<QLabel>(dialog, "lblTipText");
        EXPECT_EQ(tip->text(), Text("First tip"));
        Click(dialog, "cmdNextTip");
        EXPECT_EQ(tip->text(), Text("Second\ntip"));
        Screenshot(dialog, "frmDayTip");
        Click(dialog, "chkLoadTipsAtStartup");
        EXPECT_FALSE(DayTips::ShowTipsAtStartup()) << "the switch is stored at once";
        Click(dialog, "cmdOK");
    });
    FrmDayTip::ShowMe(nullptr);
    EXPECT_TRUE(driver.Ran());
    QSettings settings(QSettings::NativeFormat, QSettings::UserScope, Text("Norvane"), ApplicationTitle());
    EXPECT_EQ(settings.value(Text("Options/CurrentTip")).toString(), Text("2"));

    {
        // Switched off, ShowMe returns without a window.
        ModalDriver none([](QWidget *dialog) { Click(dialog, "cmdOK"); });
        FrmDayTip::ShowMe(nullptr);
        EXPECT_FALSE(none.Ran());
    }
    DayTips::SetShowTipsAtStartup(true);
    ModalDriver again([](QWidget *dialog) {
        EXPECT_EQ(Find<QLabel>(dialog, "lblTipText")->text(), Text("Third tip"));
        Click(dialog, "cmdOK");
    });
    FrmDayTip::ShowMe(nullptr);
    EXPECT_TRUE(again.Ran());
}

TEST_F(SmallDialogs, the_about_box_shows_version_and_notices_and_says_when_no_system_tool_is_known)
{
    fxtest::RecordingMessageBox boxes;
    ModalDriver driver([](QWidget *dialog) {
        EXPECT_TRUE(Find<QLabel>(dialog, "lblVersion")->text().contains(ProgramVersion()));
        QString notices;
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            notices += label->text() + QLatin1Char('\n');
        for (const char *name : {"Intergraph", "Bentley", "Microsoft"})
            EXPECT_TRUE(notices.contains(Text(name))) << name;
        Screenshot(dialog, "frmAbout");
        Click(dialog, "cmdSysInfo");
        Click(dialog, "cmdOK");
    });
    FrmAbout::ShowAbout(nullptr);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, Text("System Information Is Unavailable At This Time"));

    // The tool is looked for first by its own key, then by the shared tools' folder.
    box.WriteFile(Text("program/Registry.ini"),
                  "[SOFTWARE\\Microsoft\\Shared Tools Location]\nMSINFO=C:\\Tools\\MSInfo\n");
    EXPECT_EQ(FrmAbout::GetSysInfoPath(), Text("C:\\Tools\\MSInfo\\MSINFO32.EXE"));
    box.WriteFile(Text("program/Registry.ini"), "[SOFTWARE\\Microsoft\\Shared Tools Location]\nMSINFO=C:\\Tools\\MSInfo\n"
                                                 "[SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\nPATH=D:\\msinfo32.exe\n");
    EXPECT_EQ(FrmAbout::GetSysInfoPath(), Text("D:\\msinfo32.exe"));
}

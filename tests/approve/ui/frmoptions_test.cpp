// The options and the design volume offsets as a user drives them, on a simulated project:
// every page, the checks of OK, the advanced filter's private copy, the permission, and the
// view built anew when a setting that shapes it changed.

#include "approve/ui/dialogdriver.h"
#include "approve/ui/frmfendrix.h"
#include "approve/ui/frmoptions.h"
#include "frame/configkeys.h"
#include "frame/logmessage.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "grid/ui/clashgridview.h"
#include "pdssim/sitekind.h"
#include "store/clashfile.h"
#include "store/clashview.h"
#include "store/loadclashes.h"
#include "store/options.h"
#include "store/volumefilter.h"
#include "support/recordingmessagebox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSettings>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;
using fxtest::Click;
using fxtest::Find;
using fxtest::ModalDriver;
using fxtest::Screenshot;

namespace {

class OptionsWindow : public fxtest::SiteKindTest
{
protected:
    void SetUp() override
    {
        SiteKindTest::SetUp();
        for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, box.Root() + u"settings"_s);
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, m_kind, 120, false, box.ProgramDir()));
        config = pdssim::SiteUserConfigFile(*layout, project);
        SetIniValue(config, u"AutoFilter"_s, u"ShowFilterDialog"_s, u"0"_s);
        SetConfigUserConfigFile(ExecutionModeKind::Approve, config);
    }

    void TearDown() override
    {
        window.reset();
        Process().CmdControlFile.clear();
        Process().CmdProject.clear();
        SiteKindTest::TearDown();
    }

    // The approval window after its start-up has opened the site's project.
    FrmFendrix &OpenWindow()
    {
        Process().CmdControlFile = layout->ControlFile();
        Process().CmdProject = project;
        QDir().mkpath(box.ProgramDir() + u"Language"_s);
        InitLanguage();
        QFile::remove(box.ProgramDir() + u"tip.txt"_s);
        window = std::make_unique<FrmFendrix>();
        window->show();
        window->RunStartup();
        return *window;
    }

    // The dialog, shown without a modal loop, on the open project.
    std::unique_ptr<FrmOptions> OpenDialog()
    {
        InitClashes(layout->ControlFile(), project);
        auto dialog = std::make_unique<FrmOptions>();
        dialog->show();
        return dialog;
    }

    static void ShowPage(QWidget *dialog, const char *page)
    {
        auto *pages = Find<QTabWidget>(dialog, "tabOptions");
        pages->setCurrentWidget(Find<QWidget>(dialog, page));
    }

    static void Type(QWidget *dialog, const char *box, const QString &text)
    {
        auto *line = Find<QLineEdit>(dialog, box);
        line->selectAll();
        line->del();
        QTest::keyClicks(line, text);
    }

    QString Option(const char *section, const char *key) const
    {
        return GetIniValue(config, QString::fromLatin1(section), QString::fromLatin1(key));
    }

    static qint64 Count(const QString &sql) { return ClashConnection().Read(sql).Value(0, 0).toLongLong(); }

    const QString project = u"OPTPROJ"_s;
    std::optional<pdssim::SiteLayout> layout;
    QString config;
    std::unique_ptr<FrmFendrix> window;
};

} // namespace

TEST_P(OptionsWindow, every_page_from_the_menu_and_ok_builds_the_view_anew_for_a_new_volume)
{
    fxtest::RecordingMessageBox boxes(IdOk);
    FrmFendrix &w = OpenWindow();
    ASSERT_TRUE(w.Grid()->IsOpen()) << w.Grid()->GridText().toStdString();
    ASSERT_EQ(Count(u"SELECT COUNT(*) FROM clashes;"_s), 120);
    const QList<InterferenceArea> areas = ReadInterferenceAreas();
    ASSERT_FALSE(areas.isEmpty());
    const InterferenceArea &area = areas.first();
    const ClashRange range = GetClashRange();
    const QString units = GetMasterUnits();

    ModalDriver options([&](QWidget *dialog) {
        // No external viewer runs here: the built-in one is chosen, the others' fields are off.
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optBuiltInViewer")->isChecked());
        EXPECT_FALSE(Find<QGroupBox>(dialog, "fraMicroStation")->isEnabled());
        Click(dialog, "optMicroStation");
        EXPECT_TRUE(Find<QGroupBox>(dialog, "fraMicroStation")->isEnabled());
        EXPECT_FALSE(Find<QGroupBox>(dialog, "fraSPR")->isEnabled());
        Click(dialog, "optSPR");
        EXPECT_TRUE(Find<QLineEdit>(dialog, "txtSPRWorkingDirectory")->isEnabled());
        EXPECT_FALSE(Find<QLineEdit>(dialog, "txtDRIFile")->isEnabled());
        Screenshot(dialog, "frmOptions-viewer");
        Click(dialog, "optBuiltInViewer");

        ShowPage(dialog, "pageClashes");
        Type(dialog, "txtSeparator", u"-"_s);
        Screenshot(dialog, "frmOptions-clashes");

        ShowPage(dialog, "pageDescriptions");
        Screenshot(dialog, "frmOptions-descriptions");

        ShowPage(dialog, "pageVolume");
        EXPECT_EQ(Find<QGroupBox>(dialog, "fraVolume")->title(), u"Only show clashes inside volume (master units)"_s);
        EXPECT_EQ(Find<QLabel>(dialog, "lblEastingLow")->text(), u"Easting low (%1 %2)"_s.arg(range.xMin, units));
        EXPECT_EQ(Find<QLabel>(dialog, "lblElevationHigh")->text(), u"Elevation high (%1 %2)"_s.arg(range.zMax, units));
        auto *cmbArea = Find<QComboBox>(dialog, "cmbArea");
        EXPECT_EQ(cmbArea->count(), areas.size() + 1) << "no area, then each area with a volume";
        cmbArea->setCurrentIndex(cmbArea->findText(area.text));
        const std::array<QString, 6> bounds = AreaBoundTexts(areas, area.text);
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtEastingLow")->text(), bounds[0]);
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtElevationHigh")->text(), bounds[5]);

        // The offsets: a bad one is refused in frmDVCS, which stays open for the user to correct it.
        ModalDriver dvcs([&](QWidget *offsets) {
            EXPECT_EQ(Find<QLabel>(offsets, "lblEastingCenter")->text(), u"Easting (%1)"_s.arg(units));
            Type(offsets, "txtEastingCenter", u"1,5e"_s);
            boxes.boxes.clear();
            Click(offsets, "cmdOK");
            EXPECT_TRUE(offsets->isVisible());
            EXPECT_EQ(boxes.boxes.size(), 1u);
            EXPECT_TRUE(!boxes.boxes.empty() && boxes.boxes[0].text == u"Easting: '1,5e' is not correct"_s);
            Type(offsets, "txtEastingCenter", u"0,0"_s);
            Screenshot(offsets, "frmDVCS");
            Click(offsets, "cmdOK");
        });
        Click(dialog, "cmdDVCS");
        EXPECT_TRUE(dvcs.Ran());
        Screenshot(dialog, "frmOptions-volume");

        ShowPage(dialog, "pageAdvancedFilter");
        Screenshot(dialog, "frmOptions-advancedfilter");
        ShowPage(dialog, "pageConfig");
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtConfigFile")->text(), config);
        Screenshot(dialog, "frmOptions-config");
        Click(dialog, "cmdOK");
    });
    w.RunMenuCommand(u"Menu_Tools_Options"_s);
    EXPECT_TRUE(options.Ran());
    EXPECT_FALSE(options.ClosedByGuard());

    EXPECT_EQ(Option("OPTPROJVolumeFilter", "Area"), area.name);
    EXPECT_EQ(Option("OPTPROJDVCS", "EastingCenter"), u"0,0"_s);
    EXPECT_EQ(Option("OPTPROJOptions", "ShowClashesInBuiltInViewer"), u"1"_s);
    // The view is the clashes of the area inside its volume (as the boxes showed it), split at
    // the separator; a clash without coordinates is kept, as the volume filter keeps it.
    const std::array<QString, 6> b = AreaBoundTexts(areas, area.text);
    EXPECT_EQ(Count(u"SELECT COUNT(*) FROM clashes;"_s),
              Count(u"SELECT COUNT(*) FROM base_clash_table WHERE (LOWER(action_area_a) = LOWER('%1') OR "
                    "LOWER(action_area_b) = LOWER('%1')) AND COALESCE(easting >= %2 AND easting <= %5 AND northing >= %3 "
                    "AND northing <= %6 AND elevation >= %4 AND elevation <= %7, 1);"_s
                        .arg(area.name, b[0], b[1], b[2], b[3], b[4], b[5])));
    EXPECT_TRUE(ClashConnection().Read(u"SELECT name FROM pragma_table_info('clashes') WHERE name = 'comp_a_0';"_s).RecordCount() == 1);
    EXPECT_FALSE(IsClashViewOutdated());
    Screenshot(&w, "approval-window-after-options");
}

TEST_P(OptionsWindow, ok_stays_open_writing_nothing_until_the_checks_pass)
{
    fxtest::RecordingMessageBox boxes(IdOk);
    SetIniValue(config, u"OPTPROJDVCS"_s, u"EastingCenter"_s, u"1,5e"_s);
    SetIniValue(config, u"Options"_s, u"CompAColor"_s, u"red"_s);
    struct : ILogSink
    {
        void ShowLogMessage(const QString &text) override { lines << text; }
        QStringList lines;
    } log;
    std::optional<LogSinkRegistration> logging(&log);
    auto dialog = OpenDialog();
    logging.reset();
    // LoadSettings tells what it reads of the project.
    const int areas = Find<QComboBox>(dialog.get(), "cmbArea")->count() - 1;
    const qsizetype reading = log.lines.indexOf(u"Reading interference areas ..."_s);
    ASSERT_GE(reading, 0);
    EXPECT_EQ(log.lines.value(reading + 1), u"%1 interference areas found"_s.arg(areas));
    EXPECT_GT(areas, 0);
    const QByteArray before = fxtest::Sandbox::ReadFile(config);
    EXPECT_TRUE(Find<QLabel>(dialog.get(), "lblCompA")->styleSheet().contains(u"#ff0000"_s)) << "a bad colour shows its default";

    // MicroStation without its program: refused, the dialog stays and the file is as it was.
    Click(dialog.get(), "optMicroStation");
    Find<QComboBox>(dialog.get(), "cmbMSTNPath")->setCurrentText(QString());
    Click(dialog.get(), "cmdOK");
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, u"MicroStation execution file not defined"_s);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(config), before);

    // A program, chosen by cmdSelect for the page's first file box, but no seed file where it
    // is looked for.
    const QString mstn = box.WriteFile(u"mstn/ustation.exe"_s, "");
    QStringList offered;
    dialog->SetFileChooser([&](bool folder, const QString &, const QString &current) {
        offered << current;
        return folder ? QString() : mstn;
    });
    Click(dialog.get(), "cmdSelect");
    EXPECT_EQ(Find<QComboBox>(dialog.get(), "cmbMSTNPath")->currentText(), mstn);
    EXPECT_EQ(offered, QStringList{QString()});
    Type(dialog.get(), "txtDGNSeedFile", box.Root() + u"seed.dgn"_s);
    Click(dialog.get(), "cmdOK");
    EXPECT_EQ(boxes.boxes.back().text, u"MicroStation seed file '%1' not exists"_s.arg(box.Root() + u"seed.dgn"_s));

    // The bounds come before the report file.
    Type(dialog.get(), "txtDGNSeedFile", box.WriteFile(u"seed.dgn"_s, ""));
    ShowPage(dialog.get(), "pageVolume");
    Type(dialog.get(), "txtNorthingHigh", u"north"_s);
    Type(dialog.get(), "txtPDSReportFile", box.Root() + u"no-report.txt"_s);
    Click(dialog.get(), "cmdOK");
    EXPECT_EQ(boxes.boxes.back().text, u"Northing High: 'north' is not correct"_s);
    Click(dialog.get(), "cmdClearSettings");
    EXPECT_TRUE(Find<QLineEdit>(dialog.get(), "txtNorthingHigh")->text().isEmpty());
    Click(dialog.get(), "cmdOK");
    EXPECT_EQ(boxes.boxes.back().text, u"PDS report file '%1' not exists"_s.arg(box.Root() + u"no-report.txt"_s));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(config), before);

    // The colour dialog gives blue for component A; cmdOpen opens the user config file.
    dialog->SetColorChooser([](qint32 current) { return current == 255 ? std::optional<qint32>(0xFF0000) : std::nullopt; });
    Click(dialog.get(), "picComp_0");
    EXPECT_TRUE(Find<QLabel>(dialog.get(), "lblCompA")->styleSheet().contains(u"#0000ff"_s));
    QStringList opened;
    dialog->SetFileOpener([&](const QString &file) { opened << file; });
    ShowPage(dialog.get(), "pageConfig");
    Click(dialog.get(), "cmdOpen");
    EXPECT_EQ(opened, QStringList{config});

    // Corrected, OK writes; what the user did not touch stays as it was stored.
    Type(dialog.get(), "txtPDSReportFile", QString());
    Click(dialog.get(), "cmdOK");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(dialog->Written());
    EXPECT_EQ(GetClashViewer(), ClashViewer::MicroStation);
    EXPECT_EQ(Option("OPTPROJDVCS", "EastingCenter"), u"1,5e"_s);
    EXPECT_EQ(Option("Options", "MSTNPath"), mstn);
    EXPECT_EQ(GetOptionColor(option::CompAColor), 0xFF0000);
}

TEST_P(OptionsWindow, the_descriptions_page_keeps_its_rules_and_the_risk_is_told)
{
    fxtest::RecordingMessageBox boxes(IdOk);
    auto dialog = OpenDialog();
    ShowPage(dialog.get(), "pageDescriptions");
    auto *approved = Find<QLineEdit>(dialog.get(), "txtDescription_0");
    auto *addUser = Find<QCheckBox>(dialog.get(), "chkAddUserID");
    EXPECT_EQ(addUser->text(), u"Add User ID to description (Approved by Fendrix: %1)"_s.arg(GetLogonUserName()));
    Type(dialog.get(), "txtDescription_0", QString());
    EXPECT_EQ(approved->text(), u"Approved by Fendrix"_s) << "an emptied status description falls back";
    EXPECT_EQ(approved->selectedText(), approved->text());
    Type(dialog.get(), "txtDescription_2", QString());
    EXPECT_TRUE(Find<QLineEdit>(dialog.get(), "txtDescription_2")->text().isEmpty());
    Type(dialog.get(), "txtDescription_1", u"Not a clash"_s);

    Click(dialog.get(), "chkNeverOverwriteDescr");
    Click(dialog.get(), "chkNeverChangeDescr");
    EXPECT_FALSE(addUser->isChecked());
    EXPECT_EQ(addUser->text(), u"Add User ID to description"_s);
    EXPECT_FALSE(Find<QCheckBox>(dialog.get(), "chkNeverOverwriteDescr")->isChecked());
    EXPECT_FALSE(approved->isEnabled());
    EXPECT_FALSE(addUser->isEnabled());
    Screenshot(dialog.get(), "frmOptions-descriptions-never-change");
    Click(dialog.get(), "chkNeverChangeDescr");
    EXPECT_TRUE(approved->isEnabled());
    Click(dialog.get(), "chkSetFilterAutomaticaly");
    EXPECT_FALSE(Find<QCheckBox>(dialog.get(), "chkShowFilterDialog")->isEnabled());

    ShowPage(dialog.get(), "pageClashes");
    Click(dialog.get(), "chkAllowOpenLockedProject");
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, u"Proceeding with this option may be dangerous and can cause data loss!"_s);
    Click(dialog.get(), "cmdOK");
    EXPECT_TRUE(dialog->Written());
    EXPECT_EQ(Option("DescrDialog", "UnapprovedDescr"), u"Not a clash"_s);
    EXPECT_EQ(Option("DescrDialog", "AddUserID"), u"0"_s);
    EXPECT_EQ(Option("AutoFilter", "SetAutoFilter"), u"0"_s);
    EXPECT_TRUE(GetOptionFlag(option::AllowOpenLockedProject));
}

TEST_P(OptionsWindow, the_advanced_filter_is_kept_only_by_ok)
{
    fxtest::RecordingMessageBox boxes(IdOk);
    const QByteArray before = fxtest::Sandbox::ReadFile(config);
    auto dialog = OpenDialog();
    ShowPage(dialog.get(), "pageAdvancedFilter");
    auto *values = Find<QListWidget>(dialog.get(), "lstFilterValues");
    // No column chosen: a click in the values or on select all asks for one.
    QTest::mouseClick(values->viewport(), Qt::LeftButton);
    Click(dialog.get(), "cmdSelectAll");
    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_EQ(boxes.boxes[1].text, u"No filter column selected"_s);

    auto *columns = Find<QListWidget>(dialog.get(), "lstFilterCols");
    columns->setCurrentRow(0);
    ASSERT_GT(values->count(), 1);
    const QString first = values->item(0)->text();
    Type(dialog.get(), "txtValue", first.left(2) + u"*"_s);
    EXPECT_EQ(values->item(0)->checkState(), Qt::Checked);
    Screenshot(dialog.get(), "frmOptions-advancedfilter-ticked");
    // Another column and back: the ticks were kept in the copy.
    columns->setCurrentRow(6);
    columns->setCurrentRow(0);
    EXPECT_EQ(values->item(0)->checkState(), Qt::Checked);
    dialog->reject();
    dialog.reset();
    EXPECT_EQ(fxtest::Sandbox::ReadFile(config), before) << "Cancel leaves the user's filter as it was";
    EXPECT_EQ(GetAdvancedFilter(QString()), QString());

    dialog = std::make_unique<FrmOptions>();
    dialog->show();
    columns = Find<QListWidget>(dialog.get(), "lstFilterCols");
    values = Find<QListWidget>(dialog.get(), "lstFilterValues");
    columns->setCurrentRow(0);
    values->item(0)->setCheckState(Qt::Checked);
    Click(dialog.get(), "cmdOK");
    EXPECT_TRUE(GetAdvancedFilter(QString()).contains(u"IN('"_s + first + u"')"_s)) << GetAdvancedFilter(QString()).toStdString();
    EXPECT_EQ(Option("AdvancedFilter", "LastUsedFilterColumn"), u"0"_s);

    // The next opening shows the column again; clearing the filter empties it at OK.
    dialog = std::make_unique<FrmOptions>();
    values = Find<QListWidget>(dialog.get(), "lstFilterValues");
    EXPECT_EQ(Find<QListWidget>(dialog.get(), "lstFilterCols")->currentRow(), 0);
    EXPECT_EQ(values->item(0)->checkState(), Qt::Checked);
    Click(dialog.get(), "cmdClearAdvancedFilter");
    EXPECT_EQ(values->item(0)->checkState(), Qt::Unchecked);
    Click(dialog.get(), "cmdOK");
    EXPECT_EQ(GetAdvancedFilter(QString()), QString());
}

TEST_P(OptionsWindow, without_the_permission_the_pages_are_shown_disabled_and_ok_writes_nothing)
{
    fxtest::GrantOnly(layout->ControlFile(), {PermissionChangeStatusNo});
    auto dialog = OpenDialog();
    const QByteArray before = fxtest::Sandbox::ReadFile(config);
    auto *pages = Find<QTabWidget>(dialog.get(), "tabOptions");
    for (int page = 0; page < pages->count(); ++page)
        EXPECT_FALSE(pages->widget(page)->isEnabled()) << page;
    EXPECT_FALSE(Find<QWidget>(dialog.get(), "cmdSelect")->isEnabled());
    Screenshot(dialog.get(), "frmOptions-without-permission");
    Click(dialog.get(), "cmdOK");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(dialog->Written());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(config), before);
}

INSTANTIATE_TEST_SUITE_P(Sqlite, OptionsWindow, testing::Values("sqlite"));

// The approval window as a reviewer uses it, on a simulated project: load, filter, sort, group,
// select, approve, describe, save to a clash file and to the project, reopen.

#include "dialogdriver.h"

#include "../../pdssim/sitekind.h"

#include "approve/ui/frmfendrix.h"
#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "grid/clashgridmodel.h"
#include "grid/ui/clashgridview.h"
#include "pds/cris.h"
#include "pds/projectdatabase.h"
#include "pds/scratchfiles.h"
#include "permissions/accounts.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "permissions/privilegemanager.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/savechanges.h"
#include "support/recordingmessagebox.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ApprovalWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        fx::Process().BatchMode = false;
        fx::Process().TempDir = box.Temp();
        fx::Process().WorkDir = box.Temp();
        fx::ClearProjectCache();
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, u"sqlite"_s, 120, false, box.ProgramDir()));
        config = pdssim::SiteUserConfigFile(*layout, project);
        // The prompts that come of themselves after a load stay away unless a test wants them.
        fx::SetIniValue(config, u"AutoFilter"_s, u"ShowFilterDialog"_s, u"0"_s);
        fx::SetIniValue(config, u"DescrDialog"_s, u"ShowDescrDialog"_s, u"0"_s);
        fx::SetConfigUserConfigFile(fx::ExecutionModeKind::Approve, config);
        fx::Process().CmdControlFile = layout->ControlFile();
        fx::Process().CmdProject = project;
        // The languages as the program's start leaves them.
        QDir().mkpath(box.ProgramDir() + u"Language"_s);
        fx::InitLanguage();
        // No tip of the day in the way of the start-up.
        QFile::remove(box.ProgramDir() + u"tip.txt"_s);
    }

    void TearDown() override
    {
        window.reset();
        fx::FreeClashes();
        fx::ClearProjectCache();
        fx::Process().CmdControlFile.clear();
        fx::Process().CmdProject.clear();
    }

    // The window after its start-up has opened the project of the command line.
    fx::FrmFendrix &Open()
    {
        window = std::make_unique<fx::FrmFendrix>();
        window->SetFileChooser([this](bool, const QString &filter, const QString &offered) {
            offers << offered;
            filters << filter;
            return nextFile;
        });
        window->resize(1200, 700);
        window->show();
        window->RunStartup();
        return *window;
    }

    fx::ClashGridView &Grid() { return *window->Grid(); }

    static qint64 Count(const QString &where)
    {
        return fx::ClashConnection()
            .Read(u"SELECT COUNT(*) FROM clashes WHERE "_s + where + u";"_s)
            .Value(0, 0)
            .toLongLong();
    }

    // The first `n` clash ids the grid shows.
    QList<qint64> FirstRows(int n)
    {
        QList<qint64> ids;
        for (int row = 0; row < n && row < Grid().Model()->rowCount(); ++row)
            ids << Grid().Model()->ClashIdOfRow(row);
        return ids;
    }

    static QString InList(const QList<qint64> &ids)
    {
        QStringList texts;
        for (qint64 id : ids)
            texts << QString::number(id);
        return u"clash_id IN ("_s + texts.join(u", "_s) + u")"_s;
    }

    // Picks option `index` of the save dialog, once it opens, and confirms it.
    static std::unique_ptr<fxtest::ModalDriver> SaveAs(int index)
    {
        return std::make_unique<fxtest::ModalDriver>([index](QWidget *dialog) {
            const QByteArray name = "Option1_" + QByteArray::number(index);
            if (auto *option = fxtest::Find<QRadioButton>(dialog, name.constData()))
                option->setChecked(true);
            fxtest::Click(dialog, "cmdOK");
        });
    }

    fxtest::Sandbox box;
    const QString project = u"W"_s + fx::RandomScratchName().toUpper();
    std::optional<pdssim::SiteLayout> layout;
    QString config;
    std::unique_ptr<fx::FrmFendrix> window;
    QString nextFile;
    QStringList offers;
    QStringList filters;
};

TEST_F(ApprovalWindow, a_reviewer_filters_sorts_groups_and_approves_the_selection)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    fx::FrmFendrix &w = Open();

    ASSERT_TRUE(Grid().IsOpen()) << Grid().GridText().toStdString();
    EXPECT_TRUE(w.windowTitle().contains(u" [Approval Module]"_s));
    EXPECT_TRUE(w.windowTitle().endsWith(u" - "_s + project));
    // The language menu lists the installed languages, the current one checked.
    const auto languages = w.MenuBar().languageMenu->actions();
    const auto english = std::find_if(languages.begin(), languages.end(),
                                      [](const QAction *a) { return a->objectName() == u"Menu_Lang_LLEnglish"_s; });
    ASSERT_NE(english, languages.end());
    EXPECT_TRUE((*english)->isChecked());
    // Choosing it translates the window anew, but counts and names are no texts to learn.
    w.RunMenuCommand(u"Menu_Lang_LLEnglish"_s);
    const QByteArray learnt = fxtest::Sandbox::ReadFile(box.ProgramDir() + u"Language/Mnemonic.ini"_s);
    EXPECT_TRUE(learnt.contains("Load clashes from &PDS..."));
    EXPECT_TRUE(learnt.contains("Total: %0% clashes"));
    EXPECT_FALSE(learnt.contains("Total: 120"));
    // Nor is the project's name in the title.
    EXPECT_TRUE(learnt.contains("Norvane Fendrix [Approval Module]"));
    EXPECT_FALSE(learnt.contains(project.toUtf8()));
    // A fresh load shows the unapproved clashes only, and says so in the caption.
    EXPECT_EQ(Grid().FilterText(u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(Grid().Model()->rowCount(), Count(u"status = 'Unapproved'"_s));
    EXPECT_TRUE(Grid().Caption().startsWith(u"Total: 120 clashes"_s)) << Grid().Caption().toStdString();
    fxtest::Screenshot(&w, "approval-window-loaded");

    Grid().SetFilterText(u"status"_s, QString());
    EXPECT_EQ(Grid().Model()->rowCount(), 120);
    Grid().ClickHeader(u"clash_id"_s);
    Grid().ClickHeader(u"clash_id"_s);
    EXPECT_GT(Grid().Model()->ClashIdOfRow(0), Grid().Model()->ClashIdOfRow(1));
    Grid().SetGroupColumns({u"discipline_a"_s});
    // A band stands for no clash: a selection of bands alone approves nothing.
    Grid().Table()->selectRow(0);
    ASSERT_TRUE(Grid().Model()->IsBand(0));
    boxes.boxes.clear();
    w.RunToolButton(1);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(boxes.boxes[0].text.contains(u"No clashes selected"_s)) << boxes.boxes[0].text.toStdString();
    EXPECT_FALSE(fx::GetClashesChanged());

    // Approve real three clashes of the first group: the store has them, the window knows of the change.
    Grid().Model()->SetGroupOpen(0, true);
    fxtest::Screenshot(&w, "approval-window-grouped");
    const QList<qint64> chosen = FirstRows(4).mid(1);
    Grid().SelectClashes(chosen);
    // The band selected with them adds nothing.
    Grid().Table()->selectionModel()->select(Grid().Model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    ASSERT_EQ(Grid().SelectedClashIds(), chosen);
    w.RunToolButton(1);
    EXPECT_EQ(Count(InList(chosen) + u" AND status = 'Approved' AND action = 'Approve Real Clash'"_s), 3);
    EXPECT_TRUE(fx::GetClashesChanged());
    EXPECT_TRUE(Grid().Caption().contains(u"approved: "_s));

    // The refresh puts the automatic filter back: the approved clashes leave the view.
    EXPECT_EQ(Grid().FilterText(u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(Grid().Model()->RowOfClash(chosen[0]), -1);

    // The same again changes nothing and says so; with nothing selected the flow refuses.
    Grid().SetFilterText(u"status"_s, u"Approved"_s);
    Grid().SelectClashes(chosen);
    ASSERT_EQ(Grid().SelectedCount(), 3);
    boxes.boxes.clear();
    w.RunToolButton(1);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(boxes.boxes[0].text.contains(u"No clashes updated"_s)) << boxes.boxes[0].text.toStdString();
    Grid().SelectClashes({});
    boxes.boxes.clear();
    w.RunMenuCommand(u"Menu_Clash_Unapprove"_s);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(boxes.boxes[0].text.contains(u"No clashes selected"_s));
}

TEST_F(ApprovalWindow, descriptions_and_reviews_survive_a_clash_file_and_the_project)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    fx::FrmFendrix &w = Open();
    ASSERT_TRUE(Grid().IsOpen());

    const QList<qint64> chosen = FirstRows(2);
    Grid().SelectClashes(chosen);
    fxtest::ModalDriver describe([](QWidget *dialog) {
        if (auto *text = fxtest::Find<QLineEdit>(dialog, "txtDescription")) {
            text->selectAll();
            QTest::keyClicks(text, u"pipe o'clock"_s);
        }
        fxtest::Click(dialog, "cmdOK");
    });
    w.RunToolButton(4);
    EXPECT_EQ(Count(InList(chosen) + u" AND review_comment LIKE 'pipe o''clock%'"_s), 2);

    // To a clash file: the window offers "<project>_clashes" in the project's folder and saves
    // where it is told.
    nextFile = box.Root() + u"review.fxdb"_s;
    auto toFile = SaveAs(fx::SaveChangesToFile);
    w.RunMenuCommand(u"Menu_File_Save"_s);
    ASSERT_FALSE(offers.isEmpty());
    EXPECT_EQ(QFileInfo(offers.last()).absoluteFilePath(),
              QFileInfo(layout->ProjectDir(project) + project + u"_clashes.fxdb"_s).absoluteFilePath());
    EXPECT_EQ(filters.last(), u"Fendrix database (*.fxdb)"_s);
    EXPECT_TRUE(QFileInfo::exists(nextFile));
    EXPECT_FALSE(fx::GetClashesChanged());

    // Approve false, then to the project.
    Grid().SelectClashes(chosen);
    w.RunToolButton(2);
    ASSERT_TRUE(fx::GetClashesChanged());
    auto toProject = SaveAs(fx::SaveChangesToProject);
    w.RunMenuCommand(u"Menu_File_Save"_s);
    EXPECT_FALSE(fx::GetClashesChanged());
    fxtest::Screenshot(&w, "approval-window-saved");

    // The clash file reopens with the descriptions, its name in the title (the site is there,
    // so it is online); the project reopens with the reviews.
    w.LoadProject(nextFile, QString());
    ASSERT_TRUE(Grid().IsOpen());
    EXPECT_TRUE(w.windowTitle().contains(u" ["_s + nextFile + u"]"_s)) << w.windowTitle().toStdString();
    EXPECT_FALSE(w.windowTitle().contains(u" [Offline]"_s));
    EXPECT_EQ(Count(InList(chosen) + u" AND review_comment LIKE 'pipe o''clock%'"_s), 2);
    w.LoadProject(project, layout->ControlFile());
    ASSERT_TRUE(Grid().IsOpen());
    EXPECT_EQ(Count(InList(chosen) + u" AND action = 'Approve False Clash'"_s), 2);
    // Both loads went into the recent list, newest first.
    const QAction *recent = w.MenuBar().items.value(u"Menu_File_RecentProject1"_s);
    ASSERT_TRUE(recent && recent->isVisible());
    EXPECT_TRUE(recent->text().startsWith(u"1 "_s + project + u" ("_s));
}

TEST_F(ApprovalWindow, closing_with_changes_asks_to_save_and_cancel_keeps_the_project)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    fx::FrmFendrix &w = Open();
    ASSERT_TRUE(Grid().IsOpen());
    Grid().SelectClashes(FirstRows(1));
    w.RunToolButton(1);
    ASSERT_TRUE(fx::GetClashesChanged());

    fxtest::ModalDriver cancel([](QWidget *dialog) { fxtest::Click(dialog, "cmdCancel"); });
    EXPECT_FALSE(w.close());
    EXPECT_TRUE(Grid().IsOpen());
    EXPECT_TRUE(fx::GetClashesChanged());
    // No question before the save dialog: unsaved changes of a writable project go straight to it.
    EXPECT_TRUE(boxes.boxes.empty()) << boxes.boxes[0].text.toStdString();

    // Dropping the changes closes the window and unloads it.
    bool unloaded = false;
    QObject::connect(&w, &fx::FrmFendrix::Unloaded, [&](bool) { unloaded = true; });
    auto discard = SaveAs(fx::SaveChangesDiscard);
    EXPECT_TRUE(w.close());
    EXPECT_TRUE(unloaded);
    EXPECT_EQ(fx::GetProjectName(), u"NO_PROJECT"_s);
}

TEST_F(ApprovalWindow, a_failed_load_is_told_and_leaves_the_window_usable)
{
    fxtest::RecordingMessageBox boxes(fx::IdOk);
    fx::Process().CmdProject.clear();
    // No project at start: the project selection opens at once; the user cancels it.
    bool selectionShown = false;
    fxtest::ModalDriver cancel([&](QWidget *dialog) {
        selectionShown = true;
        fxtest::Click(dialog, "cmdCancel");
    });
    fx::FrmFendrix &w = Open();
    EXPECT_TRUE(selectionShown);
    EXPECT_EQ(Grid().GridText(), u"Please select project"_s);

    EXPECT_THROW(w.LoadProject(u"NOPE"_s, box.Root() + u"missing.cmd"_s), fx::Failure);
    EXPECT_FALSE(Grid().IsOpen());
    EXPECT_EQ(fx::GetProjectName(), u"NO_PROJECT"_s);
    EXPECT_TRUE(Grid().GridText().contains(u"missing.cmd"_s)) << Grid().GridText().toStdString();
    // The commands that need a project are off; loading is on.
    EXPECT_FALSE(w.MenuBar().items.value(u"Menu_File_LoadSettings"_s)->isEnabled());
    EXPECT_TRUE(w.MenuBar().items.value(u"Menu_File_LoadClashes4PDS"_s)->isEnabled());
    EXPECT_FALSE(w.MenuBar().Find(u"Approve Real Clash"_s)->isEnabled());
    // Commands whose windows do not exist are shown disabled; the options open without a project.
    EXPECT_FALSE(w.MenuBar().items.value(u"Menu_Tools_Report"_s)->isEnabled());
    EXPECT_FALSE(w.MenuBar().Find(u"Report"_s)->isEnabled());
    EXPECT_TRUE(w.MenuBar().items.value(u"Menu_Tools_Options"_s)->isEnabled());
    // The event window shows the last lines of the log.
    EXPECT_GT(w.EventList()->count(), 0);
    fxtest::Screenshot(&w, "approval-window-no-project");
}

} // namespace

namespace {

TEST_F(ApprovalWindow, a_read_only_project_offers_no_status_commands_and_closes_without_the_save_dialog)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    fx::FrmFendrix &w = Open();
    ASSERT_TRUE(Grid().IsOpen());
    fx::ClashStore().ReadOnly = true;
    fx::SetClashesChanged(true);
    w.ApplyPermissions();
    for (const char *key : {"Menu_Clash_ApproveReal", "Menu_Clash_ApproveFalse", "Menu_Clash_Unapprove",
                            "Menu_Clash_SetDescription", "Menu_File_Save"})
        EXPECT_FALSE(w.MenuBar().items.value(QString::fromLatin1(key))->isEnabled()) << key;
    EXPECT_FALSE(w.MenuBar().Find(u"SaveChanges"_s)->isEnabled());

    // Any dialog here would be the save dialog, which a read-only project never shows.
    bool dialogShown = false;
    fxtest::ModalDriver unexpected([&](QWidget *dialog) {
        dialogShown = true;
        fxtest::Click(dialog, "cmdCancel");
    });
    EXPECT_TRUE(w.close());
    EXPECT_FALSE(dialogShown);
    ASSERT_EQ(boxes.boxes.size(), 1u) << boxes.boxes[0].text.toStdString() << " / " << boxes.boxes[1].text.toStdString();
    EXPECT_EQ(boxes.boxes[0].text, u"Do you really want to close this window?"_s);
    EXPECT_EQ(boxes.boxes[0].flags & ~quint32(fx::MbTaskModal), quint32(fx::MbYesNo | fx::MbIconQuestion | fx::MbDefButton2));
}

} // namespace

namespace {

TEST_F(ApprovalWindow, settings_files_are_saved_and_loaded_and_the_event_window_is_kept_hidden)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    fx::FrmFendrix &w = Open();
    ASSERT_TRUE(Grid().IsOpen());

    // Save: the user config file as it stands, copied where the user says.
    nextFile = box.Root() + u"mine.ini"_s;
    w.RunMenuCommand(u"Menu_File_SaveSettings"_s);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(nextFile), fxtest::Sandbox::ReadFile(fx::GetUserConfigFile()));

    // Load: the chosen file replaces the user config file and the grid is shown anew.
    box.WriteFile(u"theirs.ini"_s, fxtest::Sandbox::ReadFile(nextFile) + "\r\n[Report]\r\nTitle=Theirs\r\n");
    nextFile = box.Root() + u"theirs.ini"_s;
    w.RunMenuCommand(u"Menu_File_LoadSettings"_s);
    EXPECT_EQ(fx::GetIniValue(fx::GetUserConfigFile(), u"Report"_s, u"Title"_s), u"Theirs"_s);
    EXPECT_TRUE(Grid().IsOpen());
    EXPECT_TRUE(boxes.boxes.empty());

    w.RunMenuCommand(u"Menu_View_EventWindow"_s);
    EXPECT_FALSE(w.EventList()->isVisible());
    EXPECT_FALSE(w.MenuBar().items.value(u"Menu_View_EventWindow"_s)->isChecked());
    EXPECT_EQ(fx::GetIniValue(fx::GetConfigFile(), u"Approve"_s, u"EventWindow"_s), u"0"_s);
    window.reset();
    fx::FrmFendrix &again = Open();
    EXPECT_FALSE(again.EventList()->isVisible());
}

TEST_F(ApprovalWindow, a_real_privilege_database_greys_out_what_neither_the_user_nor_a_group_of_the_user_holds)
{
    fxtest::RecordingMessageBox boxes(fx::IdYes);
    const QString domain = fx::GetMyAccountDomain();
    const QString user = fx::GetMyUserName();
    const QStringList groups = fx::GetAllGroupsOfUser(domain, user);
    ASSERT_FALSE(groups.isEmpty());
    // The database beside the project's proj_file, as a privilege manager leaves it.
    const auto grant = [&](const QString &type, const QString &name, std::initializer_list<int> numbers) {
        fx::PrivilegePermissionsSet(fx::PermissionNames(), layout->ProjFileDir() + fx::MainExecutableName() + u".mdb"_s);
        fx::PrivilegeMgrInit();
        fx::PrivilegeAddObject2DB(type, domain, name);
        for (const int no : numbers)
            fx::PrivilegeSet(type, domain, name, fx::GetPermissionName(no), true);
        fx::PrivilegeDBClose();
    };
    grant(u"user"_s, user, {fx::PermissionLoadSettingsNo, fx::PermissionSetDescriptionNo, fx::PermissionSaveChangesNo});
    // A group the user is not in grants nothing to the user.
    grant(u"group"_s, u"not-a-group-of-mine"_s, {fx::PermissionChangeStatusNo, fx::PermissionAdministratorNo});

    fx::FrmFendrix &w = Open();
    ASSERT_TRUE(Grid().IsOpen());
    const auto enabled = [&](const char *key) {
        const QAction *item = w.MenuBar().items.value(QString::fromLatin1(key));
        return item ? item->isEnabled() : w.MenuBar().Find(QString::fromLatin1(key))->isEnabled();
    };
    for (const char *key : {"Menu_Clash_ApproveReal", "Menu_Clash_ApproveFalse", "Menu_Clash_Unapprove",
                            "Approve Real Clash", "Approve False Clash", "Unapprove Clash",
                            "Menu_Tools_PrivilegeManager", "Menu_Lang_Editor"})
        EXPECT_FALSE(enabled(key)) << key;
    for (const char *key : {"Menu_Clash_SetDescription", "Description", "Menu_File_LoadSettings", "Menu_File_Save",
                            "SaveChanges"})
        EXPECT_TRUE(enabled(key)) << key;

    // A group of the user's that holds the status change gives it to the user at the next load.
    grant(u"group"_s, groups.first(), {fx::PermissionChangeStatusNo});
    w.LoadProject(project, layout->ControlFile());
    ASSERT_TRUE(Grid().IsOpen());
    for (const char *key : {"Menu_Clash_ApproveReal", "Menu_Clash_ApproveFalse", "Menu_Clash_Unapprove",
                            "Approve Real Clash", "Approve False Clash", "Unapprove Clash", "Description"})
        EXPECT_TRUE(enabled(key)) << key;
    EXPECT_FALSE(enabled("Menu_Tools_PrivilegeManager"));
    fxtest::Screenshot(&w, "approval-window-permissions");
}

} // namespace

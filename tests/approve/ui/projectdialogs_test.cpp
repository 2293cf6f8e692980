#include "approve/ui/frmdescription.h"
#include "approve/ui/frmsavechanges.h"
#include "approve/ui/frmselectproject.h"
#include "frame/configkeys.h"
#include "permissions/privilegedb.h"
#include "store/loadclashes.h"
#include "support/recordingmessagebox.h"
#include "approve/ui/dialogdriver.h"
#include "pdssim/sitekind.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace fx;
using fxtest::Click;
using fxtest::Find;
using fxtest::ModalDriver;
using fxtest::Screenshot;
using fxtest::Text;

namespace {

// The dialogs that read a site: its control file, its project list, its permissions.
class ProjectDialogs : public fxtest::SiteKindTest
{
protected:
    void Build()
    {
        layout.emplace(fxtest::ProgramSite(box.Root() + Text("site"), project, m_kind, 10, false, box.ProgramDir()));
    }

    const QString project = Text("DLGPROJ");
    std::optional<pdssim::SiteLayout> layout;
};

} // namespace

TEST_P(ProjectDialogs, select_project_lists_the_sites_project_and_accepts_it)
{
    Build();
    ModalDriver driver([&](QWidget *dialog) {
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtControlFile")->text(), layout->ControlFile());
        auto *projects = Find<QListWidget>(dialog, "lstProjects");
        const QList<QListWidgetItem *> found = projects->findItems(project, Qt::MatchExactly);
        EXPECT_EQ(found.size(), 1);
        EXPECT_EQ(projects->currentRow(), -1) << "no project stored yet";
        EXPECT_TRUE(Find<QWidget>(dialog, "cmdOK")->isEnabled()) << "unlocked after reading";
        if (!found.isEmpty())
            projects->setCurrentItem(found.first());
        Click(dialog, "chkAutoReload");
        Screenshot(dialog, "frmSelectProject");
        Click(dialog, "cmdOK");
    });
    const SelectProjectResult result = FrmSelectProject::Run(nullptr);
    EXPECT_EQ(result.outcome, SelectProjectResult::Outcome::Project);
    EXPECT_EQ(result.project, project);
    EXPECT_EQ(result.controlFile, layout->ControlFile());
    EXPECT_TRUE(ConfigAutoLoad());

    // With AutoLoad on and the project stored, the dialog accepts by itself.
    SetConfigProject(layout->ControlFile(), project);
    ModalDriver none([](QWidget *) {});
    const SelectProjectResult automatic = FrmSelectProject::Run(nullptr);
    EXPECT_FALSE(none.ClosedByGuard());
    EXPECT_EQ(automatic.outcome, SelectProjectResult::Outcome::Project);
    EXPECT_EQ(automatic.project, project);

    SetConfigAutoLoad(false);
    ModalDriver cancel([](QWidget *dialog) {
        const QListWidgetItem *current = Find<QListWidget>(dialog, "lstProjects")->currentItem();
        EXPECT_TRUE(current && current->text() == Text("DLGPROJ")) << "the stored project is preselected";
        Click(dialog, "cmdCancel");
    });
    EXPECT_EQ(FrmSelectProject::Run(nullptr).outcome, SelectProjectResult::Outcome::Cancelled);
}

TEST_P(ProjectDialogs, an_open_project_offers_saving_to_it_and_its_permissions_rule_the_dialogs)
{
    Build();
    InitClashes(layout->ControlFile(), project);
    fxtest::RecordingMessageBox boxes(IdYes);
    ModalDriver driver([&](QWidget *dialog) {
        EXPECT_TRUE(Find<QRadioButton>(dialog, "Option1_0")->isEnabled());
        EXPECT_TRUE(Find<QRadioButton>(dialog, "Option1_0")->isChecked());
        EXPECT_EQ(Find<QLabel>(dialog, "lblMessage")->text(), Text("PDS-Project '") + project + Text("' was NOT modified."));
        Click(dialog, "cmdOK");
    });
    EXPECT_EQ(FrmSaveChanges::ShowForm(nullptr), SaveChangesToProject);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, Text("Are you sure?"));

    // Without "Save changes to PDS" and "Options" the user can neither write to the project
    // nor switch the description dialog off.
    fxtest::GrantOnly(layout->ControlFile(), {PermissionChangeStatusNo});
    PrivilegeMyPermissionInit();
    ModalDriver denied([](QWidget *dialog) {
        EXPECT_FALSE(Find<QRadioButton>(dialog, "Option1_0")->isEnabled());
        EXPECT_TRUE(Find<QRadioButton>(dialog, "Option1_1")->isChecked());
        Click(dialog, "cmdCancel");
    });
    EXPECT_EQ(FrmSaveChanges::ShowForm(nullptr), SaveChangesCancelled);
    ModalDriver description([](QWidget *dialog) {
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkNeverShow")->isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkDoNotChangeDescr")->isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkAddUserID")->isEnabled());
        Click(dialog, "cmdCancel");
    });
    EXPECT_FALSE(FrmDescription::ShowForm(1, nullptr));
}

INSTANTIATE_TEST_SUITE_P(Sqlite, ProjectDialogs, testing::Values("sqlite"));

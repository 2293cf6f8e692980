// The rules of the save dialog: which choice it offers and preselects, what it asks before it
// closes, and what its caller then does with the open store.

#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "permissions/accounts.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "permissions/privilegemanager.h"
#include "pds/sqlitedb.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/savechanges.h"

#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class SaveChanges : public testing::Test
{
protected:
    void SetUp() override
    {
        Process().WorkDir = box.Temp();
        ClashStoreState &state = ClashStore();
        state.ProjectDefinition.name = u"P"_s;
        state.WorkDB = box.Temp() + u"store.fxdb"_s;
        state.ClashConnection = std::make_unique<SqliteDb>(state.WorkDB, SqliteDb::OpenMode::ReadWriteCreate);
        state.ClashConnection->Execute(u"CREATE TABLE base_clash_table (clash_id INT);"_s);
        state.SchemaAvailable = true;
        state.ClashesChanged = true;
    }

    void TearDown() override
    {
        FreeClashes();
        // The next test starts with nobody locked out: an empty privileges database.
        PrivilegeDBClose();
        PrivilegePermissionsSet(PermissionNames(), box.Root() + u"nobody.mdb"_s);
        PrivilegeMyPermissionInit();
        PrivilegeDBClose();
    }

    // A privileges database in which the user holds every permission but `withheld`.
    void Withhold(int withheld)
    {
        PrivilegePermissionsSet(PermissionNames(), box.Root() + u"privileges.mdb"_s);
        PrivilegeMgrInit();
        PrivilegeAddObject2DB(u"user"_s, GetMyAccountDomain(), GetMyUserName());
        for (int no = 0; no < PermissionCount; ++no)
            if (no != withheld)
                PrivilegeSet(u"user"_s, GetMyAccountDomain(), GetMyUserName(), GetPermissionName(no), true);
        PrivilegeDBClose();
        PrivilegeMyPermissionInit();
    }

    fxtest::Sandbox box;
};

} // namespace

TEST_F(SaveChanges, the_project_is_offered_first_only_when_reachable_and_permitted)
{
    {
        const SaveChangesDialogModel dialog;
        EXPECT_EQ(dialog.Caption(), u"Save project changes"_s);
        EXPECT_EQ(dialog.Label(), u"PDS-Project 'P' was modified."_s);
        EXPECT_TRUE(dialog.IsOptionEnabled(SaveChangesToProject));
        EXPECT_EQ(dialog.SelectedOption(), SaveChangesToProject);
    }
    SetClashesChanged(false);
    EXPECT_EQ(SaveChangesDialogModel().Label(), u"PDS-Project 'P' was NOT modified."_s);

    // Offline, the project can't take the changes: a clash file is offered instead.
    ClashStore().SchemaAvailable = false;
    SaveChangesDialogModel offline;
    EXPECT_FALSE(offline.IsOptionEnabled(SaveChangesToProject));
    EXPECT_EQ(offline.SelectedOption(), SaveChangesToFile);
    offline.SelectOption(SaveChangesToProject);
    EXPECT_EQ(offline.SelectedOption(), SaveChangesToFile) << "a disabled choice can't be picked";
    offline.SelectOption(SaveChangesDiscard);
    EXPECT_EQ(offline.SelectedOption(), SaveChangesDiscard);

    // Online, but without the permission to save to the project.
    ClashStore().SchemaAvailable = true;
    Withhold(PermissionSaveChangesNo);
    const SaveChangesDialogModel unpermitted;
    EXPECT_FALSE(unpermitted.IsOptionEnabled(SaveChangesToProject));
    EXPECT_EQ(unpermitted.SelectedOption(), SaveChangesToFile);
}

TEST_F(SaveChanges, writing_to_the_project_and_dropping_the_changes_ask_first_with_no_as_default)
{
    SaveChangesDialogModel dialog;
    {
        fxtest::RecordingMessageBox no(IdNo);
        EXPECT_FALSE(dialog.Accept()) << "No keeps the dialog open";
        ASSERT_EQ(no.boxes.size(), 1u);
        EXPECT_EQ(no.boxes.front().text, u"Are you sure?"_s);
        EXPECT_EQ(no.boxes.front().flags & 0xF, quint32(MbYesNo));
        EXPECT_EQ(no.boxes.front().flags & 0x300, quint32(MbDefButton2));
        EXPECT_EQ(dialog.GetStatus(), SaveChangesCancelled);
    }
    {
        fxtest::RecordingMessageBox yes(IdYes);
        EXPECT_TRUE(dialog.Accept());
        EXPECT_EQ(dialog.GetStatus(), SaveChangesToProject);
        dialog.SelectOption(SaveChangesDiscard);
        EXPECT_TRUE(dialog.Accept());
        EXPECT_EQ(dialog.GetStatus(), SaveChangesDiscard);
        EXPECT_EQ(yes.boxes.size(), 2u);

        // A clash file is asked for by the caller, not here.
        dialog.SelectOption(SaveChangesToFile);
        EXPECT_TRUE(dialog.Accept());
        EXPECT_EQ(dialog.GetStatus(), SaveChangesToFile);
        EXPECT_EQ(yes.boxes.size(), 2u);
    }
    dialog.Cancel();
    EXPECT_EQ(dialog.GetStatus(), SaveChangesCancelled);
}

TEST_F(SaveChanges, the_caller_saves_to_the_chosen_file_and_only_a_save_clears_the_changes)
{
    QString offered;
    const QString target = box.Root() + u"reviewed.fxdb"_s;
    EXPECT_FALSE(ApplySaveChangesStatus(SaveChangesToFile, [&](const QString &name) {
        offered = name;
        return QString();
    })) << "no file chosen cancels the closing";
    EXPECT_EQ(offered, u"P_clashes.fxdb"_s);
    EXPECT_TRUE(GetClashesChanged());
    EXPECT_FALSE(QFile::exists(target));

    EXPECT_TRUE(ApplySaveChangesStatus(SaveChangesToFile, [&](const QString &) { return target; }));
    EXPECT_TRUE(IsValidMDB(target));
    EXPECT_FALSE(GetClashesChanged());

    // Opened from a clash file, that file is offered again.
    ClashStore().ClashFile = target;
    ApplySaveChangesStatus(SaveChangesToFile, [&](const QString &name) {
        offered = name;
        return QString();
    });
    EXPECT_EQ(offered, target);

    SetClashesChanged(true);
    EXPECT_TRUE(ApplySaveChangesStatus(SaveChangesDiscard, {}));
    EXPECT_TRUE(GetClashesChanged()) << "dropped changes are not saved ones";
    EXPECT_FALSE(ApplySaveChangesStatus(SaveChangesCancelled, {}));
}

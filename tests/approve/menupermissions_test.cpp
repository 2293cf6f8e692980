#include "approve/menupermissions.h"

#include "permissions/permissionnames.h"
#include "store/messages.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace fx;

namespace {

const QString kProject = QStringLiteral("PLANT1");

// A writable open project with a privilege database, the user holding `held` only.
PermissionContext Holding(QSet<int> held, const QString &project = kProject, bool readOnly = false)
{
    PermissionContext context;
    context.store = {project, readOnly, true, [held](int no) { return held.contains(no); }};
    context.checkModuleBuiltIn = true;
    context.hasPermissionDB = true;
    return context;
}

QSet<int> All()
{
    QSet<int> all;
    for (int no = 0; no < PermissionCount; ++no)
        all.insert(no);
    return all;
}

// The keys the main window gets enabled, sorted for comparison.
QStringList EnabledKeys(const PermissionContext &context, PermissionForm form = PermissionForm::Main)
{
    QStringList keys;
    for (const EnabledState &state : ApplyPermissions(form, context))
        if (state.enabled)
            keys << state.key;
    keys.sort();
    return keys;
}

QStringList Sorted(QStringList keys)
{
    keys.sort();
    return keys;
}

// Saving needs a writable project alone, and the options open for every user: with a project
// open and writable, both are always on.
const QString kOptions = QStringLiteral("Menu_Tools_Options");
const QStringList kSave{QStringLiteral("Menu_File_Save"), QStringLiteral("SaveChanges"), kOptions};

} // namespace

TEST(ApplyPermissions, each_permission_held_alone_enables_exactly_its_built_commands)
{
    const QStringList status{QStringLiteral("Menu_Clash_ApproveReal"), QStringLiteral("Menu_Clash_ApproveFalse"),
                             QStringLiteral("Menu_Clash_Unapprove"),   QStringLiteral("Approve Real Clash"),
                             QStringLiteral("Approve False Clash"),    QStringLiteral("Unapprove Clash")};
    const QStringList description{QStringLiteral("Menu_Clash_SetDescription"), QStringLiteral("Description")};
    // Check module, approval filter, privilege manager and language editor have no window yet:
    // their permissions enable nothing.
    const struct
    {
        int permission;
        QStringList enabled;
    } rows[] = {
        {PermissionCheckNo, kSave},
        {PermissionLoadSettingsNo, kSave + QStringList{QStringLiteral("Menu_File_LoadSettings")}},
        {PermissionOptionsNo, kSave},
        {PermissionSaveChangesNo, kSave},
        {PermissionChangeStatusNo, kSave + status},
        {PermissionCleanHistoryNo, kSave},
        {PermissionDeleteAllClashesNo, kSave},
        {PermissionAdministratorNo, kSave},
        {PermissionApprovalFilterNo, kSave},
        {PermissionSetDescriptionNo, kSave + description},
        {PermissionUnlockMarkersNo, kSave},
    };
    for (const auto &row : rows)
        EXPECT_EQ(EnabledKeys(Holding({row.permission})), Sorted(row.enabled)) << "permission " << row.permission;

    // The clash toolbar follows the same rules on its four buttons.
    EXPECT_EQ(EnabledKeys(Holding({PermissionChangeStatusNo}), PermissionForm::ClashToolBar),
              Sorted({QStringLiteral("Approve Real Clash"), QStringLiteral("Approve False Clash"),
                      QStringLiteral("Unapprove Clash")}));
    EXPECT_EQ(EnabledKeys(Holding({PermissionSetDescriptionNo}), PermissionForm::ClashToolBar),
              QStringList{QStringLiteral("Description")});
    EXPECT_EQ(ApplyPermissions(PermissionForm::ClashToolBar, Holding(All())).size(), 4);
}

TEST(ApplyPermissions, the_rules_alone_follow_each_permission_before_the_missing_windows_are_taken_out)
{
    const QList<MenuCommand> ruled{MenuCommand::SwitchToCheck, MenuCommand::LoadSettings,   MenuCommand::ApproveReal,
                                   MenuCommand::SetDescription, MenuCommand::ApprovalFilter, MenuCommand::PrivilegeManager,
                                   MenuCommand::LanguageEditor, MenuCommand::Save};
    const struct
    {
        int permission;
        QList<MenuCommand> permitted;
    } rows[] = {
        {PermissionCheckNo, {MenuCommand::SwitchToCheck, MenuCommand::Save}},
        {PermissionLoadSettingsNo, {MenuCommand::LoadSettings, MenuCommand::Save}},
        {PermissionChangeStatusNo, {MenuCommand::ApproveReal, MenuCommand::Save}},
        {PermissionAdministratorNo, {MenuCommand::PrivilegeManager, MenuCommand::LanguageEditor, MenuCommand::Save}},
        {PermissionApprovalFilterNo, {MenuCommand::ApprovalFilter, MenuCommand::Save}},
        {PermissionSetDescriptionNo, {MenuCommand::SetDescription, MenuCommand::Save}},
        {PermissionSaveChangesNo, {MenuCommand::Save}},
    };
    for (const auto &row : rows)
        for (MenuCommand command : ruled)
            EXPECT_EQ(IsCommandPermitted(command, Holding({row.permission})), row.permitted.contains(command))
                << "permission " << row.permission << ", command " << int(command);

    // The checker needs its module, the privilege manager a database to manage.
    PermissionContext context = Holding(All());
    context.checkModuleBuiltIn = false;
    context.hasPermissionDB = false;
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::SwitchToCheck, context));
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::PrivilegeManager, context));
    EXPECT_TRUE(IsCommandPermitted(MenuCommand::LanguageEditor, context));
    // A window not built stays off even with every permission.
    EXPECT_FALSE(IsEnabledIn(ApplyPermissions(PermissionForm::Main, Holding(All())), QStringLiteral("Menu_File_Check")));
}

TEST(ApplyPermissions, read_only_and_no_project_switch_off_what_would_change_the_clashes)
{
    // Read only: every status command and saving off whatever the permissions; loading
    // settings stays, the project being open.
    EXPECT_EQ(EnabledKeys(Holding(All(), kProject, true)), Sorted({QStringLiteral("Menu_File_LoadSettings"), kOptions}));
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::ApprovalFilter, Holding(All(), kProject, true)));

    // No project: nothing to save or change, no settings to load; loading a project is no
    // ruled item and keeps the state the window gave it.
    const PermissionContext none = Holding(All(), QString::fromLatin1(msg::NoProject));
    EXPECT_EQ(EnabledKeys(none), QStringList{kOptions});
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::LoadSettings, none));
    EXPECT_TRUE(IsCommandPermitted(MenuCommand::LoadClashes4PDS, none));
    for (const EnabledState &state : ApplyPermissions(PermissionForm::Main, none))
        EXPECT_NE(state.key, QStringLiteral("Menu_File_LoadClashes4PDS"));
}

TEST(ApplyPermissions, the_process_state_with_no_privilege_database_grants_all_but_has_no_project)
{
    const PermissionContext context = CurrentPermissionContext();
    EXPECT_EQ(context.store.projectName, QString::fromLatin1(msg::NoProject));
    EXPECT_FALSE(context.hasPermissionDB);
    EXPECT_TRUE(IsCommandPermitted(MenuCommand::LanguageEditor, context));
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::LoadSettings, context));
    EXPECT_FALSE(IsCommandPermitted(MenuCommand::PrivilegeManager, context));
}

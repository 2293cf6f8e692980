#include "approve/menupermissions.h"

#include "frame/failure.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/clashstore.h"
#include "store/messages.h"

namespace fx {

namespace {

using C = MenuCommand;

// The main window's ruled menu items, in the order of the rules.
const QStringList &MainMenuKeys()
{
    static const QStringList keys{
        QStringLiteral("Menu_File_Check"),           QStringLiteral("Menu_Clash_ApproveReal"),
        QStringLiteral("Menu_Clash_ApproveFalse"),   QStringLiteral("Menu_Clash_Unapprove"),
        QStringLiteral("Menu_Clash_SetDescription"), QStringLiteral("Menu_Tools_ApprovalFilter"),
        QStringLiteral("Menu_File_Save"),            QStringLiteral("Menu_File_LoadSettings"),
        QStringLiteral("Menu_Tools_PrivilegeManager"), QStringLiteral("Menu_Lang_Editor"),
        // No rule of their own: disabled only while their window is missing. Options opens for
        // every user; without permission 2 its pages stand disabled.
        QStringLiteral("Menu_Clash_Show"),           QStringLiteral("Menu_Tools_Report"),
        QStringLiteral("Menu_Tools_Options"),
    };
    return keys;
}

const QStringList &MainButtonKeys()
{
    static const QStringList keys{
        QStringLiteral("Approve Real Clash"), QStringLiteral("Approve False Clash"),
        QStringLiteral("Unapprove Clash"),    QStringLiteral("Description"),
        QStringLiteral("ApprovalFilter"),     QStringLiteral("SaveChanges"),
        QStringLiteral("Show"),               QStringLiteral("Report"),
    };
    return keys;
}

const QStringList &ClashToolBarKeys()
{
    static const QStringList keys{QStringLiteral("Approve Real Clash"), QStringLiteral("Approve False Clash"),
                                  QStringLiteral("Unapprove Clash"), QStringLiteral("Description")};
    return keys;
}

bool Granted(const PermissionContext &context, int no)
{
    return context.store.granted ? context.store.granted(no) : IsPermissionGranted(no);
}

bool Enabled(MenuCommand command, const PermissionContext &context)
{
    return IsCommandWindowBuilt(command) && IsCommandPermitted(command, context);
}

} // namespace

PermissionContext CurrentPermissionContext()
{
    return Frame("CurrentPermissionContext", [] {
        PermissionContext context;
        context.store = CurrentStoreCommandContext();
        const ProjFile &projFile = GetProjectProjFile();
        // Without a project directory there is no database to manage.
        if (!projFile.PROJ_ADDR.trimmed().isEmpty() && !projFile.PROJ_FILE.trimmed().isEmpty())
            context.hasPermissionDB = !GetPermissionDBFileName(projFile.PROJ_ADDR, projFile.PROJ_FILE, false).isEmpty();
        return context;
    });
}

bool IsCommandPermitted(MenuCommand command, const PermissionContext &context)
{
    switch (command) {
    case C::SwitchToCheck:
        return Granted(context, PermissionCheckNo) && context.checkModuleBuiltIn;
    case C::ApproveReal:
    case C::ApproveFalse:
    case C::Unapprove:
        return IsStoreCommandAllowed(StoreCommand::ChangeStatus, context.store);
    case C::SetDescription:
        return IsStoreCommandAllowed(StoreCommand::SetDescription, context.store);
    case C::ApprovalFilter:
        return IsStoreCommandAllowed(StoreCommand::ApprovalFilter, context.store);
    case C::Save:
        return IsStoreCommandAllowed(StoreCommand::Save, context.store);
    case C::LoadSettings:
        return Granted(context, PermissionLoadSettingsNo) && context.store.projectName != QLatin1String(msg::NoProject);
    case C::PrivilegeManager:
        return Granted(context, PermissionAdministratorNo) && context.hasPermissionDB;
    case C::LanguageEditor:
        return Granted(context, PermissionAdministratorNo);
    default:
        return true;
    }
}

QList<EnabledState> ApplyPermissions(PermissionForm form, const PermissionContext &context)
{
    return Frame("ApplyPermissions", [&] {
        QList<EnabledState> states;
        if (form == PermissionForm::Main)
            for (const QString &key : MainMenuKeys())
                states.append({key, Enabled(FindMenuItem(key)->command, context)});
        for (const QString &key : form == PermissionForm::Main ? MainButtonKeys() : ClashToolBarKeys())
            states.append({key, Enabled(FindToolButton(key)->command, context)});
        return states;
    });
}

bool IsEnabledIn(const QList<EnabledState> &states, const QString &key)
{
    for (const EnabledState &state : states)
        if (state.key.compare(key, Qt::CaseInsensitive) == 0)
            return state.enabled;
    return false;
}

} // namespace fx

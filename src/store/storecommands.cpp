#include "store/storecommands.h"

#include "frame/failure.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/clashstore.h"
#include "store/messages.h"

namespace fx {

namespace {

// The permission a command needs; -1 for none.
int NeededPermission(StoreCommand command)
{
    switch (command) {
    case StoreCommand::ChangeStatus:
        return PermissionChangeStatusNo;
    case StoreCommand::SetDescription:
        return PermissionSetDescriptionNo;
    case StoreCommand::ApprovalFilter:
        return PermissionApprovalFilterNo;
    case StoreCommand::SaveToProject:
        return PermissionSaveChangesNo;
    case StoreCommand::Save:
        break;
    }
    return -1;
}

// Why `command` is refused, as a message and its arguments; no message when it is allowed.
struct Refusal
{
    const char *message = nullptr;
    QStringList args;
};

Refusal RefusalOf(StoreCommand command, const StoreCommandContext &context)
{
    if (context.projectName == QLatin1String(msg::NoProject))
        return {msg::NoProjectOpen, {}};
    // A project opened although locked takes nothing back, not even into a clash file.
    if (context.readOnly)
        return {msg::ProjectIsReadOnly, {context.projectName}};
    const int permission = NeededPermission(command);
    if (permission >= 0 && !(context.granted ? context.granted(permission) : IsPermissionGranted(permission)))
        return {msg::PermissionNotGranted, {GetPermissionName(permission, true)}};
    if (command == StoreCommand::SaveToProject && !context.schemaAvailable)
        return {msg::ProjectIsOffline, {context.projectName}};
    return {};
}

} // namespace

StoreCommandContext CurrentStoreCommandContext()
{
    return {GetProjectName(), IsReadOnly(), IsSchemaAvailable(), IsPermissionGranted};
}

QString StoreCommandRefusal(StoreCommand command, const StoreCommandContext &context)
{
    const Refusal refusal = RefusalOf(command, context);
    return refusal.message ? ArgForm(refusal.message, refusal.args) : QString();
}

bool IsStoreCommandAllowed(StoreCommand command, const StoreCommandContext &context)
{
    return RefusalOf(command, context).message == nullptr;
}

QString StoreCommandRefusal(StoreCommand command)
{
    return StoreCommandRefusal(command, CurrentStoreCommandContext());
}

bool IsStoreCommandAllowed(StoreCommand command)
{
    return IsStoreCommandAllowed(command, CurrentStoreCommandContext());
}

void RequireStoreCommand(StoreCommand command)
{
    Frame("RequireStoreCommand", [&] {
        const Refusal refusal = RefusalOf(command, CurrentStoreCommandContext());
        if (refusal.message)
            Raise(refusal.message, refusal.args);
    });
}

} // namespace fx

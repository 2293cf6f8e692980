#pragma once
// Which commands on the open project's clashes the user may give: the same rule for the
// approval window's menus and for the command-line tool, so that neither allows more.

#include <QString>

#include <functional>

namespace fx {

/// The commands that change or save the open project's clashes.
enum class StoreCommand {
    ChangeStatus,   ///< approve real or false, unapprove
    SetDescription, ///< set a description only
    ApprovalFilter, ///< the approval filter
    Save,           ///< save the changes at all
    SaveToProject,  ///< write the changes back to the project
};

/// What the rule looks at: the project, its flags and the user's permissions.
struct StoreCommandContext
{
    QString projectName;             ///< "NO_PROJECT" when none is open
    bool readOnly = false;
    bool schemaAvailable = false;
    std::function<bool(int)> granted; ///< whether the user holds a permission number
};

/// The context of the open project and the present user.
StoreCommandContext CurrentStoreCommandContext();

/// Empty when the open project and the user's permissions allow `command`; otherwise why not.
QString StoreCommandRefusal(StoreCommand command);

/// The same rule on a given context.
QString StoreCommandRefusal(StoreCommand command, const StoreCommandContext &context);

/// True when `command` is allowed in `context`.
bool IsStoreCommandAllowed(StoreCommand command, const StoreCommandContext &context);

/// True when `command` may be given now.
bool IsStoreCommandAllowed(StoreCommand command);

/// Raises the refusal of `command`, if any.
void RequireStoreCommand(StoreCommand command);

} // namespace fx

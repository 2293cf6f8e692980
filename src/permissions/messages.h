#pragma once
// Every text of the permissions subsystem that reaches a user or the log, in argument form.
// The English text is the translation key, so a text here never changes casually.

namespace fx::msg {

// The permissions, by number; the names are also what the privilege manager shows.
inline constexpr char PermissionCheck[] = "Envelope Builder and Interference Checker";
inline constexpr char PermissionLoadSettings[] = "Load settings from file";
inline constexpr char PermissionOptions[] = "Options";
inline constexpr char PermissionSaveChanges[] = "Save changes to PDS";
inline constexpr char PermissionChangeStatus[] = "Change clash status (approve/unapprove)";
inline constexpr char PermissionCleanHistory[] = "Clean history of all clashes in PDS";
inline constexpr char PermissionDeleteAllClashes[] = "Delete all clashes from PDS";
// The misspelling is the name databases and language files already know.
inline constexpr char PermissionAdministrator[] = "Administator mode";
inline constexpr char PermissionApprovalFilter[] = "Approval Filter";
inline constexpr char PermissionSetDescription[] = "Set clash description";
inline constexpr char PermissionUnlockMarkers[] = "Unlock project/area marker file(s)";
inline constexpr char AllPermissions[] = "All permissions";

// Names and numbers of permissions
inline constexpr char PermissionNameNotDefined[] = "Permission name not defined";
inline constexpr char PermissionNameNotExists[] = "Permission number for permission name '%0%' not exists";
inline constexpr char PermissionNumberIncorrect[] = "Permission number %0% is incorrect";

// The privilege database
inline constexpr char NoPermissionsDefined[] = "No permissions defined";
inline constexpr char PrivilegesDatabaseNotDefined[] = "Privileges database not defined";
inline constexpr char CreatingPrivilegesDatabaseFailed[] = "Creating privileges database '%0%' failed";
inline constexpr char PermissionsDatabaseNotAvailable[] = "Permissions database is not available";
inline constexpr char PrivilegeDatabaseNotWritable[] = "Privilege database '%0%' is not writable";
inline constexpr char UnknownObjectType[] = "Unknown object type '%0%'";
inline constexpr char ObjectDomainNotDefined[] = "Object domain name not defined";
inline constexpr char ObjectNameNotDefined[] = "Object name not defined";
inline constexpr char ProjFileDirectoryNotDefined[] = "proj_file directory not defined";

// Accounts
inline constexpr char UserAccountNotFound[] = "User '%0%' not found in domain '%1%'";

} // namespace fx::msg

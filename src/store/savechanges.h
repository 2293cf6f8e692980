#pragma once
// The rules of the dialog that asks what becomes of a project's changes, before it closes and
// on the Save command: to the project, to a clash file, or dropped.

#include <QString>

#include <functional>

namespace fx {

/// The dialog's choices, and its result.
enum SaveChangesOption : int {
    SaveChangesToProject = 0,
    SaveChangesToFile = 1,
    SaveChangesDiscard = 2,
    SaveChangesCancelled = 3, ///< the result of Cancel only
};

/// The state and rules of the save dialog for the open project, for the window that shows it.
class SaveChangesDialogModel
{
public:
    /// Filled as the dialog opens, from the open project and the user's permissions.
    SaveChangesDialogModel();

    /// "Save project changes", translated.
    QString Caption() const;
    /// "PDS-Project '<project>' was modified." or "... was NOT modified.", translated.
    QString Label() const;

    /// Writing to the project needs the permission and a reachable schema.
    bool IsOptionEnabled(int option) const;
    int SelectedOption() const { return m_selected; }
    /// Picks an enabled option; a disabled one is ignored.
    void SelectOption(int option);

    /// OK: writing to the project and dropping the changes ask "Are you sure?" first (No is
    /// the default); false when the user said No and the dialog stays.
    bool Accept();
    /// Cancel: the result is SaveChangesCancelled.
    void Cancel() { m_status = SaveChangesCancelled; }

    /// The choice taken: 0 to 2 after OK, 3 after Cancel.
    int GetStatus() const { return m_status; }

private:
    bool m_projectEnabled;
    int m_selected;
    int m_status = SaveChangesCancelled;
};

/// The name a clash file of the open project is offered under: the clash file it came from,
/// or "<project>_clashes.fxdb".
QString DefaultClashFileName();

/// What the caller of the dialog does with its result: writes to the project, or asks
/// `askFile` for a clash file (offering DefaultClashFileName; an empty answer cancels) and
/// saves there; after either, the store counts as saved. Gives false when the caller's own
/// closing is to be cancelled (Cancel, or no file chosen).
bool ApplySaveChangesStatus(int status, const std::function<QString(const QString &offered)> &askFile);

} // namespace fx

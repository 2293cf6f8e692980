#pragma once
// Marking clashes of the working table `clashes` as real or false, taking the mark away, and
// giving them a description. Changes stay in `clashes` until the store saves them.

#include "pds/sqlitedb.h"

#include <QString>

#include <functional>

namespace fx {

/// What a status change does to a clash.
enum ClashAction : qint16 {
    ClashActionDescription = 0,
    ClashActionApproveReal = 1,
    ClashActionApproveFalse = 2,
    ClashActionUnapprove = 3,
};

/// What a status change does to the description of a clash.
enum DescriptionMode : qint16 {
    DescriptionModeLeave = 0,
    DescriptionModeOverwrite = 1,
    DescriptionModeOnlyEmpty = 2,
};

/// The most characters `review_comment` of the project holds.
inline constexpr int MaxReviewCommentLength = 100;

/// What a status change needs of the program around it; each may be left empty.
struct ClashStatusHooks
{
    /// Shows the description dialog for an action; false when the user cancelled.
    std::function<bool(qint16 action)> askDescription;
    /// Stops the change when the working database has grown too large.
    std::function<void()> checkDatabaseSize;
    /// Told once a change touched clashes, so that they are saved before they are lost.
    std::function<void()> clashesChanged;
};

/// The `action` column's text of an action 1 to 3, as "Approve Real Clash"; empty for 0.
QString ClashActionText(qint16 action);

/// The change from menus, toolbars and the approval filter on the clashes of `where` (a
/// condition on `clashes`): asks for the description when told to and the settings want it,
/// then changes the clashes by the description settings. `count` is the clashes changed and
/// stays as it was when the user cancels. With `complain`, raises when none changed.
void SetClashStatus(SqliteDb &db, const QString &where, qint16 action, qint64 &count, bool showDialog, bool complain,
                    const ClashStatusHooks &hooks = {});

/// The change itself. Only clashes not in the action's state already, and for mode 2 only
/// those without a description, are touched; each one touched gets the present date as its
/// review date. `count` is the clashes touched.
void SetClashStatusA(SqliteDb &db, const QString &where, const QString &description, qint16 action, qint16 mode,
                     qint64 &count, const ClashStatusHooks &hooks = {});

/// The hooks of the open project's store: its size check with the warning on, and its changed
/// flag; `askDescription` is the caller's dialog, if any.
ClashStatusHooks OpenStoreStatusHooks(std::function<bool(qint16 action)> askDescription = {});

/// SetClashStatus on the open project's store.
void SetClashStatus(const QString &where, qint16 action, qint64 &count, bool showDialog, bool complain,
                    std::function<bool(qint16 action)> askDescription = {});

/// SetClashStatusA on the open project's store.
void SetClashStatusA(const QString &where, const QString &description, qint16 action, qint16 mode, qint64 &count);

} // namespace fx

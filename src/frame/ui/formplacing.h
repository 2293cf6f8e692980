#pragma once
// A window's place on the screen, kept in Config.ini under the window's name between runs.

#include <QString>

class QWidget;

namespace fx {

/// Puts `form` where it was when it last closed (state, position and size), if that place
/// still lies on a screen.
void RestoreFormPlace(QWidget *form, const QString &formName);

/// Keeps the place of `form` for the next time.
void SaveFormPlace(const QWidget *form, const QString &formName);

/// Restores the place of `form` now and saves it each time the window is hidden (closed,
/// accepted or rejected). Failures of either are shown, never raised.
void KeepFormPlace(QWidget *form, const QString &formName);

} // namespace fx

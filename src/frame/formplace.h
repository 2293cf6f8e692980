#pragma once
// The place of a window, kept in its section of Config.ini between runs.

#include <QRect>
#include <QString>

#include <optional>

namespace fx {

/// A window's state and, in pixels, its normal position and size.
struct FormPlace
{
    enum State : qint32 { Normal = 0, Minimized = 1, Maximized = 2 };

    qint32 WindowState = Normal;
    qint32 Top = 0;
    qint32 Left = 0;
    qint32 Height = 0;
    qint32 Width = 0;
    /// On loading: whether Top, Left, Height and Width were stored and fit the screen.
    bool HasPosition = false;

    QRect Geometry() const { return QRect(Left, Top, Width, Height); }
};

/// Stores the place under the form's name. A maximised or minimised form stores only its
/// state, so that the normal place kept from before is what comes back.
void SaveFormSettings(const QString &form, const FormPlace &place);

/// The stored place; nothing when no state was stored. A position or size that does not lie
/// wholly within `screen` is not given (HasPosition false).
std::optional<FormPlace> LoadFormSettings(const QString &form, const QRect &screen);

} // namespace fx

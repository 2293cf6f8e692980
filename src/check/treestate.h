#pragma once
// How the project tree's stored state packs node keys into one .ini value: the keys joined by
// ";", each key's levels by "|", a level's name and value by ":", every other byte of a value
// that is not a letter, digit or one of "-._~" percent-encoded (UTF-8). So the value stays
// one readable line whatever the control characters of the keys, blanks at its ends included.

#include <QString>
#include <QStringList>

namespace fx {

/// The value that holds `keys`, in their order.
QString PackTreeKeys(const QStringList &keys);

/// The keys of a packed value, in their order; a part that is no key is left out.
QStringList UnpackTreeKeys(const QString &value);

} // namespace fx

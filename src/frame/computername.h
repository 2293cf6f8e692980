#pragma once
// The name of this computer, as other computers and the settings call it.

#include <QString>

namespace fx {

/// COMPUTERNAME when it is set, otherwise the host name.
QString GetComputerName();

/// A computer name without leading "\\" (or "//") and blanks.
QString BareComputerName(const QString &name);

/// True if the name (with or without leading "\\") is this computer: COMPUTERNAME or the host
/// name, full or up to its first dot, compared without regard to case.
bool IsThisComputer(const QString &name);

} // namespace fx

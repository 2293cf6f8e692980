#pragma once
// The external viewers this machine has: where MicroStation is installed, and whether either
// viewer can be driven here at all.

#include <QString>

namespace fx {

/// The executable of the first MicroStation 7 installation in the machine's registry
/// (Software\Bentley\MicroStation\<key>: PathName naming an existing file, Version "07.*");
/// empty when there is none. Never fails.
QString GetDefaultMSTNPath();

/// True when `exePath` names an executable file and the platform has MicroStation's automation
/// (Windows): MicroStation can show a clash from there.
bool CanRunMicroStation(const QString &exePath);

/// True when SmartPlant Review's automation is registered on this machine; never on a platform
/// without it.
bool CanRunSmartPlantReview();

} // namespace fx

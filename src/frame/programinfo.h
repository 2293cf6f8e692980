#pragma once
// Who the program is and where it stands: title, version, executable and its folder.

#include <QString>

namespace fx {

/// The application's title ("Fendrix"): the name of its folders under TEMP and the configuration
/// directory, and the source that counts as "no source" in a failure.
QString ApplicationTitle();

/// The program title of the start-up: "Norvane Fendrix " and the file version.
QString ProgramTitle();

/// The file version of the executable, as its build stamped it.
QString ProgramVersion();

/// Full path of the running executable.
QString ProgramFilePath();

/// The executable's name without folder and extension.
QString ExecutableName();
/// The main program's executable name, "fendrix", whichever front end runs: files kept per
/// project under the program's name (the permissions) are shared by all of them.
QString MainExecutableName();

/// The program's folder with a trailing separator: where Fendrix.ini, Language/ and tip.txt stand.
QString ProgramDir();

/// Points the program's folder elsewhere (tests, and tools that run beside a program folder).
void SetProgramDirOverride(const QString &dir);

} // namespace fx

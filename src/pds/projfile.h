#pragma once
// A PDS project list: the control file run with a probe yields PROJ_ADDR and PROJ_FILE, and the
// binary "proj_file" in that folder on that server names the projects.

#include <QByteArray>
#include <QList>
#include <QString>

namespace fx {

/// Where a control file puts the project list: the server and its folder there.
struct ProjFile
{
    QString PROJ_ADDR;
    QString PROJ_FILE;
};

/// One project of a proj_file.
struct ProjFileProject
{
    QString Name;        ///< unique without regard to case within a list
    QString Description; ///< the text at position 73
    QString Number;      ///< the text at position 22
};

/// The PDS shell's machine key: "Software\Intergraph\PD_SHELL\" and its first sub key, the
/// latter found once per process. Without any sub key the bare key path.
QString PdShellKey();

/// A value of the PDS shell's machine key; blank when the key or the value is missing.
QString PdShellValue(const QString &valueName);

/// The control file's text with the probe in front of every "__END__": the probe writes the
/// environment as section [ENV] of `resultFile`, whose backslashes are doubled for Perl.
QString ProbeScript(const QString &controlText, const QString &resultFile);

/// The PDS shell's interpreter: "share/pdsperl" below PathName of the PDS shell key; with
/// PathName blank "Bin/perl" in the program's folder or, missing that, perl on PATH.
QString PdsPerlPath();

/// Runs the control file with the probe and reads PROJ_ADDR and PROJ_FILE back. With
/// `setEnvironment` the process takes over the probe's environment, in place of an earlier one.
ProjFile GetProjFile(const QString &controlFile, bool setEnvironment);

/// The projects of a proj_file's bytes; `path` names the file in the failure.
QList<ProjFileProject> ParseProjFile(const QByteArray &bytes, const QString &path);

/// The projects of the proj_file that `projFile` points at, in file order.
QList<ProjFileProject> GetProjFileProjects(const ProjFile &projFile);

} // namespace fx

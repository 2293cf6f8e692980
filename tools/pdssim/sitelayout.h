#pragma once
// Where each piece of a simulated PDS site lies below the site's folder.

#include <QString>

namespace pdssim {

/// The folders and files of one site. Every path is absolute; folders end with a separator.
class SiteLayout
{
public:
    explicit SiteLayout(const QString &root);

    QString Root() const { return m_root; }
    /// The PDS control file, a Perl script that sets PROJ_ADDR and PROJ_FILE.
    QString ControlFile() const;
    /// The folder PROJ_FILE names, holding "proj_file".
    QString ProjFileDir() const;
    QString ProjFile() const;
    /// A project's folder: its seed file and model design files.
    QString ProjectDir(const QString &project) const;
    /// The RIS installation: PathName of the RIS key; the tools in BIN/.
    QString RisDir() const;
    QString RisBinDir() const;
    /// The databases behind the RIS stand-ins, one "<schema>.db" each.
    QString RisSchemaDir() const;
    /// The RIS schema file: one schema name a line.
    QString RisSchemaFile() const;
    /// The folder of the SQLite kind's "<schema>.db" files.
    QString SqliteSchemaDir() const;
    /// The PDS shell installation: PathName of the PD_SHELL key; "share/pdsperl" below it.
    QString PdShellDir() const;
    /// Registry.ini, the Fendrix.ini entries and the user config file that point Fendrix here.
    QString ConfigDir() const;
    /// The list of the hard cases a site was given, for tests to find them.
    QString ManifestFile() const;

private:
    QString m_root;
};

} // namespace pdssim

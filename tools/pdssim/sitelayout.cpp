#include "pdssim/sitelayout.h"

#include <QDir>
#include <QFileInfo>

namespace pdssim {

namespace {
QString Folder(const QString &path)
{
    return QDir::cleanPath(path) + QLatin1Char('/');
}
} // namespace

SiteLayout::SiteLayout(const QString &root)
    : m_root(Folder(QFileInfo(root).absoluteFilePath()))
{
}

QString SiteLayout::ControlFile() const { return m_root + QStringLiteral("pds.cmd"); }
QString SiteLayout::ProjFileDir() const { return Folder(m_root + QStringLiteral("proj")); }
QString SiteLayout::ProjFile() const { return ProjFileDir() + QStringLiteral("proj_file"); }
QString SiteLayout::ProjectDir(const QString &project) const { return Folder(m_root + QStringLiteral("projects/") + project); }
QString SiteLayout::RisDir() const { return Folder(m_root + QStringLiteral("ris")); }
QString SiteLayout::RisBinDir() const { return Folder(RisDir() + QStringLiteral("BIN")); }
QString SiteLayout::RisSchemaDir() const { return Folder(RisDir() + QStringLiteral("schemas")); }
QString SiteLayout::RisSchemaFile() const { return RisDir() + QStringLiteral("schemas.txt"); }
QString SiteLayout::SqliteSchemaDir() const { return Folder(m_root + QStringLiteral("sqlite")); }
QString SiteLayout::PdShellDir() const { return Folder(m_root + QStringLiteral("pdshell")); }
QString SiteLayout::ConfigDir() const { return Folder(m_root + QStringLiteral("config")); }
QString SiteLayout::ManifestFile() const { return m_root + QStringLiteral("manifest.ini"); }

} // namespace pdssim

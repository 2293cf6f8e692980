#include "pdssim/siteconfig.h"

#include "pdssim/schemagenerator.h"
#include "pdssim/sitemessages.h"

#include "pdssim/siteserver.h"
#include "pdssim/sitewrite.h"

#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/paths.h"
#include "pds/messages.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <vector>

namespace pdssim {

namespace {
const QString kRegistry = QStringLiteral("Registry.ini");
const QString kFendrixIni = QStringLiteral("Fendrix.ini");

// Writes the edits as a fresh file.
void WriteIni(const QString &path, const std::vector<fx::IniEdit> &edits)
{
    QDir().mkpath(fx::GetFolderOfPath(path));
    QFile::remove(path);
    if (!fx::IniFile::Write(path, edits))
        fx::Raise(pdssim::sitemsg::SimCannotWriteFile, {path});
}

std::vector<fx::IniEdit> RegistryEdits(const SiteLayout &layout)
{
    const QString pdShellKey = QStringLiteral("Software\\Intergraph\\PD_SHELL\\") + SitePdShellVersion();
    const QString shares = QStringLiteral("\\\\") + SiteServer()
                           + QStringLiteral("\\SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares");
    // The server shares the site's folder and, as every Windows server, its drives; only the
    // site's share has a mount point here.
    const QString share = QStringLiteral("multi_sz:CSCFlags=0|MaxUses=4294967295|Path=%1|Permissions=0|Remark=%2|Type=0");
    return {
        {QStringLiteral("Software\\Intergraph\\RIS\\") + SiteRisVersion(), QStringLiteral("PathName"), layout.RisDir()},
        {pdShellKey, QStringLiteral("PathName"), layout.PdShellDir()},
        {pdShellKey, QStringLiteral("ControlFile"), layout.ControlFile()},
        {shares, QStringLiteral("C$"), share.arg(QStringLiteral("C:\\"), QStringLiteral("Default share"))},
        {shares, QStringLiteral("D$"), share.arg(QStringLiteral("D:\\"), QStringLiteral("Default share"))},
        {shares, SiteShareName(), share.arg(SiteShareFolder(), QStringLiteral("PDS projects"))},
    };
}

std::vector<fx::IniEdit> FendrixIniEdits(const SiteLayout &layout)
{
    QString root = QDir::toNativeSeparators(layout.Root());
    root.chop(1);
    std::vector<fx::IniEdit> edits = {{QStringLiteral("NetworkMounts"), SiteShareUnc(), root}};
    for (const auto &[number, name] : ClashTypesDefinition())
        edits.push_back({QStringLiteral("ClashTypesDefinition"), QString::number(number), name});
    for (const auto &[number, name] : ModelStatusDefinition())
        edits.push_back({QStringLiteral("ModelStatusDefinition"), QString::number(number), name});
    return edits;
}

// The database section of a project for a kind of the site command.
std::vector<fx::IniEdit> DatabaseEdits(const SiteLayout &layout, const SiteConfigOptions &options)
{
    const QString section = options.project + QStringLiteral("Database");
    const auto entry = [&](const char *key, const QString &value) {
        return fx::IniEdit{section, QString::fromLatin1(key), value};
    };
    const QString kind = options.kind.trimmed();
    if (kind.compare(QLatin1String("sqlite"), Qt::CaseInsensitive) == 0)
        return {entry("Type", QStringLiteral("SQLite")), entry("Path", layout.SqliteSchemaDir())};
    if (kind.compare(QLatin1String("ris"), Qt::CaseInsensitive) == 0)
        return {entry("Type", QStringLiteral("RIS")), entry("Path", layout.RisBinDir())};
    const PostgresSite server = ParsePostgresKind(kind);
    return {entry("Type", QStringLiteral("PostgreSQL")), entry("Server", server.Server()),
            entry("Database", server.database), entry("User", server.user), entry("Password", server.password)};
}

// pdsperl: the PDS shell's interpreter is the machine's perl.
void WritePdsPerl(const SiteLayout &layout)
{
    WriteSiteFile(layout.PdShellDir() + QStringLiteral("share/pdsperl"), "#!/bin/sh\nexec perl \"$@\"\n", true);
}

void MergeIni(const QString &source, const QString &target)
{
    const auto doc = fx::IniFile::Snapshot(source);
    std::vector<fx::IniEdit> edits;
    for (const QString &section : doc->SectionNames())
        for (const QString &key : doc->KeyNames(section))
            edits.push_back({section, key, doc->Value(section, key)});
    if (!fx::IniFile::Write(target, edits))
        fx::Raise(pdssim::sitemsg::SimCannotWriteFile, {target});
}
} // namespace

QString PostgresSite::Server() const
{
    return port.isEmpty() ? host : host + QLatin1Char(':') + port;
}

PostgresSite ParsePostgresKind(const QString &kind)
{
    if (!kind.trimmed().startsWith(QLatin1String("postgres="), Qt::CaseInsensitive))
        fx::Raise(pdssim::sitemsg::SimUnknownDatabaseKind, {kind});
    PostgresSite site;
    static const QRegularExpression separators(QStringLiteral("[;\\s]+"));
    for (const QString &pair : kind.trimmed().mid(9).split(separators, Qt::SkipEmptyParts)) {
        const QString key = pair.section(QLatin1Char('='), 0, 0).trimmed().toLower();
        const QString value = pair.section(QLatin1Char('='), 1);
        if (key == QLatin1String("host") || key == QLatin1String("server"))
            site.host = value;
        else if (key == QLatin1String("port"))
            site.port = value;
        else if (key == QLatin1String("dbname") || key == QLatin1String("database"))
            site.database = value;
        else if (key == QLatin1String("user") || key == QLatin1String("uid"))
            site.user = value;
        else if (key == QLatin1String("password") || key == QLatin1String("pwd"))
            site.password = value;
    }
    if (site.host.isEmpty() || site.database.isEmpty())
        fx::Raise(pdssim::sitemsg::SimConnectionIncomplete, {kind});
    return site;
}

QString SiteRisVersion() { return QStringLiteral("05.04"); }
QString SitePdShellVersion() { return QStringLiteral("08.00"); }

QString SiteUserConfigFile(const SiteLayout &layout, const QString &project)
{
    return layout.ConfigDir() + project + QStringLiteral(".ini");
}

void WriteSiteConfig(const SiteLayout &layout, const SiteConfigOptions &options)
{
    fx::Frame("WriteSiteConfig", [&] {
        WriteIni(layout.ConfigDir() + kRegistry, RegistryEdits(layout));
        WriteIni(layout.ConfigDir() + kFendrixIni, FendrixIniEdits(layout));
        WriteIni(SiteUserConfigFile(layout, options.project), DatabaseEdits(layout, options));
        WritePdsPerl(layout);
    });
}

void InstallSiteConfig(const SiteLayout &layout, const QString &programDir)
{
    fx::Frame("InstallSiteConfig", [&] {
        const QString folder = fx::AddBackslash(programDir);
        MergeIni(layout.ConfigDir() + kRegistry, folder + kRegistry);
        MergeIni(layout.ConfigDir() + kFendrixIni, folder + kFendrixIni);
    });
}

} // namespace pdssim

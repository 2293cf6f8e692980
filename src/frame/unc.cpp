#include "frame/unc.h"

#include "frame/computername.h"
#include "frame/failure.h"
#include "frame/inidocument.h"
#include "frame/inifile.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/registry.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <mutex>
#include <vector>

namespace fx {

namespace {
struct Share
{
    QString name;
    QString folder;
};

bool IsSeparator(QChar c)
{
    return c == QLatin1Char('\\') || c == QLatin1Char('/');
}

// "?:\*": a drive letter, a colon and a separator.
bool IsDrivePath(const QString &path)
{
    return path.size() >= 3 && path.at(1) == QLatin1Char(':') && IsSeparator(path.at(2));
}

// Administrative shares ("C$") stand behind every other share that fits.
bool IsAdministrative(const QString &share)
{
    return share.size() == 2 && share.at(1) == QLatin1Char('$');
}

// The server's shares from its registry, kept for the process under "k_" + server. A server
// whose registry cannot be read has no shares, and is asked again next time.
std::vector<Share> SharesOf(const QString &server)
{
    static std::mutex mutex;
    static QHash<QString, std::vector<Share>> cache;
    const QString key = QStringLiteral("k_") + IniDocument::Fold(server);
    {
        std::lock_guard lock(mutex);
        const auto it = cache.constFind(key);
        if (it != cache.cend())
            return *it;
    }
    static const QString sharesKey = QStringLiteral("SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares");
    std::vector<Share> shares;
    try {
        for (const QString &name : RegGetValues(RegRoot::LocalMachine, sharesKey, server)) {
            const RegValue value = RegGetValue(RegRoot::LocalMachine, sharesKey, name, server);
            const QStringList lines = value.type == RegValue::Type::MultiString ? value.lines : QStringList{value.text};
            for (const QString &line : lines)
                if (line.startsWith(QLatin1String("Path="), Qt::CaseInsensitive))
                    shares.push_back({name, line.mid(5).trimmed()});
        }
    } catch (const Failure &) {
        return {};
    }
    std::lock_guard lock(mutex);
    cache.insert(key, shares);
    return shares;
}

// What follows the folder in the path, when the folder is a prefix ending at a separator.
std::optional<QString> RestBelow(const QString &path, QString folder)
{
    while (!folder.isEmpty() && IsSeparator(folder.back()))
        folder.chop(1);
    if (folder.isEmpty() || !path.startsWith(folder, Qt::CaseInsensitive))
        return std::nullopt;
    if (path.size() > folder.size() && !IsSeparator(path.at(folder.size())))
        return std::nullopt;
    return path.mid(folder.size());
}

// "\\server\share\rest" at the mount point Fendrix.ini gives for "\\server\share"; any other
// path, or one without a mount point, as it is.
QString MountedPath(const QString &path)
{
    if (path.size() < 3 || !IsSeparator(path.at(0)) || !IsSeparator(path.at(1)))
        return path;
    const QString unc = NativePath(path).replace(QDir::separator(), QLatin1Char('\\'));
    const qsizetype shareStart = unc.indexOf(QLatin1Char('\\'), 2);
    if (shareStart < 0)
        return path;
    qsizetype restStart = unc.indexOf(QLatin1Char('\\'), shareStart + 1);
    if (restStart < 0)
        restStart = unc.size();
    const auto mount = IniFile::Value(ProgramDir() + QStringLiteral("Fendrix.ini"), QStringLiteral("NetworkMounts"),
                                      unc.left(restStart));
    if (!mount || mount->isEmpty())
        return path;
    QString local = NativePath(*mount);
    while (local.size() > 1 && local.endsWith(QDir::separator()))
        local.chop(1);
    return local + NativePath(unc.mid(restStart));
}
} // namespace

QString LocalPath2UNC(const QString &server, const QString &path)
{
    return Frame("LocalPath2UNC", [&] {
        if (server.trimmed().isEmpty())
            Raise(msg::ServerNameNotDefined);
        if (path.trimmed().isEmpty())
            Raise(msg::PathNameNotDefined);
        const QString name = BareComputerName(server);
        const QString local = path.trimmed();
        QString result;
        if (!IsDrivePath(local)) {
            result = MountedPath(local);
        } else if (IsThisComputer(name) && QFileInfo::exists(local)) {
            result = local;
        } else {
            const std::vector<Share> shares = SharesOf(name);
            for (const bool administrative : {false, true}) {
                for (const Share &share : shares) {
                    if (IsAdministrative(share.name) != administrative)
                        continue;
                    if (const auto rest = RestBelow(local, share.folder)) {
                        result = MountedPath(QStringLiteral("\\\\") + name + QLatin1Char('\\') + share.name + *rest);
                        break;
                    }
                }
                if (!result.isEmpty())
                    break;
            }
        }
        if (result.isEmpty() || !QFileInfo::exists(result))
            Raise(msg::DirectoryOnServerNotAccessible, {path, name});
        return result;
    });
}

} // namespace fx

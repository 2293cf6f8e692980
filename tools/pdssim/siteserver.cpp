#include "pdssim/siteserver.h"
#include "pdssim/sitemessages.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QDir>

namespace pdssim {

QString SiteServer() { return QStringLiteral("pdssrv"); }
QString SiteShareName() { return QStringLiteral("pds"); }
QString SiteShareFolder() { return QStringLiteral("D:\\PDS"); }
QString SiteShareUnc() { return QStringLiteral("\\\\") + SiteServer() + QLatin1Char('\\') + SiteShareName(); }

QString ServerPath(const SiteLayout &layout, const QString &localPath)
{
    return fx::Frame("ServerPath", [&] {
        const QString clean = QDir::fromNativeSeparators(localPath);
        if (!clean.startsWith(layout.Root()))
            fx::Raise(pdssim::sitemsg::SimPathOutsideSite, {localPath, layout.Root()});
        QString rest = clean.mid(layout.Root().size());
        rest.replace(QLatin1Char('/'), QLatin1Char('\\'));
        return SiteShareFolder() + QLatin1Char('\\') + rest;
    });
}

QString LocalPathOf(const SiteLayout &layout, const QString &serverPath)
{
    return fx::Frame("LocalPathOf", [&] {
        const QString prefix = SiteShareFolder() + QLatin1Char('\\');
        QString path = serverPath.trimmed();
        path.replace(QLatin1Char('/'), QLatin1Char('\\'));
        if (!path.startsWith(prefix, Qt::CaseInsensitive))
            fx::Raise(pdssim::sitemsg::SimPathOutsideSite, {serverPath, prefix});
        return layout.Root() + path.mid(prefix.size()).replace(QLatin1Char('\\'), QLatin1Char('/'));
    });
}

} // namespace pdssim

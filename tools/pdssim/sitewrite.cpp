#include "pdssim/sitewrite.h"
#include "pdssim/sitemessages.h"

#include "frame/failure.h"
#include "frame/inifile.h"
#include "pds/messages.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace pdssim {

void WriteSiteFile(const QString &path, const QByteArray &bytes, bool executable)
{
    fx::Frame("WriteSiteFile", [&] {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            fx::Raise(pdssim::sitemsg::SimCannotWriteFile, {path});
        if (executable) {
            const auto exec = QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther;
            QFile::setPermissions(path, QFile::permissions(path) | exec);
        }
    });
}

void NoteEdgeCase(const SiteLayout &layout, const QString &key, const QString &value)
{
    fx::Frame("NoteEdgeCase", [&] {
        QDir().mkpath(layout.Root());
        if (!fx::IniFile::Write(layout.ManifestFile(), QStringLiteral("SiteFiles"), key, value))
            fx::Raise(pdssim::sitemsg::SimCannotWriteFile, {layout.ManifestFile()});
    });
}

} // namespace pdssim

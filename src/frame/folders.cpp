#include "frame/folders.h"

#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace fx {

void CreateFolderA(const QString &folder)
{
    Frame("CreateFolderA", [&] {
        if (folder.trimmed().isEmpty())
            Raise(msg::DirectoryNameNotDefined);
        const QString path = NativePath(folder.trimmed());
        if (QFileInfo(path).isDir())
            Raise(msg::DirectoryExistsAlready, {path});
        QDir().mkpath(path);
        if (!QFileInfo(path).isDir())
            Raise(msg::CreatingDirectoryFailed, {path});
    });
}

bool IsFolderWritable(const QString &folder)
{
    return Frame("IsFolderWritable", [&] {
        const QString dir = AddBackslash(folder);
        if (dir.isEmpty() || !QFileInfo(dir).isDir())
            Raise(msg::DirectoryNotExists, {folder});
        // The test writes as the settings do, so it fails where a settings write would.
        const QString probe = dir + QStringLiteral("rad%1.tmp").arg(QRandomGenerator::global()->generate(), 8, 16,
                                                                     QLatin1Char('0'));
        SetIniValue(probe, ApplicationTitle(), QStringLiteral("WritePermissionTest"), QStringLiteral("1"));
        if (!QFileInfo::exists(probe))
            Raise(msg::DirectoryWriteDenied, {folder});
        QFile::remove(probe);
        return true;
    });
}

} // namespace fx

#include "frame/folders.h"

#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/paths.h"

#include <QDir>
#include <QFileInfo>

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

} // namespace fx

#include "frame/tempdir.h"

#include "frame/fileops.h"
#include "frame/paths.h"
#include "frame/failure.h"
#include "frame/folders.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

namespace fx {

QString GetTempEnvDir()
{
    for (const char *name : {"TEMP", "TMPDIR"}) {
        const QString value = qEnvironmentVariable(name).trimmed();
        if (!value.isEmpty())
            return AddBackslash(value);
    }
    return AddBackslash(QStringLiteral("/tmp"));
}

QString GetTempFolder()
{
    const QString kept = Process().TempDir;
    if (!kept.isEmpty() && IsFileExists(kept, true))
        return AddBackslash(kept);
    return GetTempEnvDir();
}

QString CreateTempDir()
{
    return Frame("CreateTempDir", [] {
        const QString base = GetTempFolder();
        for (;;) {
            const QString folder = base + ApplicationTitle() + QLatin1Char('_') +
                                   QString::number(QCoreApplication::applicationPid()) + QLatin1Char('_') +
                                   QString::number(QRandomGenerator::global()->bounded(1000000));
            if (!QFileInfo::exists(folder)) {
                CreateFolderA(folder);
                return AddBackslash(folder);
            }
        }
    });
}

void RemoveTempDir(const QString &folder)
{
    if (folder.trimmed().isEmpty())
        return;
    const QString clean = QDir::cleanPath(folder);
    if (clean == QDir::cleanPath(GetTempFolder()) || clean == QDir::cleanPath(GetTempEnvDir()))
        return;
    QDir(clean).removeRecursively();
}

} // namespace fx

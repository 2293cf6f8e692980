#include "frame/programinfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace fx {

namespace {
QString &ProgramDirOverride()
{
    static QString dir;
    return dir;
}
} // namespace

QString ApplicationTitle()
{
    return QStringLiteral("Fendrix");
}

QString ProgramVersion()
{
    return QStringLiteral(FENDRIX_VERSION);
}

QString ProgramTitle()
{
    return QStringLiteral("Norvane Fendrix ") + ProgramVersion();
}

QString ProgramFilePath()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationFilePath();
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
}

QString ExecutableName()
{
    return QFileInfo(ProgramFilePath()).completeBaseName();
}

QString MainExecutableName()
{
    return QStringLiteral("fendrix");
}

QString ProgramDir()
{
    QString dir = ProgramDirOverride();
    if (dir.isEmpty())
        dir = QFileInfo(ProgramFilePath()).absolutePath();
    dir = QDir::toNativeSeparators(dir);
    if (!dir.endsWith(QDir::separator()))
        dir += QDir::separator();
    return dir;
}

void SetProgramDirOverride(const QString &dir)
{
    ProgramDirOverride() = dir;
}

} // namespace fx

#include "frame/log.h"

#include "frame/datetimetext.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/tempdir.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace fx {

namespace {
QString &LogPath()
{
    static QString path;
    return path;
}

QString DefaultLogName()
{
    return ExecutableName() + QStringLiteral("_PID") + QString::number(QCoreApplication::applicationPid());
}

// The name the first call at start-up gives; only such a log moves to a project's name later.
bool IsStartupLogName(const QString &path)
{
    const QString suffix = QLatin1Char('_') + DefaultLogName() + QStringLiteral(".log");
    return GetFileNameOfPath(path).endsWith(suffix, Qt::CaseInsensitive);
}

QString NewLogPath(const QString &logName)
{
    const QString temp = GetTempEnvDir();
    QString folder = AddBackslash(temp + ApplicationTitle());
    if (!QFileInfo(folder).isDir() && !QDir().mkpath(folder))
        folder = temp;
    const QString name = logName.trimmed().isEmpty() ? DefaultLogName() : logName;
    QString path = folder + QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_HHmmss_")) + name +
                   QStringLiteral(".log");
    const QString doubled = QString(2, QDir::separator());
    while (path.contains(doubled))
        path.replace(doubled, QString(QDir::separator()));
    return path;
}

bool AppendToLog(const QString &text)
{
    QFile file(LogPath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    file.write(text.toUtf8());
    return true;
}
} // namespace

QString TextLineEnd()
{
#ifdef Q_OS_WIN
    return QStringLiteral("\r\n");
#else
    return QStringLiteral("\n");
#endif
}

void InitLog(const QString &description, const QString &logName, const QString &logFile)
{
    const QString previous = IsStartupLogName(LogPath()) ? LogPath() : QString();

    const QString folderOfFile = GetFolderOfPath(logFile);
    const QString path = !folderOfFile.isEmpty() && QFileInfo(folderOfFile).isDir() ? NativePath(logFile)
                                                                                     : NewLogPath(logName);
    if (QFileInfo::exists(path)) {
        QFile::remove(path + QStringLiteral(".bak"));
        QFile::copy(path, path + QStringLiteral(".bak"));
    }
    LogPath() = path;

    if (!previous.isEmpty() && QFileInfo(previous).isFile() && previous != path) {
        // The running log goes on under its new name, without a second header.
        QFile::remove(path);
        if (QFile::rename(previous, path) || QFile::copy(previous, path))
            return;
    }

    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write((LogHeader(description).join(TextLineEnd()) + TextLineEnd()).toUtf8());
}

QString GetLogFile()
{
    return LogPath();
}

void WriteLogLine(const QString &text)
{
    if (LogPath().trimmed().isEmpty() || text.trimmed().isEmpty())
        return;
    AppendToLog(LogStamp(QDateTime::currentDateTime()) + QStringLiteral("  ") + text + TextLineEnd());
}

void AppendFileToLog(const QString &path)
{
    if (LogPath().trimmed().isEmpty() || !QFileInfo(path).isFile())
        return;
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly))
        return;
    const QString content = QString::fromUtf8(source.readAll());
    static const QRegularExpression lineBreak(QStringLiteral("\r?\n"));
    QStringList lines = content.split(lineBreak);
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    const QString eol = TextLineEnd();
    AppendToLog(eol + Banner(QStringLiteral("Begin of '") + path + QStringLiteral("' file")) + eol +
                lines.join(eol) + eol + Banner(QStringLiteral("End of '") + path + QStringLiteral("' file")) + eol +
                eol);
}

} // namespace fx

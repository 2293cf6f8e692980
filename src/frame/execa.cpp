#include "frame/execa.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/tempdir.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <cerrno>
#include <signal.h>

namespace fx {

namespace {

QString RandomScriptPath(const QString &folder)
{
    QString path;
    do {
        path = folder + QStringLiteral("fx%1.sh").arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
    } while (QFile::exists(path));
    return path;
}

void WriteScript(const QString &path, const QString &line)
{
    QFile script(path);
    if (!script.open(QIODevice::WriteOnly | QIODevice::Truncate))
        Raise(msg::ErrorCode, {script.errorString()});
    const QByteArray text = line.toLocal8Bit() + '\n';
    if (script.write(text) != text.size())
        Raise(msg::ErrorCode, {script.errorString()});
}

// Removes the script on every way out of ExecA.
class ScriptFile
{
public:
    explicit ScriptFile(QString path) : m_path(std::move(path)) {}
    ScriptFile(const ScriptFile &) = delete;
    ScriptFile &operator=(const ScriptFile &) = delete;
    ~ScriptFile() { QFile::remove(m_path); }
    const QString &Path() const { return m_path; }

private:
    QString m_path;
};

} // namespace

QString ShellQuote(const QString &text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

bool IsProcessRunning(qint64 pid)
{
    if (pid <= 0)
        return false;
    if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno != EPERM)
        return false;
#ifdef __linux__
    // State is the first field after the command name in parentheses, which may itself hold ")".
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (stat.open(QIODevice::ReadOnly)) {
        const QByteArray text = stat.readAll();
        const qsizetype close = text.lastIndexOf(')');
        if (close >= 0 && close + 2 < text.size() && (text.at(close + 2) == 'Z' || text.at(close + 2) == 'X'))
            return false;
    }
#endif
    return true;
}

void ExecA(const QString &commandLine, const QString &outputFile, int windowStyle, qint64 *pid, bool wait)
{
    Q_UNUSED(windowStyle);
    Frame("ExecA", [&] {
        const ScriptFile script(RandomScriptPath(GetTempFolder()));
        QString line = commandLine;
        if (!outputFile.isEmpty())
            line += QStringLiteral(" >> ") + ShellQuote(NativePath(outputFile)) + QStringLiteral(" 2>&1");
        WriteScript(script.Path(), line);

        // The shell reads the script from its standard input, a descriptor opened before the start
        // returns: the script's name may go at once, and a running tool holds nothing of ours.
        QProcess process;
        process.setProgram(QStringLiteral("/bin/sh"));
        process.setArguments({QStringLiteral("-s")});
        process.setStandardInputFile(script.Path());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        qint64 started = 0;
        if (!process.startDetached(&started))
            Raise(msg::ErrorCode, {process.errorString()});
        if (pid)
            *pid = started;

        while (wait && IsProcessRunning(started)) {
            DoEvents();
            QThread::msleep(50);
        }
    });
}

} // namespace fx

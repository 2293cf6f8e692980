#include "frame/startup.h"

#include "frame/configkeys.h"
#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/log.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/processend.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "frame/tempdir.h"
#include "frame/translation.h"
#include "frame/usage.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace fx {

namespace {
// The log starts in TEMP; without a usable TEMP it falls back so the failure is still written.
void CheckTemp(const QString &title)
{
    LogMessage(QString::fromLatin1(msg::CheckingTemp));
    const QString temp = GetTempEnvDir();
    if (!temp.isEmpty() && QFileInfo(temp).isDir()) {
        InitLog(title, QString(), QString());
        Process().TempDir = temp;
        Process().WorkDir = temp;
        return;
    }
    InitLog(title, QString(), FallbackLogFile());
    if (temp.isEmpty())
        Raise(msg::TempNotDefined);
    const QString named = qEnvironmentVariable("TEMP").trimmed();
    Raise(msg::TempNotExisting, {named.isEmpty() ? qEnvironmentVariable("TMPDIR") : named});
}

void CheckMainConfig()
{
    const QString file = ProgramDir() + QStringLiteral("Fendrix.ini");
    LogMessage(msg::CheckingMainConfig, {file});
    if (!QFileInfo(file).isFile())
        Raise(msg::MainConfigMissing, {ProgramDir()});
}

// A writable existing Config.ini in a read-only folder passes, deliberately: the file is all
// the program writes there.
void CheckUserConfig()
{
    const QString file = GetConfigFile();
    LogMessage(msg::CheckingUserConfig, {file});
    const QString folder = GetFolderOfPath(file);
    if (!QFileInfo::exists(file)) {
        bool writable = false;
        try {
            writable = IsFolderWritable(folder);
        } catch (const Failure &) {
            writable = false;
        }
        if (!writable)
            Raise(msg::DirectoryWriteDenied, {folder});
    } else if (IsFileReadOnly(file)) {
        Raise(msg::FileWriteDenied, {file});
    }
}

ExecutionModeKind SettleExecutionMode(const CommandLineArgs &args)
{
    const QString mode = args.mode.isEmpty() ? QStringLiteral("APPROVE") : args.mode;
    const QString upper = mode.toUpper();
    ExecutionModeKind kind = ExecutionModeKind::Unknown;
    if (upper == QLatin1String("APPROVE"))
        kind = ExecutionModeKind::Approve;
    else if (upper == QLatin1String("CHECK"))
        kind = ExecutionModeKind::Check;
    else
        Raise(msg::UnknownExecutionMode, {mode});
    LogMessage(msg::ExecutionModeLogged, {upper});
    if (Process().BatchMode && kind != ExecutionModeKind::Check)
        Raise(msg::BatchModeNotAvailable, {upper});
    return kind;
}

void StoreArguments(const CommandLineArgs &args)
{
    ProcessState &process = Process();
    QString controlFile = args.controlFile;
    if (!args.project.isEmpty() && controlFile.isEmpty())
        controlFile = ConfigControlFile();
    if (!args.configFile.isEmpty() && !QFileInfo::exists(args.configFile))
        Raise(msg::UserConfigNotExists, {args.configFile});
    if (!controlFile.isEmpty()) {
        LogMessage(msg::ControlFileLogged, {controlFile});
        process.CmdControlFile = controlFile;
    }
    if (!args.project.isEmpty()) {
        LogMessage(msg::ProjectLogged, {args.project});
        process.CmdProject = args.project;
    }
    if (!args.configFile.isEmpty()) {
        LogMessage(msg::UserConfigLogged, {args.configFile});
        if (process.BatchMode)
            process.CmdConfigFile = args.configFile;
        else // stays the user's config file of this mode for later runs
            SetConfigUserConfigFile(process.ExecutionMode, args.configFile);
    }
    if (!args.listFile.isEmpty()) {
        LogMessage(msg::ListFileLogged, {args.listFile});
        process.CmdListFile = args.listFile;
    }
}
} // namespace

QString FallbackLogFile()
{
    // Not QDir::tempPath(): TEMP or TMPDIR may be what is wrong, and the fallback must not
    // follow them into a missing folder or the root.
#ifdef Q_OS_WIN
    return QStringLiteral("C:\\Fendrix.log");
#else
    return QStringLiteral("/tmp/Fendrix.log");
#endif
}

QString LogLocationText()
{
    const QString log = GetLogFile();
    if (QFileInfo(log).isFile())
        return ArgForm(msg::LogFileLocation, {log});
    return ArgForm(msg::LogFileNotWritten, {log});
}

void RunStartupChecks()
{
    CheckTemp(ProgramTitle());
    CheckMainConfig();
    CheckUserConfig();
    DoEvents();
    InitLanguage();
}

StartOutcome Main(const CommandLineArgs &args, IStartupSplash *splash)
{
    std::optional<BusyScope> busy(std::in_place);
    ProcessState &process = Process();
    process.BatchMode = args.batch;
    process.ExecutionMode = ExecutionModeKind::Unknown;
    process.CmdProject.clear();
    process.CmdControlFile.clear();
    process.CmdConfigFile.clear();
    if (splash && !process.BatchMode)
        splash->Show();
    DoEvents();
    const QString title = ProgramTitle();

    try {
        RunStartupChecks();
        LogMessage(msg::CommandLineArguments, {args.commandLine});
        if (args.usageWanted) {
            if (splash)
                splash->ForceUnload();
            ShowUsage(title, args.commandLine, args.incorrect);
            RaiseExit();
        }
        process.ExecutionMode = SettleExecutionMode(args);
        StoreArguments(args);
        busy.reset();
        return StartOutcome::Proceed;
    } catch (const Failure &failure) {
        busy.reset();
        if (splash)
            splash->ForceUnload();
        if (failure.Number() == 2)
            return StartOutcome::Usage;
        ShowMessage(failure, MbIconCritical);
        ShowMessage(LogLocationText(), MbIconExclamation);
        return StartOutcome::Failed;
    }
}

} // namespace fx

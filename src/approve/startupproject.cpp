#include "approve/startupproject.h"

#include "approve/messages.h"
#include "approve/recentprojects.h"
#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "store/clashstore.h"

#include <QFileInfo>

namespace fx {

StartupProject ChooseStartupProject()
{
    return Frame("ChooseStartupProject", [] {
        StartupProject chosen;
        const ProcessState &process = Process();
        chosen.fromCommandLine = !process.CmdProject.trimmed().isEmpty();
        if (chosen.fromCommandLine) {
            chosen.project = process.CmdProject.trimmed();
            chosen.controlFile = process.CmdControlFile.trimmed();
        } else {
            chosen.controlFile = ConfigControlFile().trimmed();
            chosen.project = ConfigProject(chosen.controlFile).trimmed();
        }
        if (chosen.project.isEmpty())
            return chosen;
        // A stored entry may still be a recent item's caption, "1 project (control file)".
        if (chosen.project.contains(QLatin1String(" (")) && chosen.project.endsWith(QLatin1Char(')')))
            ParseRecentProject(QString(chosen.project), chosen.project, chosen.controlFile);
        if (IsClashFileName(chosen.project))
            chosen.controlFile.clear();
        chosen.load = chosen.fromCommandLine || ConfigAutoLoad();
        return chosen;
    });
}

QStringList SettleUserConfigFile()
{
    return Frame("SettleUserConfigFile", [] {
        const QString named = ConfigUserConfigFile(ExecutionModeKind::Approve);
        try {
            SetUserConfigFile(named);
        } catch (const Failure &failure) {
            LogMessage(failure.Description());
            SetConfigUserConfigFile(ExecutionModeKind::Approve, QString());
            SetUserConfigFile(QString());
        }

        const QString file = GetUserConfigFile();
        const QString folder = GetFolderOfPath(file);
        const QString cannotSave = QStringLiteral("\n") + QString::fromUtf8(msg::ProgramSettingsCannotBeSaved);
        QStringList warnings;
        bool folderWritable = false;
        try {
            folderWritable = IsFolderWritable(folder);
        } catch (const Failure &) {
            folderWritable = false;
        }
        if (!folderWritable)
            warnings << ArgForm(msg::DirectoryWriteDeniedWarning, {folder, cannotSave});
        if (QFileInfo::exists(file) && IsFileReadOnly(file))
            warnings << ArgForm(msg::FileWriteDeniedWarning, {file, cannotSave});
        return warnings;
    });
}

} // namespace fx

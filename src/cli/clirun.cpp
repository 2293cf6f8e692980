#include "cli/clirun.h"

#include "cli/cliarguments.h"
#include "cli/messages.h"
#include "frame/failure.h"
#include "frame/log.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "frame/startup.h"
#include "store/clashexport.h"
#include "store/clashfile.h"
#include "store/clashstatus.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"
#include "store/savetoproject.h"
#include "store/statusline.h"
#include "store/storecommands.h"

namespace fx::cli {

namespace {

void Print(std::FILE *out, const QString &text)
{
    std::fputs((text + QLatin1Char('\n')).toLocal8Bit().constData(), out);
    std::fflush(out);
}

// The three status commands of the window's menu, without its dialog: the descriptions of
// the settings apply.
void ChangeStatus(qint16 action, const QString &where)
{
    RequireStoreCommand(StoreCommand::ChangeStatus);
    qint64 count = 0;
    SetClashStatus(where, action, count, false, false);
}

void Describe(const QString &description, const QString &where)
{
    RequireStoreCommand(StoreCommand::SetDescription);
    qint64 count = 0;
    SetClashStatusA(where, description, ClashActionDescription, DescriptionModeOverwrite, count);
    if (count != 0)
        SetClashesChanged(true);
}

void RunStep(const Step &step, std::FILE *out, bool &nothingSaved)
{
    switch (step.kind) {
    case StepKind::Counts:
        Print(out, ClashCountsCaption());
        break;
    case StepKind::Filter:
        ClashRecordset().Filter = step.values.at(0).trimmed();
        break;
    case StepKind::ApproveReal:
        ChangeStatus(ClashActionApproveReal, step.values.at(0));
        break;
    case StepKind::ApproveFalse:
        ChangeStatus(ClashActionApproveFalse, step.values.at(0));
        break;
    case StepKind::Unapprove:
        ChangeStatus(ClashActionUnapprove, step.values.at(0));
        break;
    case StepKind::Describe:
        Describe(step.values.at(0), step.values.at(1));
        break;
    case StepKind::ExportCsv:
        ExportClashesCsv(step.values.at(0));
        break;
    case StepKind::SaveFile:
        RequireStoreCommand(StoreCommand::Save);
        SaveClashes2File(step.values.at(0));
        SetClashesChanged(false);
        break;
    case StepKind::SaveProject:
        RequireStoreCommand(StoreCommand::SaveToProject);
        try {
            SaveClashes2PDS();
        } catch (const Failure &failure) {
            // Nothing to write back is told, and the steps go on: it is no failure of the script.
            if (failure.Number() != NoChangesFoundNumber)
                throw;
            ShowMessage(failure, MbIconInformation);
            nothingSaved = true;
        }
        SetClashesChanged(false);
        break;
    }
}

void Run(const Arguments &arguments, std::FILE *out, bool &nothingSaved)
{
    Frame("fendrix-cli", [&] {
        Process().ExecutionMode = ExecutionModeKind::Approve;
        RunStartupChecks();
        if (!arguments.configFile.isEmpty())
            SetUserConfigFile(arguments.configFile);
        if (arguments.clashFile.isEmpty())
            InitClashes(arguments.controlFile, arguments.project);
        else
            InitClashes(arguments.clashFile, arguments.project);
        GetClashes();
        for (const Step &step : arguments.steps)
            RunStep(step, out, nothingSaved);
        if (GetClashesChanged())
            ShowMessage(ArgForm(msg::CliChangesNotSaved, {GetProjectName()}), MbIconExclamation);
    });
}

} // namespace

int RunCli(const QStringList &args, std::FILE *out)
{
    int status = 0;
    try {
        const Arguments arguments = ParseArguments(args);
        if (arguments.help) {
            Print(out, UsageText());
            return 0;
        }
        bool nothingSaved = false;
        Run(arguments, out, nothingSaved);
        if (nothingSaved)
            status = 3;
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconCritical);
        status = 1;
    }
    FreeClashes();
    return status;
}

} // namespace fx::cli

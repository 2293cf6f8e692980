// The executable: picks the application object, runs the start-up and hands over to the
// main window of the execution mode.

#include "frame/commandline.h"
#include "frame/consolemessagebox.h"
#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/messages.h"
#include "frame/processend.h"
#include "frame/processstate.h"
#include "frame/startup.h"
#include "frame/ui/qtmessagebox.h"

#include <QApplication>

#include <memory>

namespace {
// A run needs windows unless it is a batch run or no window system is there to show them.
bool HasWindowSystem()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

QStringList ArgumentsOf(int argc, char **argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    return args;
}
} // namespace

int main(int argc, char **argv)
{
    const fx::CommandLineArgs args = fx::ParseArguments(ArgumentsOf(argc, argv));
    const bool windows = !args.batch && HasWindowSystem();

    std::unique_ptr<QCoreApplication> app;
    fx::QtMessageBoxUi qtBoxes;
    fx::ConsoleMessageBoxUi consoleBoxes;
    if (windows) {
        app = std::make_unique<QApplication>(argc, argv);
        fx::SetMessageBoxUi(&qtBoxes);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
        fx::SetMessageBoxUi(&consoleBoxes);
    }

    switch (fx::Main(args)) {
    case fx::StartOutcome::Usage:
        return 0;
    case fx::StartOutcome::Failed:
        return 1;
    case fx::StartOutcome::Proceed:
        break;
    }

    // The main windows of the two modules are not part of this build yet.
    const QString mode = fx::Process().ExecutionMode == fx::ExecutionModeKind::Check ? QStringLiteral("CHECK")
                                                                                     : QStringLiteral("APPROVE");
    fx::ShowMessage(fx::ArgForm(fx::msg::ModuleWindowMissing, {mode}), fx::MbIconExclamation);
    fx::EndProcess();
    return 1;
}

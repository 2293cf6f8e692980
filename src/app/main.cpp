// The executable: picks the application object, runs the start-up under the splash window and
// hands over to the main window of the execution mode.

#include "approve/messages.h"
#include "approve/ui/frmfendrix.h"
#include "approve/ui/frmsplash.h"
#include "frame/commandline.h"
#include "frame/consolemessagebox.h"
#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/messages.h"
#include "frame/processend.h"
#include "frame/processstate.h"
#include "frame/startup.h"
#include "frame/ui/frmend.h"
#include "frame/ui/qtmessagebox.h"

#include <QApplication>

#include <memory>
#include <optional>

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

// The exit code of a start that ends the process; nothing when the program goes on.
std::optional<int> StartExitCode(fx::StartOutcome outcome)
{
    switch (outcome) {
    case fx::StartOutcome::Usage:
        return 0;
    case fx::StartOutcome::Failed:
        return 1;
    case fx::StartOutcome::Proceed:
        break;
    }
    return std::nullopt;
}

// The module's window has no place in this program yet: said, and the process ends.
int ModuleWindowMissing(const QString &mode)
{
    fx::ShowMessage(fx::ArgForm(fx::msg::ModuleWindowMissing, {mode}), fx::MbIconExclamation);
    fx::EndProcess();
    return 1;
}

// The approval window until it unloads; then frmEnd takes the process down.
int RunApprovalModule(QApplication &app, fx::FrmSplash &splash)
{
    std::unique_ptr<fx::FrmFendrix> window;
    // frmEnd ends the process, after the last window has gone.
    app.setQuitOnLastWindowClosed(false);
    fx::FrmEnd end([&app] { app.quit(); });
    bool switchToCheck = false;
    splash.Start([&] {
        window = std::make_unique<fx::FrmFendrix>();
        QObject::connect(window.get(), &fx::FrmFendrix::Unloaded, &app, [&](bool toCheck) {
            switchToCheck = toCheck;
            if (toCheck)
                app.quit();
            else
                end.Touch();
        });
        window->show();
    });
    const int code = app.exec();
    window.reset();
    if (switchToCheck)
        return ModuleWindowMissing(QStringLiteral("CHECK"));
    return code;
}
} // namespace

int main(int argc, char **argv)
{
    const fx::CommandLineArgs args = fx::ParseArguments(ArgumentsOf(argc, argv));
    const bool windows = !args.batch && HasWindowSystem();

    if (!windows) {
        // Without windows only the start-up checks and the batch run of the check module can run.
        QCoreApplication app(argc, argv);
        fx::ConsoleMessageBoxUi consoleBoxes;
        fx::SetMessageBoxUi(&consoleBoxes);
        if (const auto code = StartExitCode(fx::Main(args)))
            return *code;
        if (fx::Process().ExecutionMode == fx::ExecutionModeKind::Check)
            return ModuleWindowMissing(QStringLiteral("CHECK"));
        fx::ShowMessage(QString::fromUtf8(fx::msg::ApprovalWindowNeedsDisplay), fx::MbIconExclamation);
        fx::EndProcess();
        return 1;
    }

    QApplication app(argc, argv);
    fx::QtMessageBoxUi qtBoxes;
    fx::SetMessageBoxUi(&qtBoxes);
    fx::FrmSplash splash(args.batch);
    if (const auto code = StartExitCode(fx::Main(args, &splash)))
        return *code;
    if (fx::Process().ExecutionMode == fx::ExecutionModeKind::Check) {
        splash.ForceUnload();
        return ModuleWindowMissing(QStringLiteral("CHECK"));
    }
    return RunApprovalModule(app, splash);
}

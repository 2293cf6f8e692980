// fendrix-cli: the clash store from scripts, without a window.

#include "cli/clirun.h"
#include "frame/consolemessagebox.h"
#include "frame/messagebox.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    // Questions go to standard error and take their default answer: a script can't answer.
    fx::ConsoleMessageBoxUi boxes;
    fx::SetMessageBoxUi(&boxes);
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    return fx::cli::RunCli(args);
}

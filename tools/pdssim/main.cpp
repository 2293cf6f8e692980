// pdssim: builds simulated PDS sites and stands in for the RIS tools over them.

#include "pdssim/commands.h"

#include "frame/failure.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

struct Command
{
    const char *name;
    int (*run)(const QStringList &);
};

// The RIS tools are reached through wrapper scripts in the site's RIS folder that name them here.
constexpr Command kCommands[] = {
    {"site", pdssim::RunSite},
    {"install", pdssim::RunInstall},
    {"risbatch", pdssim::RunRisBatch},
    {"risunlod", pdssim::RunRisUnload},
    {"rislod", pdssim::RunRisLoad},
    {"risclnsr", pdssim::RunRisClean},
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const QString name = args.isEmpty() ? QString() : args.takeFirst();
    for (const Command &command : kCommands) {
        if (name == QLatin1String(command.name)) {
            try {
                return command.run(args);
            } catch (const fx::Failure &failure) {
                std::fprintf(stderr, "pdssim %s: %s\n", command.name, failure.what());
                return 1;
            }
        }
    }
    std::fprintf(stderr, "usage: pdssim site DIR --project NAME --clashes N [--seed S] [--kind sqlite|ris|postgres=CONN] [--edge] [--lock-owner-width W] [--models M]\n"
                         "       pdssim install SITE_DIR PROGRAM_DIR\n"
                         "       pdssim risbatch|risunlod|rislod|risclnsr --site DIR ...\n");
    return 2;
}

#include "frame/usage.h"

#include <gtest/gtest.h>

using namespace fx;

TEST(Usage, lists_every_option_aligned_with_its_continuation_lines)
{
    const QStringList lines = RenderEchoScript(BuildUsageScript(QStringLiteral("Norvane Fendrix 1.0.0"), QStringLiteral("/?"), false, QStringLiteral("fendrix")));
    const QString rule(60, QLatin1Char('-'));
    const QString indent(27, QLatin1Char(' '));
    const QStringList expected{
        rule,
        QStringLiteral("           Norvane Fendrix 1.0.0"),
        rule,
        QString(),
        QString(),
        QStringLiteral("Command line arguments for fendrix:"),
        QString(),
        QStringLiteral("/Mode mode               - Execution modes:"),
        indent + QStringLiteral("APPROVE - Approval Module"),
        indent + QStringLiteral("CHECK - Envelope Builder and Interference Checker Module"),
        QString(),
        QStringLiteral("/CMD control_file.cmd    - Path to the control file."),
        indent + QStringLiteral("If control file is not defined, last"),
        indent + QStringLiteral("control file will be used."),
        QString(),
        QStringLiteral("/Project project_name    - PDS-Project name."),
        indent + QStringLiteral("If project name is not defined, last"),
        indent + QStringLiteral("project will be used."),
        QString(),
        QStringLiteral("/Config config_file.ini  - Config file."),
        indent + QStringLiteral("If not defined, last"),
        indent + QStringLiteral("config file will be used."),
        QString(),
        QStringLiteral("/Listfile list_file.txt  - Plain ASCII file with model names"),
        indent + QStringLiteral("(separated by line breaks)."),
        indent + QStringLiteral("Applicable only for envelope generation."),
        QString(),
        QStringLiteral("/batch                   - If defined Envelope Builder and"),
        indent + QStringLiteral("Interference Checker will be run in batch mode"),
        QString(),
        QStringLiteral("The same options in the long form, one argument each (for paths that hold \"/\"):"),
        QStringLiteral("  --mode mode  --cmd control_file.cmd  --project project_name"),
        QStringLiteral("  --config config_file.ini  --listfile list_file.txt  --batch  --help"),
        QString(),
        QStringLiteral("Example:"),
        QString(),
        QStringLiteral("fendrix /Mode CHECK /CMD control_file.cmd /Project project_name /Config config_file.ini /batch"),
        QStringLiteral("fendrix --mode CHECK --cmd /pds/control_file.cmd --project project_name --config /home/me/config_file.ini --batch"),
        QString(),
        QString(),
    };
    EXPECT_EQ(lines, expected) << qPrintable(lines.join(QLatin1Char('\n')));
}

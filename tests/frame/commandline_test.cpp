#include "frame/commandline.h"

#include <gtest/gtest.h>

using namespace fx;

struct SlashCase
{
    const char *line;
    const char *mode;
    const char *project;
    const char *config;
    bool usage;
    bool incorrect;
    bool batch;
};

// The case by its command line in ctest's list of tests, not by its bytes.
[[maybe_unused]] void PrintTo(const SlashCase &c, std::ostream *out)
{
    *out << '"' << c.line << '"';
}

class SlashCommandLine : public ::testing::TestWithParam<SlashCase>
{
};

TEST_P(SlashCommandLine, parses_as_existing_scripts_expect)
{
    const SlashCase &c = GetParam();
    const CommandLineArgs args = ParseSlashCommandLine(QString::fromUtf8(c.line));
    EXPECT_EQ(args.mode, QString::fromUtf8(c.mode));
    EXPECT_EQ(args.project, QString::fromUtf8(c.project));
    EXPECT_EQ(args.configFile, QString::fromUtf8(c.config));
    EXPECT_EQ(args.usageWanted, c.usage);
    if (c.usage) {
        EXPECT_EQ(args.incorrect, c.incorrect);
    }
    EXPECT_EQ(args.batch, c.batch);
}

INSTANTIATE_TEST_SUITE_P(
    Quirks, SlashCommandLine,
    ::testing::Values(SlashCase{"", "", "", "", false, false, false},
                      SlashCase{"foo", "", "", "", true, true, false},
                      SlashCase{"/?", "", "", "", true, false, false},
                      SlashCase{" /? ", "", "", "", true, false, false},
                      SlashCase{"/Mode check", "check", "", "", false, false, false},
                      SlashCase{"/Mode", "", "", "", false, false, false},
                      SlashCase{"/Modeless x", "less x", "", "", false, false, false},
                      SlashCase{"/Projectile x", "", "ile x", "", false, false, false},
                      SlashCase{"/Project \"My Proj\" /Mode \"CHECK\"", "\"CHECK\"", "My Proj", "", false, false, false},
                      SlashCase{"/Config c:/a/b.ini", "", "", "c:", true, true, false},
                      SlashCase{"/batch /Mode APPROVE", "APPROVE", "", "", false, false, true},
                      SlashCase{"/BATCHES", "", "", "", false, false, true},
                      SlashCase{"/Mode CHECK /x", "CHECK", "", "", true, true, false},
                      SlashCase{"prefix/Mode CHECK", "CHECK", "", "", true, true, false}),
    [](const testing::TestParamInfo<SlashCase> &info) { return "line_" + std::to_string(info.index); });

TEST(LongOptions, help_asks_for_usage_and_unknown_or_incomplete_options_are_incorrect)
{
    const CommandLineArgs help = ParseArguments({QStringLiteral("--help")});
    EXPECT_TRUE(help.usageWanted);
    EXPECT_FALSE(help.incorrect);
    for (const QStringList &bad : {QStringList{QStringLiteral("--verbose")}, QStringList{QStringLiteral("--mode")},
                                   QStringList{QStringLiteral("--batch"), QStringLiteral("/Mode"), QStringLiteral("CHECK")}}) {
        const CommandLineArgs args = ParseArguments(bad);
        EXPECT_TRUE(args.usageWanted) << qPrintable(bad.join(QLatin1Char(' ')));
        EXPECT_TRUE(args.incorrect);
    }
}

TEST(ParseArguments, both_forms_take_every_value_behind_its_keyword_and_join_into_one_line)
{
    // The long form carries POSIX paths whole, where a "/" would start a keyword of the slash form.
    const struct
    {
        CommandLineArgs args;
        const char *controlFile, *configFile, *listFile, *mode, *commandLine;
    } forms[] = {
        {ParseSlashCommandLine(QStringLiteral("/CMD \"d:\\pds\\proj.cmd\" /Project P1 /Config u.ini /Listfile models.txt /Mode CHECK /batch")),
         "d:\\pds\\proj.cmd", "u.ini", "models.txt", "CHECK", nullptr},
        {ParseArguments({QStringLiteral("--mode"), QStringLiteral("check"), QStringLiteral("--cmd"), QStringLiteral("/srv/pds/proj.cmd"),
                         QStringLiteral("--project"), QStringLiteral("P1"), QStringLiteral("--config"), QStringLiteral("/home/u/my config.ini"),
                         QStringLiteral("--listfile"), QStringLiteral("/tmp/list.txt"), QStringLiteral("--batch")}),
         "/srv/pds/proj.cmd", "/home/u/my config.ini", "/tmp/list.txt", "check",
         "--mode check --cmd /srv/pds/proj.cmd --project P1 --config \"/home/u/my config.ini\" --listfile /tmp/list.txt --batch"},
    };
    for (const auto &form : forms) {
        EXPECT_EQ(form.args.controlFile, QString::fromUtf8(form.controlFile));
        EXPECT_EQ(form.args.project, QStringLiteral("P1"));
        EXPECT_EQ(form.args.configFile, QString::fromUtf8(form.configFile));
        EXPECT_EQ(form.args.listFile, QString::fromUtf8(form.listFile));
        EXPECT_EQ(form.args.mode, QString::fromUtf8(form.mode));
        EXPECT_TRUE(form.args.batch);
        EXPECT_FALSE(form.args.usageWanted);
        if (form.commandLine) {
            EXPECT_EQ(form.args.commandLine, QString::fromUtf8(form.commandLine));
        }
    }

    // Plain arguments join into the slash form, a value with blanks in quotes.
    const CommandLineArgs slash = ParseArguments({QStringLiteral("/Project"), QStringLiteral("My Proj"), QStringLiteral("/Mode"), QStringLiteral("CHECK")});
    EXPECT_EQ(slash.commandLine, QStringLiteral("/Project \"My Proj\" /Mode CHECK"));
    EXPECT_EQ(slash.project, QStringLiteral("My Proj"));
    EXPECT_EQ(slash.mode, QStringLiteral("CHECK"));
}

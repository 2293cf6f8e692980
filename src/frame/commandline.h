#pragma once
// The command line: the "/" form of existing scripts, and POSIX long options.

#include <QString>
#include <QStringList>

#include <optional>

namespace fx {

/// What a command line asked for. Values are as given; a missing one is empty.
struct CommandLineArgs
{
    QString commandLine; ///< the raw line, as logged and as the usage text quotes it
    QString mode;        ///< trimmed, double quotes kept
    QString controlFile; ///< trimmed, double quotes removed
    QString project;
    QString configFile;
    QString listFile;
    bool batch = false;
    bool usageWanted = false; ///< show the usage text and end
    bool incorrect = false;   ///< the usage text says the arguments were wrong
};

/// Parses the "/" form: the line is split at every "/" (so a path holding one is torn apart,
/// deliberately, as scripts have always seen it) and each piece is matched by its beginning.
CommandLineArgs ParseSlashCommandLine(const QString &commandLine);

/// Parses long options: --mode, --cmd, --project, --config, --listfile (each followed by its
/// value as one argument), --batch, --help. Anything else asks for the usage text.
CommandLineArgs ParseLongOptions(const QStringList &args);

/// Parses the program's arguments (without the program name): long options when the first
/// argument starts with "--", else the "/" form of the arguments joined by blanks.
CommandLineArgs ParseArguments(const QStringList &args);

/// The arguments joined into one line, each holding a blank put in double quotes.
QString JoinArguments(const QStringList &args);

} // namespace fx

#pragma once
// The program's start: checks of the machine's set-up, the command line, the execution mode.

#include "frame/commandline.h"

#include <QString>

namespace fx {

/// The splash window as start-up sees it; the windows library provides it.
class IStartupSplash
{
public:
    virtual ~IStartupSplash() = default;
    /// Shown unless in batch mode.
    virtual void Show() = 0;
    /// Taken away at once (before the usage text or a failure box).
    virtual void ForceUnload() = 0;
};

/// Where the log goes when TEMP can't hold it: Fendrix.log in the system's root temporary folder,
/// whatever TMPDIR names.
QString FallbackLogFile();

/// The text that follows a failed start: the log's place, or that the log could not be written.
QString LogLocationText();

/// How the start ended.
enum class StartOutcome {
    Proceed, ///< the main window of Process().ExecutionMode follows
    Usage,   ///< the usage text was written; the process ends silently
    Failed,  ///< a failure was shown, with the log's location; the process ends
};

/// The checks every front end runs first: TEMP (where the log starts), Fendrix.ini, the user
/// config file's folder, then the language. Raises the first that fails.
void RunStartupChecks();

/// Runs the start-up checks and settles the process-wide values.
StartOutcome Main(const CommandLineArgs &args, IStartupSplash *splash = nullptr);

} // namespace fx

#pragma once
// The process-wide values that start-up settles and the rest of the program reads.

#include <QString>

namespace fx {

enum class ExecutionModeKind : qint32 { Unknown = -1, Approve = 0, Check = 1 };

/// Values set once by start-up (and WorkDir by the main window); read everywhere else.
struct ProcessState
{
    bool BatchMode = false;
    ExecutionModeKind ExecutionMode = ExecutionModeKind::Unknown;
    QString CmdControlFile;
    QString CmdProject;
    QString CmdConfigFile; ///< kept only in batch mode
    QString CmdListFile;
    QString TempDir;       ///< TEMP in normalised path form, with a trailing separator
    QString WorkDir;       ///< where working copies of a project's database are made
};

/// The one instance of the process.
ProcessState &Process();

} // namespace fx

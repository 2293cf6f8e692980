#pragma once
// The command line of fendrix-cli: which project to open and the steps to run on it, in the
// order given.

#include <QList>
#include <QString>
#include <QStringList>

namespace fx::cli {

/// One step of a run.
enum class StepKind {
    Counts,       ///< print the counts of the status line
    Filter,       ///< set the grid filter: a condition on `clashes`, empty for none
    ApproveReal,  ///< approve the clashes of a condition as real
    ApproveFalse, ///< approve them as false
    Unapprove,    ///< take their approval away
    Describe,     ///< set a description on the clashes of a condition
    ExportCsv,    ///< write the clashes in view to a CSV file
    SaveFile,     ///< save the store to a clash file
    SaveProject,  ///< write the changes back to the project
};

struct Step
{
    StepKind kind;
    /// The step's operands, as many as the step takes. A change's condition is never empty as
    /// given: ALL stands for every clash and is kept here as the empty condition.
    QStringList values;
};

struct Arguments
{
    QString configFile;  ///< another user config file; empty for the user's own
    QString controlFile; ///< with `project`; or
    QString project;
    QString clashFile;   ///< a clash file instead of a control file
    QList<Step> steps;
    bool help = false;
};

/// Parses the arguments (program name left out). Raises with the reason and the usage text
/// when they make no run.
Arguments ParseArguments(const QStringList &args);

/// The usage text.
QString UsageText();

} // namespace fx::cli

#pragma once
// Every text of fendrix-cli that reaches a user or the log, in argument form.

namespace fx::msg {

inline constexpr char CliUsage[] =
    "Usage: fendrix-cli [--config FILE] (--cmd CONTROLFILE --project PROJECT | --file CLASHFILE) [STEP ...]\n"
    "\n"
    "Opens a project from its control file, or a clash file, and runs the steps in the order given:\n"
    "  counts                     print the counts of the status line\n"
    "  filter CONDITION           show only the clashes of CONDITION (empty: all of them)\n"
    "  approve-real CONDITION     approve the clashes of CONDITION as real clashes\n"
    "  approve-false CONDITION    approve them as false clashes\n"
    "  unapprove CONDITION        take their approval away\n"
    "  describe TEXT CONDITION    give them the description TEXT\n"
    "  export-csv FILE            write the clashes shown to FILE, comma-separated\n"
    "  save-file FILE             save the clashes with all changes to the clash file FILE (.fxdb)\n"
    "  save-project               write the changes back to the project\n"
    "\n"
    "A CONDITION is a condition on the columns of the clash table, as clash_id < 100 or\n"
    "discipline_a = 'Piping'; ALL (in any case) changes every clash, and an empty CONDITION\n"
    "is refused. --config names another user config file. Changes not saved by\n"
    "save-file or save-project are lost at the end of the run. The exit status is 0 when every\n"
    "step succeeded, 3 when save-project found nothing to write back, and 1 after a failure,\n"
    "which is written to standard error and the log.";
inline constexpr char CliArgumentsRefused[] = "%0%\n\n%1%";
inline constexpr char CliOptionWithoutValue[] = "Option '%0%' needs a value";
inline constexpr char CliUnknownOption[] = "Unknown option '%0%'";
inline constexpr char CliUnknownStep[] = "Unknown step '%0%'";
inline constexpr char CliStepWithoutOperands[] = "Step '%0%' needs %1% value(s)";
inline constexpr char CliConditionEmpty[] = "Step '%0%' needs a condition: write ALL to change every clash";
inline constexpr char CliProjectNotNamed[] = "Name either a control file and a project, or a clash file";
inline constexpr char CliChangesNotSaved[] = "PDS-Project '%0%' was modified; the changes were not saved";

} // namespace fx::msg

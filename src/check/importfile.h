#pragma once
// ImportFile: a text file of model numbers (or patterns) ticks those models in
// the project tree; the check module's list file and a file dropped on the approval filter's
// tree both come this way.

#include <QString>
#include <QStringList>

namespace fx {

class ProjectTreeModel;

/// Unticks the whole tree, then ticks, for each line of `file`, every model whose model_no is
/// like the line (case ignored; "*" and "%" stand for any text), opening the tree down to it:
/// discipline, sub-project where the model's area belongs to one, area, model. Models are
/// looked up in pdtable_113 and pdtable_117 of the store if it holds them, else of the schema
/// "pd_" + GetProjectName(). Lines are trimmed; blank lines, a byte order mark and CR LF ends
/// are let go. Logs every step; gives the number of models ticked. Raises "File '<file>' is
/// empty" for a file without a line, and what reading the file or the tables raises.
int ImportFile(const QString &file, ProjectTreeModel &tree);

/// The lines of a list file as ImportFile takes them: decoded by its byte order mark, else as
/// UTF-8 when it is valid UTF-8, else as Windows-1252; each trimmed; blank lines left out.
QStringList ReadListFileLines(const QString &file);

/// Whether `text` is like `pattern` as a recordset filter's LIKE takes it: case ignored, "*"
/// and "%" for any text (none included), every other character itself. Blanks at the end of
/// `text` (a padded char column) do not count.
bool IsLikeModelNo(const QString &text, const QString &pattern);

} // namespace fx

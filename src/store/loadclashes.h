#pragma once
// Opening a project into the clash store: from its schema, or from an earlier clash file.

#include <QString>

namespace fx {

/// Opens a project: `file` is a control file and `project` its project, or a clash file
/// (".fxdb"), which names its project itself. Whatever was open goes first; on failure nothing
/// is left open, and the failure is logged.
void InitClashes(const QString &file, const QString &project);

/// Fills the working copy of the defined project and opens the shared connection: a copy of
/// the clash file, or the project tables imported under the project's markers and cleaned.
void LoadClashes();

} // namespace fx

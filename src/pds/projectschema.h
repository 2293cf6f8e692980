#pragma once
// Questions about a PDS project answered from its schema: where its folder and seed file are,
// its design settings and its clash discipline. The project row is read once per process.

#include "pds/dgnsettings.h"

#include <QString>

namespace fx {

class CRIS;

/// The schema of a project: "pd_" + number.
QString GetProjectSchema(const QString &project);

/// The network path of the project's folder, with a trailing separator.
QString GetProjectDirectory(CRIS &cris, const QString &project);
QString GetProjectDirectory(const QString &project);

/// The network path of the project's seed file.
QString GetProjectDGNFile(CRIS &cris, const QString &project);
QString GetProjectDGNFile(const QString &project);

/// The model seed file "mdlsdz.dgn" of a folder; raises when it is missing.
QString GetModelSeedFile(const QString &folder);

/// The settings of the project's model seed file, read from its design header.
DGNSettings GetModelDGNSettings(CRIS &cris, const QString &project);
DGNSettings GetModelDGNSettings(const QString &project);

/// The discipline whose areas are the interference areas (pdtable_102, type 451).
int GetClashDisciplineNo(CRIS &cris, const QString &project);
int GetClashDisciplineNo(const QString &project);

/// Forgets every project row read so far; the next question reads the schema again.
void ClearProjectCache();

/// Raises "Project number not defined" for a blank number, in the frame of the operation that
/// asks, as every operation on a project number does first.
void CheckProjectNumber(const QString &project);

} // namespace fx

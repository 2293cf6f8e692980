#pragma once
// The project folder of a simulated site: the project's seed file, the model seed file
// "mdlsdz.dgn", and a design file for each model at the place pdtable_113 gives it.

#include "pdssim/dgnfile.h"
#include "pdssim/sitelayout.h"

#include <QList>
#include <QString>

namespace pdssim {

/// One model as pdtable_113 names its file: path_name (a server folder below the site's
/// share) and model_file_spec; its elements' boxes, none for an empty model.
struct SiteModel
{
    QString modelNo;
    QString pathName;
    QString fileSpec;
    QList<DgnBox> boxes;
};

/// The model seed file's name in the project folder.
QString ModelSeedFileName();
/// The project seed file (rdb_file_spec of the project row of pdtable_102).
QString ProjectSeedFileName(const QString &project);
/// The server folder of a discipline's models below the project folder ("...\piping\models\").
QString ModelServerFolder(const SiteLayout &layout, const QString &project, const QString &discipline);
/// A model's file name as PDS makes it: the model number in lower case with ".dgn".
QString ModelFileSpec(const QString &modelNo);

/// Writes the project folder's seed file and model seed file with `settings`.
void WriteProjectFiles(const SiteLayout &layout, const QString &project, const DgnSettings &settings);

/// Writes each model's design file; the settings are those of the model seed file.
void WriteModelFiles(const SiteLayout &layout, const QList<SiteModel> &models, const DgnSettings &settings);

} // namespace pdssim

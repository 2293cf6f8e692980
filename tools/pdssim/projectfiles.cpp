#include "pdssim/projectfiles.h"

#include "pdssim/siteserver.h"

#include "frame/failure.h"

namespace pdssim {

QString ModelSeedFileName() { return QStringLiteral("mdlsdz.dgn"); }

// rdb_file_spec holds 14 characters: the name keeps ten of the project's.
QString ProjectSeedFileName(const QString &project) { return project.left(10).toLower() + QStringLiteral(".dgn"); }

QString ModelServerFolder(const SiteLayout &layout, const QString &project, const QString &discipline)
{
    return ServerPath(layout, layout.ProjectDir(project) + discipline.toLower() + QStringLiteral("/models/"));
}

QString ModelFileSpec(const QString &modelNo) { return modelNo.toLower() + QStringLiteral(".dgn"); }

void WriteProjectFiles(const SiteLayout &layout, const QString &project, const DgnSettings &settings)
{
    fx::Frame("WriteProjectFiles", [&] {
        const QString folder = layout.ProjectDir(project);
        WriteDgnFile(folder + ProjectSeedFileName(project), settings);
        WriteDgnFile(folder + ModelSeedFileName(), settings);
    });
}

void WriteModelFiles(const SiteLayout &layout, const QList<SiteModel> &models, const DgnSettings &settings)
{
    fx::Frame("WriteModelFiles", [&] {
        for (const SiteModel &model : models) {
            QString folder = LocalPathOf(layout, model.pathName);
            if (!folder.endsWith(QLatin1Char('/')))
                folder += QLatin1Char('/');
            WriteDgnFile(folder + model.fileSpec, settings, model.boxes);
        }
    });
}

} // namespace pdssim

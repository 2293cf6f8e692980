#pragma once
// Generates the project schema "pd_<project>" of a simulated site into an SQLite file: reference
// data, models, components, clashes with occurrences and review history, consistent across the
// tables, the same bytes for the same options.

#include "pdssim/edgemanifest.h"

#include <QList>
#include <QPair>
#include <QString>

namespace pdssim {

/// What a generated schema holds.
struct SchemaOptions
{
    QString project = QStringLiteral("SIM1");
    qint64 clashes = 1000;
    quint64 seed = 1;
    /// The project row of pdtable_102: the server, the project folder on it, the seed file.
    QString networkAddress = QStringLiteral("pdsserver");
    QString projectPath = QStringLiteral("d:\\pds\\sim1\\");
    QString seedFileSpec = QStringLiteral("sim1.dgn");
    /// The folder of the model files on the server; empty means the project folder.
    QString modelPath;
    /// Design units a master unit, as the seed file's header says (uor_per_sub * sub_per_mast).
    qint64 uorPerMaster = 80000;
    /// Adds the hard cases that a load survives, each listed among the returned cases.
    bool edge = false;
    /// The declared width of pdtable_102.lock_owner; a real schema may have it narrower than 40.
    int lockOwnerWidth = 40;
    /// The models of the project, kMinModels to kMaxModels; 0 makes them from the clash count
    /// (one in 250 clashes, 12 to 4,000). Given, the design areas grow with them too: two per
    /// discipline and one more for every 250 models, so that an area holds some 40 models.
    int models = 0;
    /// Adds two rows of one clash id (both left out, status 99): a load of the project fails.
    bool edgeFatal = false;
};

inline constexpr qint64 kMinClashes = 10;
inline constexpr qint64 kMaxClashes = 1000000;
inline constexpr int kMinModels = 12;
inline constexpr int kMaxModels = 100000;

/// The discipline whose areas are the interference areas (pdtable_102, type 451).
inline constexpr int kClashDiscipline = 8;

/// The file of a project's schema in a folder of schema databases: "<folder>/pd_<project>.db".
QString SchemaFile(const QString &folder, const QString &project);

/// The entries of [ClashTypesDefinition] the generated clash types are named by; a hard case
/// uses a type that is not among them.
QList<QPair<int, QString>> ClashTypesDefinition();

/// The entries of [ModelStatusDefinition] for the generated model states.
QList<QPair<int, QString>> ModelStatusDefinition();

/// Writes the schema into `sqliteFile` (replaced if it exists) and gives the hard cases it holds.
QList<EdgeCase> GenerateSchema(const SchemaOptions &options, const QString &sqliteFile);

} // namespace pdssim

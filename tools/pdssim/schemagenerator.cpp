#include "pdssim/schemagenerator.h"
#include "pdssim/sitemessages.h"

#include "pdssim/schemabuilder.h"
#include "pdssim/schemadefinition.h"

#include "frame/failure.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace pdssim {

namespace {

struct Discipline
{
    int number;
    const char *name;
    const char *prefix;
};

// The design disciplines; the clash discipline comes last.
constexpr Discipline kDisciplines[] = {
    {1, "Piping", "PIP"}, {2, "Equipment", "EQP"}, {3, "Structural", "STR"}, {4, "Raceway", "RWY"},
    {5, "HVAC", "HVC"},   {6, "Electrical", "ELE"}, {kClashDiscipline, "Interference", "INT"},
};

const QByteArray kPipingParts[] = {"PIPE", "ELBOW", "TEE", "GATE VALVE", "REDUCER", "FLANGE"};
const QByteArray kSteelParts[] = {"HEA200", "IPE300", "UPN160", "L80X8"};
const QByteArray kOtherParts[] = {"TRAY", "DUCT", "CONDUIT", "BOX"};
const QByteArray kComments[] = {"Pipe to be rerouted", "Accepted by lead engineer", "Insulation only",
                                "Support to be moved", "Check on site", "False clash: temporary steel"};

qint64 Clamp(qint64 value, qint64 low, qint64 high)
{
    return std::min(std::max(value, low), high);
}

void CreateTables(fx::SqliteDb &db, bool withSiteTable, int lockOwnerWidth)
{
    for (const TableDefinition &table : ProjectTables()) {
        if (!withSiteTable && QLatin1String(table.name) == QLatin1String("pdtable_119"))
            continue;
        QStringList columns;
        for (const ColumnDefinition &column : table.columns) {
            QString declared = QLatin1String(column.risType);
            // SQLite keeps text of any length: the lock owner's width is checked as a server
            // would refuse a longer owner, for Fendrix must fit its claims to it.
            if (QLatin1String(table.name) == QLatin1String("pdtable_102") && QLatin1String(column.name) == QLatin1String("lock_owner"))
                declared = QStringLiteral("char(%1) CHECK(length(lock_owner) <= %1)").arg(lockOwnerWidth);
            columns << QLatin1String(column.name) + QLatin1Char(' ') + declared;
        }
        db.Execute(QStringLiteral("CREATE TABLE %1 (%2);").arg(QLatin1String(table.name), columns.join(QStringLiteral(", "))));
    }
}

void CreateIndexes(fx::SqliteDb &db, bool withSiteTable)
{
    for (const TableDefinition &table : ProjectTables()) {
        const QString name = QLatin1String(table.name);
        if (!withSiteTable && name == QLatin1String("pdtable_119"))
            continue;
        if (!table.uniqueIndex.isEmpty())
            db.Execute(QStringLiteral("CREATE UNIQUE INDEX u%1 ON %1 (%2);").arg(name, table.uniqueIndex.join(QStringLiteral(", "))));
        for (const QString &column : table.indexes)
            db.Execute(QStringLiteral("CREATE INDEX i%1_%2 ON %1 (%2);").arg(name, column));
    }
}

void WriteProjectRows(SchemaBuilder &b)
{
    const SchemaOptions &o = b.options;
    b.Table("pdtable_101").Text(o.project.toUtf8()).Text("Simulated project " + o.project.toUtf8()).Text("Fendrix test site").End();
    b.Table("pdtable_102").Int(99).Text(o.networkAddress.toUtf8()).Text(o.projectPath.toUtf8())
        .Text(o.seedFileSpec.toUtf8()).Null().Int(0).Int(0).End();
    b.Table("pdtable_102").Int(451).Null().Null().Text(QByteArray::number(kClashDiscipline)).Null().Int(0).Int(0).End();
    for (const Discipline &discipline : kDisciplines)
        b.Table("pdtable_111").Int(discipline.number).Text(discipline.name).End();
    for (int i = 1; i <= 6; ++i)
        b.Table("pdtable_121").Text("DWG-" + QByteArray::number(1000 + i)).Text("General arrangement sheet " + QByteArray::number(i))
            .Int(1 + (i - 1) % 3).End();
    b.Table("pdtable_151").Int(1).Text("Model review").Int(1).Text("review.dri").Text(o.projectPath.toUtf8())
        .Text(o.networkAddress.toUtf8()).Text("review.tag").Text(o.projectPath.toUtf8()).Text(o.networkAddress.toUtf8()).End();
    b.Table("pdtable_116").Int(1).Text("SP-01").Text("Structure north").End();
    b.Table("pdtable_116").Int(2).Text("SP-02").Text("Structure south").End();
}

void WriteAreas(SchemaBuilder &b)
{
    const qint64 n = b.options.clashes;
    const int interference = int(Clamp(n / 25000 + 2, 2, 40));
    const int models = b.options.models;
    const int perDiscipline = models > 0 ? int(Clamp(models / 250 + 2, 2, 99)) : int(Clamp(n / 200000 + 2, 2, 8));
    for (const Discipline &discipline : kDisciplines) {
        if (discipline.number == kClashDiscipline)
            continue;
        for (int i = 1; i <= perDiscipline; ++i) {
            const Area area{b.nextAreaIndex++, discipline.number, discipline.prefix + QByteArray("-A") + QByteArray::number(i).rightJustified(2, '0')};
            b.designAreas.push_back(area);
            b.WriteArea(area, QByteArray(discipline.name) + " area " + QByteArray::number(i), false, nullptr);
            if (discipline.number == 3)
                b.Table("pdtable_117").Int(area.index).Int(1 + (i - 1) % 2).End();
        }
    }
    for (int i = 0; i < interference; ++i) {
        const Area area{b.nextAreaIndex++, kClashDiscipline, "INT-" + QByteArray::number(i + 1).rightJustified(2, '0')};
        b.interferenceAreas.push_back(area);
        // The last area has no volume of its own, as an area checked by its models.
        Box volume;
        const bool withVolume = i + 1 < interference;
        volume.lo = {1000.0 + 200 * i, 0, 0};
        volume.hi = {1200.0 + 200 * i, 150, 60};
        b.WriteArea(area, "Interference area " + QByteArray::number(i + 1), true, withVolume ? &volume : nullptr);
        // A check run in early 2021; every fourth area was checked twice.
        const qint64 completed = UtcSeconds(2021, 3, 1 + i % 28, 6 + i % 8);
        b.WriteRun(area.index, completed);
        if (i % 4 == 1)
            b.WriteRun(area.index, completed - 14 * 86400);
    }
}

void WriteModelsAndComponents(SchemaBuilder &b)
{
    const qint64 n = b.options.clashes;
    const int modelCount = b.options.models > 0 ? b.options.models : int(Clamp(n / 250, 12, 4000));
    std::vector<int> perArea(b.designAreas.size(), 0);
    QHash<int, int> partitions;
    for (int i = 0; i < modelCount; ++i) {
        const size_t at = size_t(i) % b.designAreas.size();
        const Area &area = b.designAreas.at(at);
        const int ordinal = ++perArea[at];
        const QByteArray modelNo = QByteArray(kDisciplines[area.discipline - 1].prefix)
                                   + area.name.right(2) + QByteArray::number(ordinal).rightJustified(3, '0');
        b.AddModel(area.discipline, area.index, ++partitions[area.discipline], modelNo, int(1 + b.rng.Below(3)));
    }
    // The hard cases take components 0 to 27 for themselves.
    const qint64 componentCount = std::max<qint64>(32, n);
    std::vector<qint64> rows(size_t(modelCount), 0);
    for (qint64 i = 0; i < componentCount; ++i) {
        const int model = int(i * modelCount / componentCount);
        const Model &m = b.models.at(size_t(model));
        const qint64 local = ++rows[size_t(model)];
        switch (m.discipline) {
        case 1: {
            // Rows of tables 3 to 8 carry the partition in steps of 524288.
            const QByteArray line = QByteArray::number(1000 + m.index) + "-P-CS" + QByteArray::number(1 + local % 3);
            b.AddComponent(model, int(3 + b.rng.Below(6)), qint64(m.partition) * 524288 + local,
                           kPipingParts[b.rng.Below(6)], &line);
            break;
        }
        case 2: {
            const QByteArray nozzle = b.rng.Percent(50) ? "N" + QByteArray::number(1 + local % 6) : QByteArray("");
            b.AddComponent(model, int(21 + b.rng.Below(2)), local, "E-" + QByteArray::number(100 + m.index), &nozzle);
            break;
        }
        case 3:
            b.AddComponent(model, 36, local, "BEAM", &kSteelParts[b.rng.Below(4)]);
            break;
        default:
            b.AddComponent(model, int(b.rng.Percent(50) ? 91 : 92), local, kOtherParts[b.rng.Below(4)], nullptr);
            break;
        }
    }
}

void WriteClashes(SchemaBuilder &b)
{
    const qint64 componentCount = qint64(b.components.size());
    const qint64 interference = qint64(b.interferenceAreas.size());
    for (qint64 i = 0; i < b.options.clashes; ++i) {
        ClashRow clash;
        clash.id = b.nextClashId++;
        clash.compA = int(b.rng.Below(componentCount));
        clash.compB = int(b.rng.Below(componentCount));
        for (int retry = 0; retry < 3 && b.components[size_t(clash.compA)] == b.components[size_t(clash.compB)]; ++retry)
            clash.compB = int(b.rng.Below(componentCount));
        const qint64 slot = b.rng.Below(interference);
        clash.area = b.interferenceAreas[size_t(slot)].index;
        clash.areaB = b.rng.Percent(85) ? clash.area : b.interferenceAreas[size_t(b.rng.Below(interference))].index;
        clash.type = int(1 + b.rng.Below(6));
        const int choice = int(b.rng.Below(100));
        clash.actionDiscipline = choice < 60   ? b.models[size_t(b.components[size_t(clash.compA)])].discipline
                                 : choice < 85 ? b.models[size_t(b.components[size_t(clash.compB)])].discipline
                                               : 0;
        const bool reviewed = b.rng.Percent(40);
        clash.status = reviewed && b.rng.Percent(75) ? 2 : 1;
        const qint64 run = b.newestRun.value(clash.area);
        clash.recentReviewDate = reviewed ? run : 0;
        b.WriteClash(clash);

        const int occurrences = b.rng.Percent(10) ? 2 : 1;
        for (int s = 1; s <= occurrences; ++s) {
            const auto [boxA, boxB] = b.ClashBoxes(int(slot));
            b.WriteOccurrence(clash.id, s, boxA, boxB);
        }
        if (!reviewed)
            continue;
        const int reviews = int(1 + b.rng.Below(3));
        qint64 date = run + 3600 + b.rng.Below(20 * 86400);
        for (int r = 1; r <= reviews; ++r) {
            int action = int(1 + b.rng.Below(3));
            if (r == reviews)
                action = clash.status == 2 ? (b.rng.Percent(70) ? 2 : 3) : 1;
            const QByteArray *comment = b.rng.Percent(80) ? &kComments[b.rng.Below(6)] : nullptr;
            b.WriteReview(clash.id, date, action, comment, action == 1 ? 1 : 2);
            date += 3600 + b.rng.Below(3 * 86400);
        }
    }
}

} // namespace

QString SchemaFile(const QString &folder, const QString &project)
{
    return QDir(folder).filePath(QStringLiteral("pd_") + project + QStringLiteral(".db"));
}

QList<QPair<int, QString>> ClashTypesDefinition()
{
    return {{1, QStringLiteral("Hard - Hard")},         {2, QStringLiteral("Hard - Soft")},
            {3, QStringLiteral("Soft - Soft")},         {4, QStringLiteral("Hard - Construction")},
            {5, QStringLiteral("Soft - Construction")}, {6, QStringLiteral("Construction - Construction")}};
}

QList<QPair<int, QString>> ModelStatusDefinition()
{
    return {{1, QStringLiteral("Preliminary")}, {2, QStringLiteral("In review")}, {3, QStringLiteral("Approved")}};
}

QList<EdgeCase> GenerateSchema(const SchemaOptions &options, const QString &sqliteFile)
{
    return fx::Frame("GenerateSchema", [&] {
        if (options.clashes < kMinClashes || options.clashes > kMaxClashes)
            fx::Raise(pdssim::sitemsg::SimClashCountOutOfRange,
                      {QString::number(options.clashes), QString::number(kMinClashes), QString::number(kMaxClashes)});
        if (options.models != 0 && (options.models < kMinModels || options.models > kMaxModels))
            fx::Raise(pdssim::sitemsg::SimModelCountOutOfRange,
                      {QString::number(options.models), QString::number(kMinModels), QString::number(kMaxModels)});
        QFile::remove(sqliteFile);
        QDir().mkpath(QFileInfo(sqliteFile).absolutePath());
        fx::SqliteDb db(sqliteFile, fx::SqliteDb::OpenMode::ReadWriteCreate);
        // A throw-away build: no journal, no syncs; a fixed page size keeps the bytes stable.
        db.Execute(QStringLiteral("PRAGMA page_size=4096; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; "
                                  "PRAGMA locking_mode=EXCLUSIVE; PRAGMA cache_size=-131072;"));
        const bool withSiteTable = !options.edge;
        CreateTables(db, withSiteTable, options.lockOwnerWidth);
        QList<EdgeCase> cases;
        fx::SqliteTransaction transaction(db);
        {
            SchemaBuilder builder(db, options);
            WriteProjectRows(builder);
            WriteAreas(builder);
            WriteModelsAndComponents(builder);
            WriteClashes(builder);
            if (options.edge)
                AddEdgeCases(builder);
            if (options.edgeFatal)
                AddFatalEdgeCases(builder);
            cases = builder.cases;
        }
        transaction.Commit();
        // Indexes built once over the whole tables are much faster than kept up row by row.
        CreateIndexes(db, withSiteTable);
        return cases;
    });
}

} // namespace pdssim

#include "pdssim/schemabuilder.h"

#include "pdssim/schemadefinition.h"

#include "frame/failure.h"
#include "pds/sqlitedb.h"

#include <QDateTime>

#include <sqlite3.h>

namespace pdssim {

quint64 Rng::Next()
{
    quint64 z = (m_state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

qint64 Rng::Below(qint64 n)
{
    // The bias of a modulo over 64 bits is far below anything a test could see.
    return n <= 1 ? 0 : qint64(Next() % quint64(n));
}

TableWriter::TableWriter(fx::SqliteDb &db, const QString &table)
    : m_db(db)
{
    const TableDefinition &definition = ProjectTable(table);
    QStringList marks;
    for (int i = 0; i < definition.columns.size(); ++i)
        marks << QStringLiteral("?");
    const QByteArray sql = QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, marks.join(QLatin1Char(','))).toUtf8();
    const int rc = sqlite3_prepare_v2(db.Handle(), sql.constData(), int(sql.size()), &m_stmt, nullptr);
    if (rc != SQLITE_OK)
        db.RaiseLastError(rc, QString::fromUtf8(sql));
}

TableWriter::~TableWriter()
{
    sqlite3_finalize(m_stmt);
}

TableWriter &TableWriter::Int(qint64 value)
{
    sqlite3_bind_int64(m_stmt, m_next++, value);
    return *this;
}

TableWriter &TableWriter::Real(double value)
{
    sqlite3_bind_double(m_stmt, m_next++, value);
    return *this;
}

TableWriter &TableWriter::Text(const QByteArray &text)
{
    sqlite3_bind_text(m_stmt, m_next++, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    return *this;
}

TableWriter &TableWriter::Null()
{
    sqlite3_bind_null(m_stmt, m_next++);
    return *this;
}

void TableWriter::End()
{
    const int rc = sqlite3_step(m_stmt);
    if (rc != SQLITE_DONE)
        m_db.RaiseLastError(rc);
    sqlite3_reset(m_stmt);
    m_next = 1;
}

SchemaBuilder::SchemaBuilder(fx::SqliteDb &db, const SchemaOptions &options)
    : options(options)
    , rng(options.seed)
    , m_db(db)
{
}

SchemaBuilder::~SchemaBuilder() = default;

TableWriter &SchemaBuilder::Table(const char *name)
{
    TableWriter *&writer = m_writers[QByteArray(name)];
    if (!writer) {
        m_owned.push_back(std::make_unique<TableWriter>(m_db, QString::fromLatin1(name)));
        writer = m_owned.back().get();
    }
    return *writer;
}

void SchemaBuilder::Execute(const QString &sql)
{
    m_db.Execute(sql);
}

void SchemaBuilder::WriteArea(const Area &area, const QByteArray &description, bool interference, const Box *volume)
{
    TableWriter &row = Table("pdtable_112");
    row.Int(area.discipline).Int(area.index).Text(area.name).Text(description).Int(interference ? 1 : 0);
    for (int i = 0; i < 6; ++i)
        row.Real(volume ? (i < 3 ? volume->lo[size_t(i)] : volume->hi[size_t(i - 3)]) : 0.0);
    row.Null().Int(0).Int(0).End();
}

int SchemaBuilder::AddModel(int discipline, int area, int partition, const QByteArray &modelNo, int status)
{
    const int index = int(models.size()) + 1;
    models.push_back(Model{index, discipline, area, partition});
    const QByteArray path = (options.modelPath.isEmpty() ? options.projectPath : options.modelPath).toUtf8();
    Table("pdtable_113")
        .Int(index).Int(discipline).Int(area).Int(partition).Text(modelNo)
        .Text("Model " + modelNo + " of area " + QByteArray::number(area)).Int(1).Int(status)
        .Text(options.networkAddress.toUtf8()).Text(path).Text(modelNo.toLower() + ".dgn")
        .End();
    // Some models have no site: the clash rows then read "No SiteID".
    if (!options.edge && rng.Percent(80))
        Table("pdtable_119").Int(index).Text("SITE-" + QByteArray::number(1 + area % 3)).End();
    return int(models.size()) - 1;
}

int SchemaBuilder::AddComponent(int model, int tableNumber, qint64 rowNumber, const QByteArray &primary,
                                const QByteArray *secondary)
{
    components.push_back(model);
    TableWriter &row = Table("pdtable_134");
    row.Int(qint64(components.size())).Int(models.at(model).index).Int(tableNumber).Int(rowNumber).Text(primary);
    if (secondary)
        row.Text(*secondary);
    else
        row.Null();
    row.End();
    return int(components.size()) - 1;
}

void SchemaBuilder::WriteClash(const ClashRow &clash)
{
    const Model &a = models.at(components.at(clash.compA));
    const Model &b = models.at(components.at(clash.compB));
    Table("pdtable_132")
        .Int(clash.id).Int(clash.status).Int(clash.type)
        .Int(a.discipline).Int(a.index).Int(clash.compA + 1)
        .Int(b.discipline).Int(b.index).Int(clash.compB + 1)
        .Int(clash.area).Int(clash.areaB).Int(clash.actionDiscipline).Int(clash.recentReviewDate)
        .End();
}

qint64 SchemaBuilder::WriteOccurrence(qint64 clashId, qint64 sequence, const Box &a, const Box &b)
{
    TableWriter &row = Table("pdtable_133");
    const qint64 number = m_nextOccurrence++;
    row.Int(number).Int(clashId).Int(sequence);
    for (const Box *box : {&a, &b}) {
        for (double value : box->lo)
            row.Real(value);
        for (double value : box->hi)
            row.Real(value);
    }
    row.End();
    return number;
}

qint64 SchemaBuilder::WriteReview(qint64 clashId, qint64 date, int action, const QByteArray *comment, int approvalMethod)
{
    TableWriter &row = Table("pdtable_135");
    const qint64 number = m_nextReview++;
    row.Int(number).Int(clashId).Int(date).Int(1 + rng.Below(12)).Int(1 + rng.Below(12)).Int(action);
    if (comment)
        row.Text(*comment);
    else
        row.Null();
    row.Int(approvalMethod).End();
    return number;
}

void SchemaBuilder::WriteRun(int area, qint64 completionDate)
{
    Table("pdtable_131").Int(kClashDiscipline).Int(area).Int(completionDate).End();
    qint64 &newest = newestRun[area];
    newest = std::max(newest, completionDate);
}

std::pair<Box, Box> SchemaBuilder::ClashBoxes(int interferenceArea)
{
    // Each interference area owns a slot of 200 x 150 x 60 master units; the two boxes share
    // an overlap around a point inside it and reach out from it by up to 1.5 master units.
    const qint64 uor = options.uorPerMaster;
    const std::array<qint64, 3> origin{(1000 + 200 * qint64(interferenceArea)) * uor, 0, 0};
    const std::array<qint64, 3> extent{200 * uor, 150 * uor, 60 * uor};
    Box a, b;
    for (int axis = 0; axis < 3; ++axis) {
        const qint64 centre = origin[axis] + 2 * uor + rng.Below(extent[axis] - 4 * uor);
        const qint64 half = uor / 200 + rng.Below(uor / 10);
        a.lo[axis] = double(centre - half - rng.Below(uor * 3 / 2));
        a.hi[axis] = double(centre + half + rng.Below(uor * 3 / 2));
        b.lo[axis] = double(centre - half - rng.Below(uor * 3 / 2));
        b.hi[axis] = double(centre + half + rng.Below(uor * 3 / 2));
    }
    return {a, b};
}

qint64 UtcSeconds(int year, int month, int day, int hour)
{
    return QDateTime(QDate(year, month, day), QTime(hour, 0), Qt::UTC).toSecsSinceEpoch();
}

} // namespace pdssim

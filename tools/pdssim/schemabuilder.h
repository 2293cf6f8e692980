#pragma once
// The state of one schema being generated: the random stream, the SQLite tables being filled,
// and the areas, models and components already written, which later rows refer to.

#include "pdssim/edgemanifest.h"
#include "pdssim/schemagenerator.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <memory>
#include <vector>

struct sqlite3_stmt;

namespace fx {
class SqliteDb;
}

namespace pdssim {

/// SplitMix64: small, fast, and the same numbers on every platform and library.
class Rng
{
public:
    explicit Rng(quint64 seed) : m_state(seed) {}
    quint64 Next();
    /// A number from 0 to n - 1.
    qint64 Below(qint64 n);
    bool Percent(int percent) { return Below(100) < percent; }

private:
    quint64 m_state;
};

/// Inserts rows into one table through a prepared statement, value by value in column order.
class TableWriter
{
public:
    TableWriter(fx::SqliteDb &db, const QString &table);
    TableWriter(const TableWriter &) = delete;
    TableWriter &operator=(const TableWriter &) = delete;
    ~TableWriter();

    TableWriter &Int(qint64 value);
    TableWriter &Real(double value);
    TableWriter &Text(const QByteArray &text);
    TableWriter &Null();
    /// Inserts the row of the values given since the last one.
    void End();

private:
    fx::SqliteDb &m_db;
    sqlite3_stmt *m_stmt = nullptr;
    int m_next = 1;
};

/// A box in design units: lo and hi of x, y, z.
struct Box
{
    std::array<double, 3> lo{}, hi{};
};

struct Area
{
    int index;
    int discipline;
    QByteArray name;
};

struct Model
{
    int index;
    int discipline;
    int area;
    int partition;
};

/// One row of pdtable_132; disciplines and models follow from the components.
struct ClashRow
{
    qint64 id = 0;
    int status = 1;
    int type = 1;
    int compA = 0, compB = 0; ///< positions in SchemaBuilder::components
    int area = 0, areaB = 0;  ///< area_index_no of the interference areas
    int actionDiscipline = 0;
    qint64 recentReviewDate = 0;
};

class SchemaBuilder
{
public:
    SchemaBuilder(fx::SqliteDb &db, const SchemaOptions &options);
    ~SchemaBuilder();

    TableWriter &Table(const char *name);
    /// Runs a statement on the rows written so far.
    void Execute(const QString &sql);

    /// Adds a model row and gives its position in `models`.
    int AddModel(int discipline, int area, int partition, const QByteArray &modelNo, int status);
    /// Adds a component row of a model and gives its position in `components`.
    int AddComponent(int model, int tableNumber, qint64 rowNumber, const QByteArray &primary, const QByteArray *secondary);
    void WriteClash(const ClashRow &clash);
    /// Writes an occurrence and gives its system_unique_no.
    qint64 WriteOccurrence(qint64 clashId, qint64 sequence, const Box &a, const Box &b);
    /// Writes a review row and gives its system_unique_no; a null `comment` writes NULL.
    qint64 WriteReview(qint64 clashId, qint64 date, int action, const QByteArray *comment, int approvalMethod);
    /// Writes an area row, unlocked; without a volume its six bounds are 0.
    void WriteArea(const Area &area, const QByteArray &description, bool interference, const Box *volume);
    /// Writes a check run of an interference area.
    void WriteRun(int area, qint64 completionDate);
    /// Two boxes of components that overlap around a point in the slot of an interference area.
    std::pair<Box, Box> ClashBoxes(int interferenceArea);

    const SchemaOptions &options;
    Rng rng;
    std::vector<Area> interferenceAreas;
    std::vector<Area> designAreas;
    std::vector<Model> models;
    std::vector<int> components; ///< the model position of each component; its id is position + 1
    QHash<int, qint64> newestRun; ///< area_index_no -> completion_date of its newest run
    int nextAreaIndex = 1;
    qint64 nextClashId = 1;
    QList<EdgeCase> cases;

private:
    fx::SqliteDb &m_db;
    QHash<QByteArray, TableWriter *> m_writers;
    std::vector<std::unique_ptr<TableWriter>> m_owned;
    qint64 m_nextOccurrence = 1;
    qint64 m_nextReview = 1;
};

/// Adds the hard cases to a schema whose ordinary rows are written.
void AddEdgeCases(SchemaBuilder &builder);
/// Adds the case that makes a load of the project fail.
void AddFatalEdgeCases(SchemaBuilder &builder);

/// The first second of a day in UTC.
qint64 UtcSeconds(int year, int month, int day, int hour = 0);

} // namespace pdssim

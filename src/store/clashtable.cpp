// `clashes`: the rows of base_clash_table that pass the filters, with the component and DVCS
// columns that the remembered settings ask for.

#include "store/clashtables.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/localdb.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/clashviewsettings.h"
#include "store/messages.h"

#include <sqlite3.h>

#include <limits>
#include <optional>

namespace fx {

namespace {

// Rows a step of the component split, between which events may run.
constexpr int kSplitStep = 20000;
constexpr char kPieceFunction[] = "COMPONENT_PIECE";

// One column of `clashes`: its name, declared type, and what fills it (empty: left null).
struct ClashColumn
{
    QString name;
    QString type;
    QString source;
};

void AddColumns(QList<ClashColumn> &columns, const char *names, const char *type)
{
    for (const QString &name : QString::fromLatin1(names).split(QLatin1Char(' ')))
        columns.append({name, QString::fromLatin1(type), name});
}

// The component columns of one side: the description whole, or its pieces 0 to `lastPiece`,
// the first filled with the whole description until the split.
void AddComponentColumns(QList<ClashColumn> &columns, const QString &side, std::optional<int> lastPiece)
{
    const QString whole = QStringLiteral("comp_") + side;
    if (!lastPiece) {
        columns.append({whole, QString::fromLatin1(StoreTextType), whole});
        return;
    }
    for (int i = 0; i <= *lastPiece; ++i) {
        const QString piece = whole + QLatin1Char('_') + QString::number(i);
        columns.append({piece, QString::fromLatin1(StoreTextType), i == 0 ? whole : QString()});
    }
}

struct Centres
{
    double easting = 0, northing = 0, elevation = 0;
    bool Any() const { return easting != 0 || northing != 0 || elevation != 0; }
};

double CentreValue(const QString &centre)
{
    return LeadingNumber(centre).value_or(0);
}

QList<ClashColumn> ClashColumns(std::optional<int> lastPiece, const Centres &centres)
{
    QList<ClashColumn> columns;
    // The key is the rowid: no index of its own is needed, and the grid fetches by it.
    columns.append({QStringLiteral("clash_id"), QStringLiteral("INTEGER PRIMARY KEY"), QStringLiteral("clash_id")});
    AddColumns(columns, "type status action review_comment", StoreTextType);
    AddColumns(columns, "recent_review_date", "DATETIME");
    AddColumns(columns, "discipline_structure model_structure site_id_structure", StoreTextType);
    AddColumns(columns, "site_id_a discipline_a area_a model_a model_status_a", StoreTextType);
    AddComponentColumns(columns, QStringLiteral("a"), lastPiece);
    AddColumns(columns, "action_area_a site_id_b discipline_b area_b model_b model_status_b", StoreTextType);
    AddComponentColumns(columns, QStringLiteral("b"), lastPiece);
    AddColumns(columns, "action_area_b action_discipline", StoreTextType);
    AddColumns(columns, "easting northing elevation", "DOUBLE");
    if (centres.Any()) {
        const std::pair<const char *, double> dvcs[] = {
            {"easting", centres.easting}, {"northing", centres.northing}, {"elevation", centres.elevation}};
        for (const auto &[axis, centre] : dvcs) {
            const QString plain = QString::fromLatin1(axis);
            columns.append({plain + QStringLiteral("_dvcs"), QStringLiteral("DOUBLE"),
                            QStringLiteral("(%1 + %2)").arg(plain, SqlNumber(centre))});
        }
    }
    return columns;
}

// The largest number of separators in one component description of the project.
int MaxSeparatorCount(SqliteDb &db, const QString &separator)
{
    const QString description = QStringLiteral(
        "JCAT([primary_descript], IIF([secondary_descript] <> '' AND [secondary_descript] IS NOT NULL, "
        "JCAT('-', [secondary_descript]), ''))");
    SqliteStatement query(db, QStringLiteral("SELECT MAX((LENGTH(d) - LENGTH(REPLACE(d, ?1, ''))) / LENGTH(?1)) FROM "
                                             "(SELECT %1 AS d FROM pdtable_134) WHERE d <> '';")
                                  .arg(description));
    query.Bind(1, separator);
    query.Step();
    return int(query.Column(0).toLongLong());
}

// The last text split: the update asks for every piece of one text in a row.
struct PieceCache
{
    QString text;
    QString separator;
    QStringList pieces;
};

QString ValueText(sqlite3_value *value)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
}

// COMPONENT_PIECE(text, separator, i): piece i of the text split at the separator, null past
// the last piece; a null text stays null.
void ComponentPiece(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    auto *cache = static_cast<PieceCache *>(sqlite3_user_data(context));
    const QString text = ValueText(argv[0]);
    const QString separator = ValueText(argv[1]);
    if (text != cache->text || separator != cache->separator || cache->pieces.isEmpty()) {
        cache->pieces = text.split(separator);
        cache->text = text;
        cache->separator = separator;
    }
    const qsizetype index = sqlite3_value_int64(argv[2]);
    if (index < 0 || index >= cache->pieces.size()) {
        sqlite3_result_null(context);
        return;
    }
    const QByteArray piece = cache->pieces.at(index).toUtf8();
    sqlite3_result_text64(context, piece.isEmpty() ? "" : piece.constData(), sqlite3_uint64(piece.size()), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

// Writes the pieces of comp_a_0 and comp_b_0 into their columns, a step of rows at a time so
// that the windows stay alive.
void SplitComponents(SqliteDb &db, const QString &separator, int lastPiece)
{
    // SQLite owns the cache from here and deletes it with the function.
    const int rc = sqlite3_create_function_v2(db.Handle(), kPieceFunction, 3, SQLITE_UTF8 | SQLITE_DETERMINISTIC, new PieceCache,
                                              &ComponentPiece, nullptr, nullptr,
                                              [](void *cache) { delete static_cast<PieceCache *>(cache); });
    if (rc != SQLITE_OK)
        db.RaiseLastError(rc);
    QStringList sets;
    for (const char *side : {"a", "b"})
        for (int i = 0; i <= lastPiece; ++i)
            sets << QStringLiteral("comp_%1_%2 = %3(comp_%1_0, ?3, %2)").arg(QString::fromLatin1(side)).arg(i).arg(
                        QString::fromLatin1(kPieceFunction));
    SqliteStatement next(db, QStringLiteral("SELECT MAX(clash_id) FROM (SELECT clash_id FROM [clashes] WHERE clash_id > ?1 "
                                            "ORDER BY clash_id LIMIT %1);")
                                 .arg(kSplitStep));
    SqliteStatement update(db, QStringLiteral("UPDATE [clashes] SET ") + sets.join(QStringLiteral(", "))
                                   + QStringLiteral(" WHERE clash_id > ?1 AND clash_id <= ?2;"));
    QVariant lower = std::numeric_limits<qint64>::min();
    for (;;) {
        next.Reset();
        next.Bind(1, lower);
        next.Step();
        const QVariant upper = next.Column(0);
        if (upper.isNull())
            break;
        update.Reset();
        update.Bind(1, lower);
        update.Bind(2, upper);
        update.Bind(3, separator);
        update.Step();
        lower = upper;
        DoEventsIfInput();
    }
}

// Takes out what lies outside the action area and the volume, the bounds being meant in DVCS
// coordinates.
void ApplyVolumeFilter(SqliteDb &db, const ClashViewSettings &settings, const Centres &centres)
{
    if (!settings.area.isEmpty()) {
        const QString area = DBQuote(settings.area.toLower());
        db.Execute(QStringLiteral("DELETE FROM [clashes] WHERE(LCASE([action_area_a]) <> %1 AND LCASE([action_area_b]) <> %1);")
                       .arg(area));
    }
    struct Bound
    {
        const QString &value;
        const char *condition;
        double centre;
    };
    const Bound bounds[] = {
        {settings.eastingLow, "easting >= ", centres.easting},     {settings.eastingHigh, "easting <= ", centres.easting},
        {settings.northingLow, "northing >= ", centres.northing},  {settings.northingHigh, "northing <= ", centres.northing},
        {settings.elevationLow, "elevation >= ", centres.elevation}, {settings.elevationHigh, "elevation <= ", centres.elevation},
    };
    QStringList conditions;
    bool anySet = false;
    for (const Bound &bound : bounds) {
        anySet = anySet || !bound.value.isEmpty();
        const std::optional<double> value = LeadingNumber(bound.value);
        conditions << (value ? QString::fromLatin1(bound.condition) + SqlNumber(*value - bound.centre) : QStringLiteral("TRUE"));
    }
    if (anySet)
        db.Execute(QStringLiteral("DELETE FROM [clashes] WHERE NOT(") + conditions.join(QStringLiteral(" AND "))
                   + QStringLiteral(");"));
}

} // namespace

void CreateClashTable()
{
    Frame("CreateClashTable", [&] {
        LogMessage(msg::CreatingClashTable, {});
        SaveClashTable();
        SqliteDb &db = ClashConnection();
        DropLocalTable(db, ClashesTableName());

        const ClashViewSettings &settings = RememberedClashViewSettings();
        const Centres centres{CentreValue(settings.eastingCenter), CentreValue(settings.northingCenter),
                              CentreValue(settings.elevationCenter)};
        std::optional<int> lastPiece;
        if (!settings.compSeparator.isEmpty())
            lastPiece = MaxSeparatorCount(db, settings.compSeparator);
        const QList<ClashColumn> columns = ClashColumns(lastPiece, centres);

        QStringList definitions, targets, sources;
        for (const ClashColumn &column : columns) {
            definitions << QLatin1Char('[') + column.name + QStringLiteral("] ") + column.type;
            if (column.source.isEmpty())
                continue;
            targets << QLatin1Char('[') + column.name + QLatin1Char(']');
            sources << column.source;
        }
        // A build that fails leaves no table behind, so that the next view builds it again.
        SqliteTransaction transaction(db);
        db.Execute(QStringLiteral("CREATE TABLE [clashes] (") + definitions.join(QStringLiteral(", ")) + QStringLiteral(");"));

        const QString filter =
            settings.advancedFilter.size() < kLongFilterLength ? settings.advancedFilter : GetAdvancedFilter3();
        db.Execute(QStringLiteral("INSERT INTO [clashes] (") + targets.join(QStringLiteral(", ")) + QStringLiteral(") SELECT ")
                   + sources.join(QStringLiteral(", ")) + QStringLiteral(" FROM [base_clash_table]")
                   + (filter.isEmpty() ? QString() : QStringLiteral(" WHERE(") + filter + QLatin1Char(')'))
                   + QStringLiteral(" ORDER BY [clash_id];"));

        ApplyVolumeFilter(db, settings, centres);
        if (lastPiece)
            SplitComponents(db, settings.compSeparator, *lastPiece);
        transaction.Commit();
        LogMessage(msg::ClashTableCreated, {});
    });
}

} // namespace fx

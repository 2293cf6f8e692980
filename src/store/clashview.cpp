// The view of clashes: when `clashes` is built anew, the reviewer's changes carried back to
// `base_clash_table`, and the counts of the status line.

#include "store/clashview.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashviewsettings.h"
#include "store/messages.h"
#include "store/options.h"

#include <optional>

namespace fx {

namespace {

qint32 Count(const QString &sql)
{
    return ClashConnection().Read(sql).Value(0, 0).toInt();
}

QString NumberText(const QVariant &value)
{
    return value.isNull() ? QString() : SqlNumber(value.toDouble());
}

// The recordset's filter as a WHERE condition: its date delimiters "#" go and " = NULL" becomes
// " IS NULL", but only outside quoted texts, so that a value a reviewer typed into a filter cell
// is looked for as typed.
QString WhereCondition(const QString &filter)
{
    const QStringView equalsNull = u" = NULL";
    QString condition;
    condition.reserve(filter.size());
    bool quoted = false;
    for (qsizetype i = 0; i < filter.size(); ++i) {
        const QChar c = filter.at(i);
        if (c == QLatin1Char('\''))
            quoted = !quoted; // a doubled quote inside a text leaves and enters it again
        if (!quoted && c == QLatin1Char('#'))
            continue;
        if (!quoted && QStringView(filter).sliced(i).startsWith(equalsNull)) {
            condition += QStringLiteral(" IS NULL");
            i += equalsNull.size() - 1;
            continue;
        }
        condition += c;
    }
    return condition;
}

// The twelve values as the options hold them now, logged when `log` says so; the advanced
// filter is read last, as it logs on its own when it reads a report file.
ClashViewSettings ReadClashViewSettings(bool log)
{
    const auto note = [log](const char *message, const QStringList &args) {
        if (log)
            LogMessage(message, args);
    };
    ClashViewSettings now;
    now.compSeparator = GetOption(option::CompSeparator);
    if (now.compSeparator.isEmpty())
        note(msg::ComponentsSeparatorNotDefined, {});
    else
        note(msg::ComponentsSeparator, {now.compSeparator});

    QString *centres[] = {&now.eastingCenter, &now.northingCenter, &now.elevationCenter};
    for (int i = 0; i < 3; ++i)
        *centres[i] = GetOption(*DvcsCenterKeys().at(i));
    note(msg::DvcsCenters, {now.eastingCenter, now.northingCenter, now.elevationCenter});
    for (QString *centre : centres)
        centre->replace(QLatin1Char(','), QLatin1Char('.'));

    now.area = GetOption(option::Area);
    if (now.area.isEmpty())
        note(msg::ActionAreaNotDefined, {});
    else
        note(msg::ActionArea, {now.area});

    QString *bounds[] = {&now.eastingLow, &now.northingLow, &now.elevationLow,
                         &now.eastingHigh, &now.northingHigh, &now.elevationHigh};
    for (int i = 0; i < 6; ++i)
        *bounds[i] = NormaliseBound(GetOption(*VolumeBoundKeys().at(i)));
    note(msg::VolumeBounds, {now.eastingLow, now.northingLow, now.elevationLow, now.eastingHigh, now.northingHigh,
                             now.elevationHigh});

    now.advancedFilter = GetAdvancedFilter(QString());
    if (now.advancedFilter.isEmpty())
        note(msg::AdvancedFilterNotDefined, {});
    else
        note(msg::AdvancedFilterText, {now.advancedFilter});
    return now;
}

} // namespace

ClashRecordsetState &ClashRecordset()
{
    static ClashRecordsetState state;
    return state;
}

qint64 GetClashes()
{
    return Frame("GetClashes", [&] {
        ClashRecordsetState &view = ClashRecordset();
        view = ClashRecordsetState();
        try {
            LogMessage(msg::LoadingClashTable, {});
            const ClashViewSettings now = ReadClashViewSettings(true);
            ClashViewSettings &last = RememberedClashViewSettings();
            bool rebuild = false;
            if (now != last) {
                const bool filterChanged = now.advancedFilter != last.advancedFilter;
                last = now;
                if (filterChanged && now.advancedFilter.size() >= kLongFilterLength)
                    FillAdvancedFilterTables(QString());
                rebuild = true;
            }
            if (rebuild || !IsLocalTableExists(ClashConnection(), ClashesTableName()))
                CreateClashTable();
            const qint64 count =
                ClashConnection().Read(QStringLiteral("SELECT COUNT(*) FROM [clashes];")).Value(0, 0).toLongLong();
            view.open = true;
            LogMessage(msg::ClashTableLoaded, {QString::number(count)});
            return count;
        } catch (...) {
            view.open = false;
            // What failed may have left the table or the filter tables half done: build anew next time.
            ResetRememberedClashFilters();
            throw;
        }
    });
}

bool IsClashViewOutdated()
{
    return Frame("IsClashViewOutdated", [] {
        return !IsLocalTableExists(ClashConnection(), ClashesTableName())
               || ReadClashViewSettings(false) != RememberedClashViewSettings();
    });
}

void SaveClashTable()
{
    Frame("SaveClashTable", [&] {
        SqliteDb &db = ClashConnection();
        if (!IsLocalTableExists(db, ClashesTableName()))
            return;
        CheckIfMaxDBSizeIsReached(QString(), true);
        // Rows that differ only: every column of base_clash_table is indexed, and most rows are
        // unchanged each time the view is built anew.
        db.Execute(QStringLiteral(
            "UPDATE [base_clash_table] SET [status] = [clashes].[status], [action] = [clashes].[action], "
            "[review_comment] = [clashes].[review_comment], [recent_review_date] = [clashes].[recent_review_date], "
            "[action_discipline] = [clashes].[action_discipline] FROM [clashes] "
            "WHERE ([clashes].[clash_id] = [base_clash_table].[clash_id]) AND "
            "([base_clash_table].[status] IS NOT [clashes].[status] OR [base_clash_table].[action] IS NOT [clashes].[action] OR [base_clash_table].[review_comment] IS NOT "
            "[clashes].[review_comment] OR [base_clash_table].[recent_review_date] IS NOT [clashes].[recent_review_date] OR "
            "[base_clash_table].[action_discipline] IS NOT [clashes].[action_discipline]);"));
    });
}

QString GetGridFilter()
{
    return Frame("GetGridFilter", [&] {
        const ClashRecordsetState &view = ClashRecordset();
        if (!view.open || view.Filter.isEmpty())
            return QString();
        return WhereCondition(view.Filter);
    });
}

namespace {

struct RememberedTotal
{
    QString project;
    std::optional<qint32> count;
};

RememberedTotal &TotalClashCount()
{
    static RememberedTotal total;
    return total;
}

} // namespace

void ResetRememberedClashFilters()
{
    RememberedClashViewSettings() = ClashViewSettings();
    // A project opened anew may hold other clashes, even under its old name.
    TotalClashCount() = RememberedTotal();
}

qint32 GetTotalClashCount()
{
    return Frame("GetTotalClashCount", [&] {
        RememberedTotal &total = TotalClashCount();
        if (!total.count || total.project != GetProjectName()) {
            total.count = Count(QStringLiteral("SELECT COUNT(*) FROM [base_clash_table];"));
            total.project = GetProjectName();
        }
        return *total.count;
    });
}

qint32 GetClashCount()
{
    return Frame("GetClashCount", [&] {
        const QString filter = GetGridFilter();
        return Count(QStringLiteral("SELECT COUNT(*) FROM [clashes]")
                     + (filter.isEmpty() ? QString() : QStringLiteral(" WHERE(") + filter + QLatin1Char(')')) + QLatin1Char(';'));
    });
}

qint32 GetTotalApprovedClashCount()
{
    return Frame("GetTotalApprovedClashCount", [&] {
        // Rows in view count as they stand, those out of view as last saved.
        return Count(QStringLiteral(
            "SELECT COUNT(*) FROM (SELECT clash_id FROM [base_clash_table] AS a WHERE(LCASE([status]) = 'approved' AND NOT "
            "EXISTS(SELECT 1 FROM [clashes] AS b WHERE(a.clash_id = b.clash_id)))UNION ALL SELECT clash_id FROM [clashes] "
            "WHERE(LCASE([status]) = 'approved'));"));
    });
}

qint32 GetApprovedClashCount()
{
    return Frame("GetApprovedClashCount", [&] {
        const QString filter = GetGridFilter();
        // The grid filter goes in brackets, so that an OR of its own can't take the status test apart.
        return Count(QStringLiteral("SELECT COUNT(*) FROM [clashes] WHERE(LCASE([status]) = 'approved'")
                     + (filter.isEmpty() ? QString() : QStringLiteral(" AND (") + filter + QLatin1Char(')'))
                     + QStringLiteral(");"));
    });
}

ClashRange GetClashRange()
{
    return Frame("GetClashRange", [&] {
        const Recordset range = ClashConnection().Read(QStringLiteral(
            "SELECT MAX(easting) AS x_max, MIN(easting) AS x_min, MAX(northing) AS y_max, MIN(northing) AS y_min, "
            "MAX(elevation) AS z_max, MIN(elevation) AS z_min FROM [base_clash_table];"));
        ClashRange result;
        QString *values[] = {&result.xMax, &result.xMin, &result.yMax, &result.yMin, &result.zMax, &result.zMin};
        for (int i = 0; i < 6; ++i)
            *values[i] = NumberText(range.Value(0, i));
        return result;
    });
}

QString GetPDSReportFile(const QString &configFile)
{
    return Frame("GetPDSReportFile", [&] { return GetOption(option::PDSReportFile, configFile); });
}

} // namespace fx

// The advanced filter: the values the reviewer took out of view, as one SQL condition on the
// clash rows, written either with the values in it or with look-ups in the filter tables.

#include "store/advancedfilter.h"

#include "frame/failure.h"
#include "frame/settings.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"
#include "store/messages.h"
#include "store/options.h"
#include "store/pdsreportfile.h"

namespace fx {

namespace {

const QString kNotDefined = QString::fromLatin1(NotDefinedValue);

// The words that join a dimension's parts: the literal route writes them in capitals, the
// table route as "And" and "Or".
struct JoinWords
{
    const char *andWord;
    const char *orWord;
};

// A dimension's condition: rows pass unless both sides are excluded. `excluded` is the
// operand of IN (empty when only nulls are excluded); `hasNull` says that a null counts as
// excluded.
QString DimensionCondition(const FilterDimension &dimension, const QString &excluded, bool hasNull, JoinWords words)
{
    const QString orWord = QLatin1Char(' ') + QString::fromLatin1(words.orWord) + QLatin1Char(' ');
    QString in;
    if (!excluded.isEmpty()) {
        in = QStringLiteral("NOT [%1] IN(%2)").arg(dimension.columnA, excluded);
        if (!dimension.columnB.isEmpty())
            in += QStringLiteral(" OR NOT [%1] IN(%2)").arg(dimension.columnB, excluded);
    }
    const QString negation = hasNull ? QStringLiteral("NOT ") : QString();
    QString nulls = QLatin1Char('(') + negation + QLatin1Char('[') + dimension.columnA + QStringLiteral("] IS NULL");
    if (!dimension.columnB.isEmpty())
        nulls += orWord + negation + QLatin1Char('[') + dimension.columnB + QStringLiteral("] IS NULL");
    nulls += QLatin1Char(')');
    if (in.isEmpty())
        return nulls;
    const QString joint = QString::fromLatin1(hasNull ? words.andWord : words.orWord);
    return in + QLatin1Char(' ') + joint + QLatin1Char(' ') + nulls;
}

// The clashes of the interference report named in the options, when one is named; an empty
// report lets no clash through.
QString ReportCondition(const QString &configFile)
{
    const QString report = GetPDSReportFile(configFile);
    if (report.isEmpty())
        return QString();
    const QStringList ids = ReadPDSReportFile(report);
    if (ids.isEmpty())
        return QStringLiteral("clash_id IN(-1)");
    return QStringLiteral("clash_id IN(") + ids.join(QStringLiteral(", ")) + QLatin1Char(')');
}

QString JoinConditions(QStringList conditions, const QString &report)
{
    if (!report.isEmpty())
        conditions << report;
    for (QString &condition : conditions)
        condition = QLatin1Char('(') + condition + QLatin1Char(')');
    return conditions.join(QStringLiteral(" AND "));
}

// The values of a dimension's settings section, in the order of its keys.
QStringList ExcludedValues(const QString &configFile, const FilterDimension &dimension)
{
    QStringList names, values;
    GetIniSection2Array(configFile.isEmpty() ? GetUserConfigFile() : configFile, AdvancedFilterSection(dimension.name), names,
                        values);
    return values;
}

// The filter table of each dimension, index for index.
QString FilterTable(qsizetype dimension)
{
    return AdvancedFilterTableNames().at(dimension);
}

} // namespace

QList<FilterDimension> FilterDimensions()
{
    return {
        {QStringLiteral("Discipline"), QStringLiteral("discipline_a"), QStringLiteral("discipline_b")},
        {QStringLiteral("Area"), QStringLiteral("area_a"), QStringLiteral("area_b")},
        {QStringLiteral("Model"), QStringLiteral("model_a"), QStringLiteral("model_b")},
        {QStringLiteral("Model status"), QStringLiteral("model_status_a"), QStringLiteral("model_status_b")},
        {QStringLiteral("Component"), QStringLiteral("comp_a"), QStringLiteral("comp_b")},
        {QStringLiteral("SiteID"), QStringLiteral("site_id_a"), QStringLiteral("site_id_b")},
        {QStringLiteral("Clash type"), QStringLiteral("type"), QString()},
    };
}

FilterDimension GetFilterDimension(const QString &name)
{
    return Frame("GetFilterDimension", [&] {
        for (const FilterDimension &dimension : FilterDimensions())
            if (dimension.name == name)
                return dimension;
        Raise(msg::UnknownFilterColumn, {name});
    });
}

QString AdvancedFilterSection(const QString &dimension)
{
    return QString::fromLatin1(option::AdvancedFilterWord) + dimension;
}

QString GetAdvancedFilter(const QString &configFile)
{
    return Frame("GetAdvancedFilter", [&] {
        QStringList conditions;
        for (const FilterDimension &dimension : FilterDimensions()) {
            const QStringList values = ExcludedValues(configFile, dimension);
            if (values.isEmpty())
                continue;
            // The list is joined and split at ",": a value holding a comma becomes two values.
            QString list = values.join(QLatin1Char(','));
            const bool hasNull = list.contains(kNotDefined);
            list.replace(kNotDefined + QLatin1Char(','), QString());
            list.replace(QLatin1Char(',') + kNotDefined, QString());
            list.replace(kNotDefined, QString());
            QStringList quoted;
            if (!list.isEmpty())
                for (const QString &value : list.split(QLatin1Char(',')))
                    quoted << DBQuote(value);
            conditions << DimensionCondition(dimension, quoted.join(QLatin1Char(',')), hasNull, {"AND", "OR"});
        }
        return JoinConditions(conditions, ReportCondition(configFile));
    });
}

QString GetAdvancedFilter3()
{
    return Frame("GetAdvancedFilter3", [&] {
        SqliteDb &db = ClashConnection();
        const QList<FilterDimension> dimensions = FilterDimensions();
        QStringList conditions;
        for (qsizetype i = 0; i < dimensions.size(); ++i) {
            const QString select = QStringLiteral("SELECT Name FROM ") + BracketName(FilterTable(i));
            if (db.Read(select + QStringLiteral(" LIMIT 1;")).IsEmpty())
                continue;
            const bool hasNull = !db.Read(select + QStringLiteral(" WHERE name = 'NOT DEFINED' LIMIT 1;")).IsEmpty();
            conditions << DimensionCondition(dimensions.at(i), select, hasNull, {"And", "Or"});
        }
        return JoinConditions(conditions, ReportCondition(QString()));
    });
}

void FillAdvancedFilterTables(const QString &configFile)
{
    Frame("FillAdvancedFilterTables", [&] {
        SqliteDb &db = ClashConnection();
        const QList<FilterDimension> dimensions = FilterDimensions();
        SqliteTransaction transaction(db);
        for (qsizetype i = 0; i < dimensions.size(); ++i) {
            const QString table = BracketName(FilterTable(i));
            db.Execute(QStringLiteral("DELETE FROM ") + table + QLatin1Char(';'));
            // Whole values, commas included, unlike the literal route.
            SqliteStatement insert(db, QStringLiteral("INSERT INTO ") + table + QStringLiteral(" VALUES (?1);"));
            for (const QString &value : ExcludedValues(configFile, dimensions.at(i))) {
                insert.Reset();
                insert.Bind(1, value);
                insert.Step();
            }
        }
        transaction.Commit();
    });
}

} // namespace fx

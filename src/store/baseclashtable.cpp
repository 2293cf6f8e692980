// base_clash_table: one denormalised row a clash, in order of unique_clash_id.

#include "store/clashtables.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/localdb.h"
#include "pds/pdstime.h"
#include "store/clashdefinitions.h"
#include "store/messages.h"
#include "store/workingdatabase.h"

namespace fx {

namespace {

// A component's description: the primary text, then "-" and the secondary one when there is one.
QString ComponentText(const QString &alias)
{
    return QStringLiteral("JCAT(%1.primary_descript, IIF(%1.secondary_descript <> '' AND %1.secondary_descript IS NOT NULL, "
                          "JCAT('-', %1.secondary_descript), ''))")
        .arg(alias);
}

// The centre of one axis rounded to 4 decimals as Jet's Format(.., '0') rounds; null when a
// bound is null. The divisor is real so that the text FORMAT gives is divided as a number.
QString Centre(const QString &axis)
{
    return QStringLiteral("IIF(min_%1 IS NOT NULL AND max_%1 IS NOT NULL, FORMAT((max_%1 + min_%1) / 2 * 10000.0, '0') / 10000.0, "
                          "NULL)")
        .arg(axis);
}

// The two sides of a pair joined with the greater first (as Jet compares text, case ignored),
// so that a-b and b-a fall together.
QString Structure(const QString &a, const QString &b)
{
    return QStringLiteral("IIF(%1 > %2 COLLATE NOCASE, JCAT(%1, ' - ', %2), JCAT(%2, ' - ', %1))").arg(a, b);
}

// One SWITCH over the pairs; SQLite takes at most 63 pairs a call, so the rest go into a nested
// SWITCH behind a last condition that always holds.
QString SwitchOf(const QStringList &pairs)
{
    constexpr qsizetype kPairs = 62;
    if (pairs.size() <= kPairs + 1)
        return QStringLiteral("SWITCH(") + pairs.join(QStringLiteral(", ")) + QLatin1Char(')');
    return QStringLiteral("SWITCH(") + pairs.mid(0, kPairs).join(QStringLiteral(", ")) + QStringLiteral(", 1, ")
           + SwitchOf(pairs.mid(kPairs)) + QLatin1Char(')');
}

// The type's name for the number `value` holds as text; a number without an entry reads null.
// Without any types the number stays.
QString TypeName(const QString &value)
{
    const QList<ClashDefinition> types = GetClashTypes();
    if (types.isEmpty())
        return value;
    QStringList pairs;
    for (const ClashDefinition &type : types)
        pairs << value + QStringLiteral(" = ") + DBQuote(QString::number(type.number)) + QStringLiteral(", ") + DBQuote(type.name);
    return SwitchOf(pairs);
}

// The model status names put in for their numbers one state after the other, as if each state
// replaced its number in turn: a name that is a later state's number goes on to that state's
// name. A number without a state stays.
QString ModelStatusName(const QString &value)
{
    const QList<ClashDefinition> states = GetModelStatus();
    if (states.isEmpty())
        return value;
    QString cases;
    for (const ClashDefinition &first : states) {
        QString result = QString::number(first.number);
        for (const ClashDefinition &state : states)
            if (result == QString::number(state.number))
                result = state.name;
        cases += QStringLiteral(" WHEN ") + DBQuote(QString::number(first.number)) + QStringLiteral(" THEN ") + DBQuote(result);
    }
    return QStringLiteral("CASE ") + value + cases + QStringLiteral(" ELSE ") + value + QStringLiteral(" END");
}

} // namespace

void CreateBaseClashTable(SqliteDb &db, const QString &project)
{
    Frame("CreateBaseClashTable", [&] {
        LogMessage(msg::CreatingBaseClashTable, {});
        DropLocalTable(db, BaseClashTableName());
        // Text columns hold type and model status numbers as digits until their names replace them.
        db.Execute(QStringLiteral(
            "CREATE TABLE [base_clash_table] ([clash_id] INT, [type] VARCHAR(255), [status] VARCHAR(255), [action] VARCHAR(255), "
            "[review_comment] VARCHAR(255), [recent_review_date] DATETIME, [site_id_a] VARCHAR(255), [discipline_a] VARCHAR(255), "
            "[area_a] VARCHAR(255), [model_a] VARCHAR(255), [model_status_a] VARCHAR(255), [comp_a] VARCHAR(255), "
            "[site_id_b] VARCHAR(255), [discipline_b] VARCHAR(255), [area_b] VARCHAR(255), [model_b] VARCHAR(255), "
            "[model_status_b] VARCHAR(255), [comp_b] VARCHAR(255), [action_discipline] VARCHAR(255), "
            "[action_area_a] VARCHAR(255), [action_area_b] VARCHAR(255), [easting] DOUBLE, [northing] DOUBLE, "
            "[elevation] DOUBLE, [discipline_structure] VARCHAR(255), [model_structure] VARCHAR(255), "
            "[site_id_structure] VARCHAR(255));")
                       .replace(QStringLiteral("VARCHAR(255)"), QString::fromLatin1(StoreTextType)));
        const QString select = QStringLiteral(
            // The names of types and model states, and the structure columns, are worked out as
            // the rows go in, not by updates of every row afterwards.
            "INSERT INTO [base_clash_table] SELECT joined.clash_id, %10, joined.status, joined.action, joined.review_comment, "
            "joined.recent_review_date, joined.site_id_a, joined.discipline_a, joined.area_a, joined.model_a, %11, "
            "joined.comp_a, joined.site_id_b, joined.discipline_b, joined.area_b, joined.model_b, %12, joined.comp_b, "
            "joined.action_discipline, joined.action_area_a, joined.action_area_b, joined.easting, joined.northing, "
            "joined.elevation, %7, %8, %9 FROM ("
            "SELECT pdtable_132.unique_clash_id AS clash_id, pdtable_132.recent_clash_type AS [type], "
            "IIF(if_approval_status = 2, 'Approved', 'Unapproved') AS [status], "
            "JCAT(IIF(if_approval_status = 2 AND pdtable_135.[action] = 2, 'Approve Real', IIF(if_approval_status = 2 AND "
            "pdtable_135.[action] = 3, 'Approve False', 'Unapprove')), ' Clash') AS [action], "
            "pdtable_135.review_comment AS review_comment, "
            "IIF(pdtable_135.review_date <> 0, %1, NULL) AS recent_review_date, "
            "IIF(pdtable_119.site_id IS NULL, 'No SiteID', pdtable_119.site_id) AS site_id_a, "
            "pdtable_111.discipline_name AS discipline_a, "
            "pdtable_112_2.area_name AS area_a, pdtable_113.model_no AS model_a, pdtable_113.model_status AS model_status_a, "
            "%2 AS comp_a, "
            "IIF(pdtable_119_1.site_id IS NULL, 'No SiteID', pdtable_119_1.site_id) AS site_id_b, "
            "pdtable_111_1.discipline_name AS discipline_b, "
            "pdtable_112_3.area_name AS area_b, pdtable_113_1.model_no AS model_b, "
            "pdtable_113_1.model_status AS model_status_b, %3 AS comp_b, "
            "pdtable_111_2.discipline_name AS action_discipline, "
            "IIF(pdtable_112.area_name IS NULL, 'Project', pdtable_112.area_name) AS action_area_a, "
            "IIF(pdtable_112_1.area_name IS NULL, 'Project', pdtable_112_1.area_name) AS action_area_b, "
            "%4 AS easting, %5 AS northing, %6 AS elevation "
            "FROM pdtable_132 "
            "LEFT JOIN [intersection] ON [intersection].unique_clash_id = pdtable_132.unique_clash_id "
            "LEFT JOIN pdtable_134 ON pdtable_132.comp_a_unique_id = pdtable_134.unique_comp_id AND "
            "pdtable_132.model_index_no_a = pdtable_134.model_index_no "
            "LEFT JOIN pdtable_134 AS pdtable_134_1 ON pdtable_132.comp_b_unique_id = pdtable_134_1.unique_comp_id AND "
            "pdtable_132.model_index_no_b = pdtable_134_1.model_index_no "
            "LEFT JOIN pdtable_111 ON pdtable_132.discipline_index_a = pdtable_111.discipline_indx_no "
            "LEFT JOIN pdtable_111 AS pdtable_111_1 ON pdtable_132.discipline_index_b = pdtable_111_1.discipline_indx_no "
            "LEFT JOIN pdtable_113 ON pdtable_132.discipline_index_a = pdtable_113.discipline_indx_no AND "
            "pdtable_132.model_index_no_a = pdtable_113.model_index_no "
            "LEFT JOIN pdtable_113 AS pdtable_113_1 ON pdtable_132.discipline_index_b = pdtable_113_1.discipline_indx_no AND "
            "pdtable_132.model_index_no_b = pdtable_113_1.model_index_no "
            "LEFT JOIN pdtable_112 ON pdtable_132.area_index_no = pdtable_112.area_index_no "
            "LEFT JOIN pdtable_112 AS pdtable_112_1 ON pdtable_132.area_index_no_b = pdtable_112_1.area_index_no "
            "LEFT JOIN pdtable_111 AS pdtable_111_2 ON pdtable_132.action_discipline = pdtable_111_2.discipline_indx_no "
            "LEFT JOIN pdtable_135 ON pdtable_132.unique_clash_id = pdtable_135.unique_clash_id "
            "LEFT JOIN pdtable_112 AS pdtable_112_2 ON pdtable_113.area_index_no = pdtable_112_2.area_index_no AND "
            "pdtable_113.discipline_indx_no = pdtable_112_2.discipline_indx_no "
            "LEFT JOIN pdtable_112 AS pdtable_112_3 ON pdtable_113_1.area_index_no = pdtable_112_3.area_index_no AND "
            "pdtable_113_1.discipline_indx_no = pdtable_112_3.discipline_indx_no "
            "LEFT JOIN pdtable_119 ON pdtable_113.model_index_no = pdtable_119.model_index_no "
            "LEFT JOIN pdtable_119 AS pdtable_119_1 ON pdtable_113_1.model_index_no = pdtable_119_1.model_index_no "
            "ORDER BY pdtable_132.unique_clash_id) AS joined;");
        WithJoinCache(db, [&] {
            db.Execute(select.arg(GetTimeStamp2DateSql(QStringLiteral("pdtable_135.review_date")), ComponentText(QStringLiteral("pdtable_134")),
                                  ComponentText(QStringLiteral("pdtable_134_1")), Centre(QStringLiteral("x")),
                                  Centre(QStringLiteral("y")), Centre(QStringLiteral("z")),
                                  Structure(QStringLiteral("joined.discipline_a"), QStringLiteral("joined.discipline_b")),
                                  Structure(QStringLiteral("joined.model_a"), QStringLiteral("joined.model_b")),
                                  Structure(QStringLiteral("joined.site_id_a"), QStringLiteral("joined.site_id_b")),
                                  // One call: names put in are never read again for placeholders.
                                  TypeName(QStringLiteral("CAST(joined.[type] AS TEXT)")),
                                  ModelStatusName(QStringLiteral("CAST(joined.model_status_a AS TEXT)")),
                                  ModelStatusName(QStringLiteral("CAST(joined.model_status_b AS TEXT)"))));
        });

        // The key holds only when every join gave a clash one row.
        if (!db.Read(QStringLiteral("SELECT clash_id FROM [base_clash_table] GROUP BY clash_id HAVING COUNT(*) > 1 OR "
                                    "clash_id IS NULL LIMIT 1;"))
                 .IsEmpty())
            Raise(msg::DoubleClashes, {project, QStringLiteral("\n")});
        // Named apart from the per-column indices, which IndexAllColumns drops and builds anew.
        db.Execute(QStringLiteral("CREATE UNIQUE INDEX [pk_base_clash_table] ON [base_clash_table] ([clash_id]);"));

        IndexAllColumns(db, BaseClashTableName());
        const QString count = db.Read(QStringLiteral("SELECT COUNT(*) FROM [base_clash_table];")).Value(0, 0).toString();
        LogMessage(msg::BaseClashTableCreated, {count});
    });
}

} // namespace fx

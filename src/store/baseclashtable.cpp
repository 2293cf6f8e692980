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

void TranslateTypes(SqliteDb &db)
{
    const QList<ClashDefinition> types = GetClashTypes();
    if (types.isEmpty())
        return;
    QStringList pairs;
    for (const ClashDefinition &type : types)
        pairs << QStringLiteral("[type] = ") + DBQuote(QString::number(type.number)) + QStringLiteral(", ") + DBQuote(type.name);
    // A number without an entry reads null: the clash has no type name.
    db.Execute(QStringLiteral("UPDATE [base_clash_table] SET [type] = ") + SwitchOf(pairs) + QLatin1Char(';'));
}

void TranslateModelStatus(SqliteDb &db)
{
    const QList<ClashDefinition> states = GetModelStatus();
    for (const char *column : {"model_status_a", "model_status_b"}) {
        for (const ClashDefinition &state : states)
            db.Execute(QStringLiteral("UPDATE [base_clash_table] SET [%1] = %2 WHERE ([%1] = %3);")
                           .arg(QString::fromLatin1(column), DBQuote(state.name), DBQuote(QString::number(state.number))));
    }
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
            // The structure columns are worked out from the sides as the rows go in, not by an
            // update of every row afterwards.
            "INSERT INTO [base_clash_table] SELECT joined.*, %7, %8, %9 FROM ("
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
        db.Execute(select.arg(GetTimeStamp2DateSql(QStringLiteral("pdtable_135.review_date")), ComponentText(QStringLiteral("pdtable_134")),
                              ComponentText(QStringLiteral("pdtable_134_1")), Centre(QStringLiteral("x")),
                              Centre(QStringLiteral("y")), Centre(QStringLiteral("z")),
                              Structure(QStringLiteral("joined.discipline_a"), QStringLiteral("joined.discipline_b")),
                              Structure(QStringLiteral("joined.model_a"), QStringLiteral("joined.model_b")),
                              Structure(QStringLiteral("joined.site_id_a"), QStringLiteral("joined.site_id_b"))));

        // The key holds only when every join gave a clash one row.
        if (!db.Read(QStringLiteral("SELECT clash_id FROM [base_clash_table] GROUP BY clash_id HAVING COUNT(*) > 1 OR "
                                    "clash_id IS NULL LIMIT 1;"))
                 .IsEmpty())
            Raise(msg::DoubleClashes, {project, QStringLiteral("\n")});
        // Named apart from the per-column indices, which IndexAllColumns drops and builds anew.
        db.Execute(QStringLiteral("CREATE UNIQUE INDEX [pk_base_clash_table] ON [base_clash_table] ([clash_id]);"));

        TranslateTypes(db);
        TranslateModelStatus(db);
        IndexAllColumns(db, BaseClashTableName());
        const QString count = db.Read(QStringLiteral("SELECT COUNT(*) FROM [base_clash_table];")).Value(0, 0).toString();
        LogMessage(msg::BaseClashTableCreated, {count});
    });
}

} // namespace fx

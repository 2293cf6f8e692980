#include "store/clashtables.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "store/clashfile.h"
#include "store/clashview.h"
#include "store/messages.h"
#include "store/workingdatabase.h"

namespace fx {

namespace {

// A number as an SQL literal that SQLite divides by as a real, as Jet's "/" always does.
QString RealLiteral(double value)
{
    QString text = QString::number(value, 'g', 17);
    if (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e')))
        text += QStringLiteral(".0");
    return text;
}

// Jet's overlap of one axis: the lower bound is the lo of the range that starts inside the
// other; `none` is what stands where the ranges miss each other.
QString LowerBound(const QString &axis, const QString &factor, const char *none)
{
    const QString a = QStringLiteral("comp_a_range_%1_").arg(axis), b = QStringLiteral("comp_b_range_%1_").arg(axis);
    return QStringLiteral("IIF(%1lo <= %2lo AND %2lo <= %1hi, %2lo / %3, IIF(%2lo <= %1lo AND %1lo <= %2hi, %1lo / %3, %4))")
        .arg(a, b, factor, QString::fromLatin1(none));
}

QString UpperBound(const QString &axis, const QString &factor)
{
    const QString a = QStringLiteral("comp_a_range_%1_").arg(axis), b = QStringLiteral("comp_b_range_%1_").arg(axis);
    return QStringLiteral("IIF(%1lo <= %2hi AND %2hi <= %1hi, %2hi / %3, IIF(%2lo <= %1hi AND %1hi <= %2hi, %1hi / %3, NULL))")
        .arg(a, b, factor);
}

// Older clash files lack the action column of `table`; it is derived from the review rows,
// without the " Clash" that a fresh load writes.
void UpgradeActionColumn(SqliteDb &db, const QString &table)
{
    if (!IsLocalTableExists(db, table) || IsLocalColumnExists(db, table, QStringLiteral("action")))
        return;
    db.Execute(QStringLiteral("ALTER TABLE [%1] ADD COLUMN [action] VARCHAR(255);").arg(table));
    const QString review = QStringLiteral("(SELECT pdtable_135.[action] FROM pdtable_135 WHERE pdtable_135.unique_clash_id = "
                                          "[%1].clash_id LIMIT 1)")
                               .arg(table);
    db.Execute(QStringLiteral("UPDATE [%1] SET [action] = IIF(%2 = 2, 'Approve Real', IIF(%2 = 3, 'Approve False', 'Unapprove'));")
                   .arg(table, review));
}

} // namespace

QString BaseClashTableName() { return QStringLiteral("base_clash_table"); }
QString ClashesTableName() { return QStringLiteral("clashes"); }
QString LinkagesTableName() { return QStringLiteral("linkages"); }
QString IntersectionTableName() { return QStringLiteral("intersection"); }

QStringList AdvancedFilterTableNames()
{
    QStringList names;
    for (const QString &word : QStringLiteral("Discipline;Area;Model;Model status;Component;SiteID;Clash type").split(QLatin1Char(';')))
        names << QStringLiteral("AdvancedFilter_") + word;
    return names;
}

void DropLocalTable(SqliteDb &db, const QString &table)
{
    Frame("DropLocalTable", [&] { db.Execute(QStringLiteral("DROP TABLE IF EXISTS ") + BracketName(table)); });
}

void InitClashTables(SqliteDb &db, const QString &project, bool rebuild)
{
    Frame("InitClashTables", [&] {
        ResetRememberedClashFilters();
        if (rebuild) {
            CreateIntersectionTable(db, project);
            CreateLinkageTable(db);
            CreateBaseClashTable(db, project);
            CreateAdvancedFilterTables(db);
        }
        UpgradeActionColumn(db, BaseClashTableName());
        UpgradeActionColumn(db, ClashesTableName());
    });
}

void CreateIntersectionTable(SqliteDb &db, const QString &project)
{
    Frame("CreateIntersectionTable", [&] {
        LogMessage(msg::CreatingIntersectionTable, {});
        DropLocalTable(db, IntersectionTableName());
        db.Execute(QStringLiteral("CREATE TABLE [intersection] ([unique_clash_id] INT, [min_x] DOUBLE, [max_x] DOUBLE, "
                                  "[min_y] DOUBLE, [max_y] DOUBLE, [min_z] DOUBLE, [max_z] DOUBLE);"));
        // Design units a master unit.
        const QString factor = RealLiteral(double(GetUorPerSub(db, project)) * GetSubPerMast(db, project));
        const QString x = QStringLiteral("x"), y = QStringLiteral("y"), z = QStringLiteral("z");
        // A missed x overlap leaves min_x at -1, unlike every other bound: kept as it always was.
        db.Execute(QStringLiteral("INSERT INTO [intersection] SELECT unique_clash_id, %1 AS min_x, %2 AS max_x, %3 AS min_y, "
                                  "%4 AS max_y, %5 AS min_z, %6 AS max_z FROM pdtable_133;")
                       .arg(LowerBound(x, factor, "-1"), UpperBound(x, factor), LowerBound(y, factor, "NULL"),
                            UpperBound(y, factor), LowerBound(z, factor, "NULL"), UpperBound(z, factor)));
        CreateIndex(db, IntersectionTableName(), QStringLiteral("unique_clash_id"));
        LogMessage(msg::IntersectionTableCreated, {});
    });
}

void CreateLinkageTable(SqliteDb &db)
{
    Frame("CreateLinkageTable", [&] {
        LogMessage(msg::CreatingLinkagesTable, {});
        DropLocalTable(db, LinkagesTableName());
        const QString components = QStringLiteral("pdtable_134");
        if (!IsLocalColumnExists(db, components, QStringLiteral("partition_no"))) {
            db.Execute(QStringLiteral("ALTER TABLE [pdtable_134] ADD COLUMN [partition_no] INT;"));
            db.Execute(QStringLiteral("UPDATE [pdtable_134] SET [partition_no] = (SELECT [pdtable_113].[partition_no] FROM "
                                      "[pdtable_113] WHERE [pdtable_113].[model_index_no] = [pdtable_134].[model_index_no] "
                                      "LIMIT 1);"));
        }
        if (!IsLocalColumnExists(db, components, QStringLiteral("linkage"))) {
            db.Execute(QStringLiteral("ALTER TABLE [pdtable_134] ADD COLUMN [linkage] VARCHAR(255);"));
            // Row numbers of tables 3 to 8 are unsigned 32-bit numbers holding the partition in
            // steps of 524288; beyond 2^31 they arrive negative.
            db.Execute(QStringLiteral(
                "UPDATE [pdtable_134] SET [linkage] = JCAT('0 ', [comp_table_number], ' ', ([comp_row_number] + 4294967296) - "
                "524288 * [partition_no], ' ', [partition_no] * 8) WHERE (([comp_table_number] BETWEEN 3 AND 8) AND "
                "([comp_row_number] < 0));"));
            db.Execute(QStringLiteral(
                "UPDATE [pdtable_134] SET [linkage] = JCAT('0 ', [comp_table_number], ' ', [comp_row_number] - 524288 * "
                "[partition_no], ' ', [partition_no] * 8) WHERE (([comp_table_number] BETWEEN 3 AND 8) AND "
                "([comp_row_number] > 0));"));
            db.Execute(QStringLiteral(
                "UPDATE [pdtable_134] SET [linkage] = JCAT(IIF([comp_table_number] = 21, '-32768 ', '0 '), [comp_table_number], "
                "' ', [comp_row_number], ' 0') WHERE ([comp_table_number] = 21 OR [comp_table_number] = 22);"));
            db.Execute(QStringLiteral(
                "UPDATE [pdtable_134] SET [linkage] = JCAT('4171 ', [comp_table_number], ' ', [comp_row_number], ' 0') "
                "WHERE ([comp_table_number] = 36 OR [comp_table_number] = 91 OR [comp_table_number] = 92);"));
        }
        db.Execute(QStringLiteral("CREATE TABLE [linkages] ([unique_clash_id] INT, [linkage_a] VARCHAR(255), "
                                  "[linkage_b] VARCHAR(255));"));
        // The components as both joins read them, so that a lookup stays inside one index.
        db.Execute(QStringLiteral("CREATE INDEX IF NOT EXISTS [ix_pdtable_134_lookup] ON [pdtable_134] ([unique_comp_id], "
                                  "[model_index_no], [linkage], [primary_descript], [secondary_descript]);"));
        WithJoinCache(db, [&] {
            db.Execute(QStringLiteral(
                "INSERT INTO [linkages] SELECT [pdtable_132].[unique_clash_id], [pdtable_134].[linkage] AS [linkage_a], "
                "[pdtable_134_1].[linkage] AS [linkage_b] FROM [pdtable_132] LEFT JOIN [pdtable_134] ON "
                "[pdtable_132].[comp_a_unique_id] = [pdtable_134].[unique_comp_id] LEFT JOIN [pdtable_134] AS pdtable_134_1 ON "
                "[pdtable_132].[comp_b_unique_id] = [pdtable_134_1].[unique_comp_id];"));
        });
        LogMessage(msg::LinkagesTableCreated, {});
    });
}

void CreateAdvancedFilterTables(SqliteDb &db)
{
    Frame("CreateAdvancedFilterTables", [&] {
        LogMessage(msg::CreatingAdvancedFilterTables, {});
        for (const QString &table : AdvancedFilterTableNames()) {
            LogMessage(msg::CreatingNamedTable, {table});
            DropLocalTable(db, table);
            db.Execute(QStringLiteral("CREATE TABLE ") + BracketName(table) + QStringLiteral(" ([name] VARCHAR(255));"));
            CreateIndex(db, table, QStringLiteral("name"));
        }
        LogMessage(msg::AdvancedFilterTablesCreated, {});
    });
}

} // namespace fx

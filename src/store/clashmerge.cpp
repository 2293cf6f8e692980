// The merge of a write-back as statements on the private database. Each statement carries the
// rule it stands for; the store's texts compare without regard to case, as the clash texts do
// everywhere else in the store.

#include "store/clashmerge.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/localdb.h"
#include "pds/pdstime.h"
#include "pds/tableimporter.h"
#include "store/clashtables.h"
#include "store/messages.h"

namespace fx {

namespace {

constexpr char kStoreSchema[] = "fx_store";
constexpr char kClashTable[] = "pdtable_132";
constexpr char kReviewTable[] = "pdtable_135";

// The project's code of the store's action text: only the full texts are known.
constexpr char kActionCode[] =
    "IIF(LCASE([base_clash_table].[action]) = 'approve real clash', 2, IIF(LCASE([base_clash_table].[action]) = "
    "'approve false clash', 3, 1))";
constexpr char kStatusCode[] = "IIF(LCASE([base_clash_table].[status]) = 'approved', 2, 1)";

// The newest check run of either area of the clash row in [pdtable_132].
constexpr char kNewestRun[] =
    "(SELECT MAX([completion_date]) FROM [pdtable_131] WHERE([pdtable_131].[area_index_no] = [pdtable_132].[area_index_no] "
    "OR [pdtable_131].[area_index_no] = [pdtable_132].[area_index_no_b]))";

// The review columns a new row is made of, in the project's order after system_unique_no.
constexpr char kReviewColumns[] =
    "[unique_clash_id], [review_date], [review_user_no], [responsib_user_no], [action], [review_comment], [approval_method]";

// Detaches the store from the private connection on every way out.
class AttachedStore
{
public:
    AttachedStore(SqliteDb &db, const QString &file)
        : m_db(db)
    {
        m_db.Execute(QStringLiteral("ATTACH DATABASE %1 AS [%2];").arg(DBQuote(file), QLatin1String(kStoreSchema)));
    }
    AttachedStore(const AttachedStore &) = delete;
    AttachedStore &operator=(const AttachedStore &) = delete;
    ~AttachedStore()
    {
        try {
            m_db.Execute(QStringLiteral("DETACH DATABASE [%1];").arg(QLatin1String(kStoreSchema)));
        } catch (const std::exception &) {
            // The connection closes next, which detaches as well.
        }
    }

private:
    SqliteDb &m_db;
};

// The columns of a table with their declared types, for a table made in its image.
QStringList ColumnDefinitions(SqliteDb &db, const QString &table)
{
    SqliteStatement query(db, QStringLiteral("SELECT name, type FROM pragma_table_info(?1) ORDER BY cid"));
    query.Bind(1, table);
    QStringList definitions;
    while (query.Step())
        definitions << BracketName(query.Column(0).toString()) + QLatin1Char(' ') + query.Column(1).toString();
    return definitions;
}

} // namespace

qint64 CopyStoreTables(const QString &storeFile, const QString &database)
{
    return Frame("CopyStoreTables", [&] {
        SqliteDb db(database);
        {
            const AttachedStore store(db, storeFile);
            for (const QString &table : {BaseClashTableName(), QStringLiteral("pdtable_111")}) {
                // The store's own statement: the columns keep their types and their way of comparing.
                SqliteStatement schema(db, QStringLiteral("SELECT sql FROM [%1].sqlite_master WHERE type = 'table' AND "
                                                          "name = ?1 COLLATE NOCASE")
                                               .arg(QLatin1String(kStoreSchema)));
                schema.Bind(1, table);
                if (schema.Step())
                    db.Execute(schema.Column(0).toString());
                db.Execute(QStringLiteral("INSERT INTO main.%1 SELECT * FROM [%2].%1;")
                               .arg(BracketName(table), QLatin1String(kStoreSchema)));
            }
        }
        const qint64 clashes = db.Read(QStringLiteral("SELECT COUNT(*) FROM [base_clash_table];")).Value(0, 0).toLongLong();
        db.Close();
        return clashes;
    });
}

ClashMerge::ClashMerge(SqliteDb &db, const QString &schema)
    : m_db(db)
    , m_schema(schema)
{
}

qint64 ClashMerge::Logged(const char *message, const char *table, const QString &sql)
{
    const qint64 changed = m_db.ExecuteCount(sql);
    LogMessage(message, {QLatin1String(table), QString::number(changed)});
    return changed;
}

qint64 ClashMerge::Count(const char *table) const
{
    return m_db.Read(QStringLiteral("SELECT COUNT(*) FROM [%1];").arg(QLatin1String(table))).Value(0, 0).toLongLong();
}

void ClashMerge::Prepare()
{
    Frame("ClashMerge::Prepare", [&] {
        CreateIndex(m_db, BaseClashTableName(), QStringLiteral("clash_id"));
        CreateIndex(m_db, QLatin1String(kClashTable), QStringLiteral("unique_clash_id"));
        CreateIndex(m_db, QLatin1String(kReviewTable), QStringLiteral("unique_clash_id"));
        // Per area and discipline only the newest check run stays.
        m_db.Execute(QStringLiteral(
            "DELETE FROM [pdtable_131] AS a WHERE(EXISTS(SELECT 1 FROM [pdtable_131] AS b WHERE(a.[discipline_indx_no] = "
            "b.[discipline_indx_no] AND a.[area_index_no] = b.[area_index_no] AND b.[completion_date] > a.[completion_date])));"));
        m_counts.schema132 = Count(kClashTable);
        m_counts.schema135 = Count(kReviewTable);
        LogMessage(msg::SchemaCurrentRecordsCount, {QLatin1String(kClashTable), m_schema, QString::number(m_counts.schema132)});
        LogMessage(msg::SchemaCurrentRecordsCount, {QLatin1String(kReviewTable), m_schema, QString::number(m_counts.schema135)});
    });
}

void ClashMerge::AddReviewTimestamps()
{
    m_db.Execute(QStringLiteral("ALTER TABLE [base_clash_table] ADD COLUMN [review_timestamp] INT;"));
    m_db.Execute(QStringLiteral("UPDATE [base_clash_table] SET [review_timestamp] = %1 WHERE(NOT [recent_review_date] IS NULL);")
                     .arg(GetDate2TimeStampSql(QStringLiteral("[recent_review_date]"))));
}

qint64 ClashMerge::InsertNewReviews()
{
    // A clash reviewed here after the newest check run of one of its areas, with no review row
    // of that age in the project, gets a new row; older rows stay as its history.
    m_db.Execute(QStringLiteral("CREATE TABLE [_temp_table2] AS SELECT * FROM [pdtable_135] WHERE(1 = 0);"));
    m_db.Execute(QStringLiteral(
        "INSERT INTO [_temp_table2] (%1) SELECT [base_clash_table].[clash_id] AS [unique_clash_id], 0 AS [review_date], "
        "0 AS [review_user_no], 0 AS [responsib_user_no], 0 AS [action], NULL AS [review_comment], 0 AS [approval_method] "
        "FROM [base_clash_table], [pdtable_132] WHERE([pdtable_132].[unique_clash_id] = [base_clash_table].[clash_id] AND "
        "[base_clash_table].[review_timestamp] >= %2);")
                     .arg(QLatin1String(kReviewColumns), QLatin1String(kNewestRun)));
    m_db.Execute(QStringLiteral(
        "DELETE FROM [_temp_table2] AS a WHERE(EXISTS(SELECT 1 FROM [pdtable_132], [pdtable_135] AS b WHERE(a.[unique_clash_id] = "
        "b.[unique_clash_id] AND [pdtable_132].[unique_clash_id] = [b].[unique_clash_id] AND b.[review_date] >= %1)));")
                     .arg(QLatin1String(kNewestRun)));

    // The counter hands out the project's next free numbers.
    m_db.Execute(QStringLiteral("CREATE TABLE [_temp_table] (%1, [ID] INTEGER PRIMARY KEY AUTOINCREMENT);")
                     .arg(ColumnDefinitions(m_db, QLatin1String(kReviewTable)).join(QStringLiteral(", "))));
    const qint64 highest =
        m_db.Read(QStringLiteral("SELECT MAX([system_unique_no]) FROM [pdtable_135];")).Value(0, 0).toLongLong();
    SetAutoNumberColumnStartID(m_db, QStringLiteral("_temp_table"), QStringLiteral("ID"), highest + 1);
    m_db.Execute(QStringLiteral("INSERT INTO [_temp_table] (%1) SELECT %1 FROM [_temp_table2] ORDER BY [unique_clash_id];")
                     .arg(QLatin1String(kReviewColumns)));
    return Logged(msg::MergeRecordsInserted, kReviewTable,
                  QStringLiteral("INSERT INTO [pdtable_135] ([system_unique_no], %1) SELECT [ID] AS [system_unique_no], %1 "
                                 "FROM [_temp_table];")
                      .arg(QLatin1String(kReviewColumns)));
}

qint64 ClashMerge::UpdateNewestReviews()
{
    // The newest review row of a clash takes the local review when that is later and differs;
    // a new row of the step before, dated 0, is filled here. Null against a text differs.
    return Logged(msg::MergeRecordsUpdated, kReviewTable, QStringLiteral(
        "UPDATE [pdtable_135] SET [review_date] = [base_clash_table].[review_timestamp], [action] = %1, "
        "[review_comment] = [base_clash_table].[review_comment], [approval_method] = %2 FROM [base_clash_table] "
        "WHERE([pdtable_135].[unique_clash_id] = [base_clash_table].[clash_id] AND [pdtable_135].[system_unique_no] = "
        "(SELECT MAX([pdtable_135_1].[system_unique_no]) FROM [pdtable_135] AS [pdtable_135_1] WHERE([pdtable_135].[unique_clash_id] "
        "= [pdtable_135_1].[unique_clash_id])) AND [pdtable_135].[review_date] < [base_clash_table].[review_timestamp] AND "
        "([pdtable_135].[action] <> %1 OR [pdtable_135].[review_comment] <> [base_clash_table].[review_comment] COLLATE NOCASE OR "
        "([pdtable_135].[review_comment] IS NULL AND NOT [base_clash_table].[review_comment] IS NULL) OR (NOT "
        "[pdtable_135].[review_comment] IS NULL AND [base_clash_table].[review_comment] IS NULL)));")
                      .arg(QLatin1String(kActionCode), QLatin1String(kStatusCode)));
}

qint64 ClashMerge::UpdateClashRows()
{
    // A clash row takes the store's status, the completion date of its area's check run and the
    // action discipline found by name, when one differs and the store is later than the
    // project as found, or the clash has just got its first review row. The joins go into a
    // derived table, as SQLite's UPDATE ... FROM can't join on the row being changed.
    return Logged(msg::MergeRecordsUpdated, kClashTable, QStringLiteral(
        "UPDATE [pdtable_132] SET [if_approval_status] = [j].[status_code], [recent_review_date] = [j].[completion_date], "
        "[action_discipline] = [j].[discipline_indx_no] FROM (SELECT [pdtable_132].rowid AS [row_id], %1 AS [status_code], "
        "[base_clash_table].[review_timestamp] AS [review_timestamp], [pdtable_111].[discipline_indx_no] AS [discipline_indx_no], "
        "[pdtable_131].[completion_date] AS [completion_date] FROM (([pdtable_132] INNER JOIN [base_clash_table] ON "
        "([pdtable_132].[unique_clash_id] = [base_clash_table].[clash_id])) LEFT JOIN [pdtable_111] ON "
        "([base_clash_table].[action_discipline] = [pdtable_111].[discipline_name])) LEFT JOIN [pdtable_131] ON "
        "([pdtable_131].[area_index_no] = [pdtable_132].[area_index_no] OR [pdtable_131].[area_index_no] = "
        "[pdtable_132].[area_index_no_b])) AS [j] WHERE([j].[row_id] = [pdtable_132].rowid AND "
        "([pdtable_132].[if_approval_status] <> [j].[status_code] OR [pdtable_132].[recent_review_date] <> [j].[completion_date] OR "
        "[pdtable_132].[action_discipline] <> [j].[discipline_indx_no]) AND ([j].[review_timestamp] > (SELECT MAX([review_date]) "
        "FROM [org_pdtable_135] WHERE([pdtable_132].[unique_clash_id] = [org_pdtable_135].[unique_clash_id])) OR EXISTS(SELECT 1 "
        "FROM [pdtable_135] WHERE([pdtable_132].[unique_clash_id] = [pdtable_135].[unique_clash_id] AND NOT EXISTS(SELECT 1 FROM "
        "[org_pdtable_135] WHERE([pdtable_135].[unique_clash_id] = [org_pdtable_135].[unique_clash_id]))))));")
                      .arg(QLatin1String(kStatusCode)));
}

bool ClashMerge::Merge(bool keepOriginalClashRows)
{
    return Frame("ClashMerge::Merge", [&] {
        LogMessage(msg::CheckingForChanges, {});
        AddReviewTimestamps();
        m_db.Execute(QStringLiteral("CREATE TABLE [org_pdtable_135] AS SELECT * FROM [pdtable_135];"));
        CreateIndex(m_db, QStringLiteral("org_pdtable_135"), QStringLiteral("unique_clash_id"));
        if (keepOriginalClashRows)
            m_db.Execute(QStringLiteral("CREATE TABLE [org_pdtable_132] AS SELECT rowid AS [row_id], * FROM [pdtable_132];"));

        bool changesFound = InsertNewReviews() > 0;
        changesFound = UpdateNewestReviews() > 0 || changesFound;
        changesFound = UpdateClashRows() > 0 || changesFound;

        m_counts.merged132 = Count(kClashTable);
        m_counts.merged135 = Count(kReviewTable);
        LogMessage(msg::StoreRecordsCount, {QLatin1String(kClashTable), QString::number(m_counts.merged132)});
        LogMessage(msg::StoreRecordsCount, {QLatin1String(kReviewTable), QString::number(m_counts.merged135)});
        return changesFound;
    });
}

} // namespace fx

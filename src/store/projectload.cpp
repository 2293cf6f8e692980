// The merged clash tables back into the project, and what the project holds afterwards.

#include "store/projectload.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/log.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "store/backupfiles.h"
#include "store/messages.h"

namespace fx {

namespace {

// Rows of the merge that differ from the project as found, with the statement that writes them.
struct ChangedRows
{
    const char *table;
    const char *select;
    const char *statement;
};

// The clash rows take three columns; review rows four, or are new. The values of each select
// come in the order of the statement's markers.
constexpr ChangedRows kChangedClashes{
    "pdtable_132",
    "SELECT [n].[if_approval_status], [n].[recent_review_date], [n].[action_discipline], [n].[unique_clash_id] "
    "FROM [pdtable_132] AS [n] INNER JOIN [org_pdtable_132] AS [o] ON ([o].[row_id] = [n].rowid) "
    "WHERE([n].[if_approval_status] IS NOT [o].[if_approval_status] OR [n].[recent_review_date] IS NOT "
    "[o].[recent_review_date] OR [n].[action_discipline] IS NOT [o].[action_discipline]) ORDER BY [n].[unique_clash_id];",
    "UPDATE pdtable_132 SET if_approval_status = ?, recent_review_date = ?, action_discipline = ? WHERE unique_clash_id = ?"};
constexpr ChangedRows kChangedReviews{
    "pdtable_135",
    "SELECT [n].[review_date], [n].[action], [n].[review_comment], [n].[approval_method], [n].[system_unique_no] "
    "FROM [pdtable_135] AS [n] INNER JOIN [org_pdtable_135] AS [o] ON ([o].[system_unique_no] = [n].[system_unique_no]) "
    "WHERE([n].[review_date] IS NOT [o].[review_date] OR [n].[action] IS NOT [o].[action] OR [n].[review_comment] IS NOT "
    "[o].[review_comment] OR [n].[approval_method] IS NOT [o].[approval_method]) ORDER BY [n].[system_unique_no];",
    "UPDATE pdtable_135 SET review_date = ?, action = ?, review_comment = ?, approval_method = ? WHERE system_unique_no = ?"};
constexpr ChangedRows kNewReviews{
    "pdtable_135",
    "SELECT [system_unique_no], [unique_clash_id], [review_date], [review_user_no], [responsib_user_no], [action], "
    "[review_comment], [approval_method] FROM [pdtable_135] WHERE(NOT EXISTS(SELECT 1 FROM [org_pdtable_135] WHERE("
    "[org_pdtable_135].[system_unique_no] = [pdtable_135].[system_unique_no]))) ORDER BY [system_unique_no];",
    "INSERT INTO pdtable_135 (system_unique_no, unique_clash_id, review_date, review_user_no, responsib_user_no, action, "
    "review_comment, approval_method) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"};

StatementBatch BatchOf(SqliteDb &db, const ChangedRows &changed)
{
    return {QString::fromLatin1(changed.statement), db.Read(QString::fromLatin1(changed.select)).Rows()};
}

// The tool's log into ours; a log that can't be copied must not hide how the load ended.
void CopyToolLog(const QString &toolLog)
{
    try {
        if (IsFileExists(toolLog))
            AppendFileToLog(toolLog);
    } catch (const std::exception &) {
    }
}

// rislod replaces the rows of both tables with the dump's; its log joins ours whatever the end.
void LoadThroughRIS(CRIS &cris, const QString &schema, const QString &loadDump, const QString &toolLog)
{
    LogMessage(msg::LoadingFromRISDump, {loadDump});
    try {
        cris.RISLoad(loadDump, schema, QString::fromLatin1(LoadedClashTables), RISLoadMode::Clear, 100, toolLog, false);
    } catch (...) {
        CopyToolLog(toolLog);
        throw;
    }
    CopyToolLog(toolLog);
}

// Only the rows that differ from the project as found go in, all in one transaction: a failure
// or a process that dies on the way leaves the project as it was.
void LoadThroughTransaction(CRIS &cris, const QString &schema, SqliteDb &db)
{
    LogMessage(msg::LoadingInTransaction, {schema});
    CreateIndex(db, QStringLiteral("org_pdtable_135"), QStringLiteral("system_unique_no"));
    const QList<StatementBatch> batches{BatchOf(db, kChangedClashes), BatchOf(db, kChangedReviews), BatchOf(db, kNewReviews)};
    const QList<qint64> written = cris.DBWriteBatches(schema, batches);
    LogMessage(msg::SchemaRowsWritten, {QLatin1String(kChangedClashes.table), schema, QString::number(written.at(0)),
                                        QStringLiteral("0")});
    LogMessage(msg::SchemaRowsWritten, {QLatin1String(kNewReviews.table), schema, QString::number(written.at(1)),
                                        QString::number(written.at(2))});
}

qint64 SchemaCount(CRIS &cris, const QString &schema, const char *table)
{
    const qint64 count = cris.DBRead(schema, QStringLiteral("SELECT COUNT(*) FROM %1;").arg(QLatin1String(table)))
                             .Value(0, 0)
                             .toLongLong();
    LogMessage(msg::SchemaNewRecordsCount, {QLatin1String(table), schema, QString::number(count)});
    return count;
}

} // namespace

void LoadProjectClashTables(CRIS &cris, const QString &schema, SqliteDb &db, const QString &database,
                            const BackupFiles &backups, const QString &toolLog)
{
    Frame("LoadProjectClashTables", [&] {
        LogMessage(msg::CreatingRISDumpFile, {});
        cris.RISDumpCreate(GetFolderOfPath(backups.loadDump), database, schema, QString::fromLatin1(LoadedClashTables),
                           QString(), backups.loadDump);
        if (cris.GetDBConType() == DBConType::RIS)
            LoadThroughRIS(cris, schema, backups.loadDump, toolLog);
        else
            LoadThroughTransaction(cris, schema, db);
    });
}

SchemaClashCounts ReadSchemaClashCounts(CRIS &cris, const QString &schema)
{
    return Frame("ReadSchemaClashCounts", [&] {
        LogMessage(msg::ValidatingProjectSchema, {});
        SchemaClashCounts counts;
        counts.clashes = SchemaCount(cris, schema, "pdtable_132");
        counts.reviews = SchemaCount(cris, schema, "pdtable_135");
        return counts;
    });
}

void CleanSchemaAfterLoad(CRIS &cris, const QString &schema)
{
    Frame("CleanSchemaAfterLoad", [&] {
        if (cris.GetDBConType() != DBConType::RIS)
            return;
        LogMessage(msg::RunningRISClean, {});
        cris.RISClean(schema);
    });
}

} // namespace fx

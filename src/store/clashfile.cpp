#include "store/clashfile.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/loggedframe.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/projectschema.h"
#include "pds/scratchfiles.h"
#include "pds/tableimporter.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"
#include "store/messages.h"

#include <QHash>

namespace fx {

namespace {

constexpr char kDGNSettings[] = "dgn_settings";
constexpr char kProjFileSettings[] = "proj_file_settings";
constexpr char kSourceSchema[] = "fx_store";

// The units read so far, for one project's store: another opening of the same project (a
// clash file saved elsewhere) may carry other units.
struct RememberedUnits
{
    QString project;
    QString file;
    QHash<QString, QVariant> values;
};

RememberedUnits &Remembered()
{
    static RememberedUnits units;
    return units;
}

QVariant StoreUnit(SqliteDb &db, const QString &project, const QString &column)
{
    RememberedUnits &units = Remembered();
    if (units.project != project || units.file != db.File())
        units = RememberedUnits{project, db.File(), {}};
    auto it = units.values.constFind(column);
    if (it == units.values.cend()) {
        const Recordset rows = db.Read(QStringLiteral("SELECT [%1] FROM [dgn_settings];").arg(column));
        it = units.values.insert(column, rows.IsEmpty() ? QVariant() : rows.Value(0, 0));
    }
    return *it;
}

// A settings table holds one row: the old one goes, or the table is made, in the transaction
// of the new row, so a failed write leaves the old row in place.
void ReplaceSettingsRow(SqliteDb &db, const char *table, const char *createStatement, const QString &insertStatement)
{
    SqliteTransaction transaction(db);
    if (IsLocalTableExists(db, QString::fromLatin1(table)))
        db.Execute(QStringLiteral("DELETE FROM [%1];").arg(QLatin1String(table)));
    else
        db.Execute(QString::fromLatin1(createStatement));
    db.Execute(insertStatement);
    transaction.Commit();
}

void WriteDGNSettings(SqliteDb &db, const DGNSettings &units)
{
    ReplaceSettingsRow(db, kDGNSettings,
                       "CREATE TABLE [dgn_settings] (master_units VARCHAR(2), sub_units VARCHAR(2), sub_per_mast INT, "
                       "uor_per_sub INT);",
                       QStringLiteral("INSERT INTO [dgn_settings] VALUES (%1, %2, %3, %4);")
                           .arg(DBQuote(units.masterUnits), DBQuote(units.subUnits))
                           .arg(units.subPerMaster)
                           .arg(units.uorPerSub));
    Remembered() = {};
}

// The clash file opened for reading; raises first when it is missing.
SqliteDb OpenClashFile(const QString &file)
{
    if (!IsFileExists(file))
        Raise(msg::ClashFileNotExists, {file});
    return SqliteDb(file, SqliteDb::OpenMode::ReadOnly);
}

// The statements of one table's schema entries of a kind ("table" or "index"). Indices that
// SQLite makes for a table's constraints have none and come back with the table itself.
QStringList SchemaStatements(SqliteDb &db, const QString &table, const char *type)
{
    SqliteStatement query(db, QStringLiteral("SELECT sql FROM sqlite_master WHERE type = ?1 AND tbl_name = ?2 "
                                             "COLLATE NOCASE AND sql IS NOT NULL ORDER BY rowid"));
    query.Bind(1, QString::fromLatin1(type));
    query.Bind(2, table);
    QStringList statements;
    while (query.Step())
        statements << query.Column(0).toString();
    return statements;
}

// Copies `tables` of the store into the fresh database `target`, each with its declared
// schema. Rows go over one by one rather than as pages, which leaves the space of deleted
// rows behind: the copy is the compressed store.
void CopyTables(SqliteDb &store, const QStringList &tables, const QString &target)
{
    // A failure is logged by the creation; opening the missing file then raises it.
    CreateMDB(target, true);
    SqliteDb copy(target);
    for (const QString &table : tables)
        for (const QString &statement : SchemaStatements(store, table, "table"))
            copy.Execute(statement);
    copy.Execute(QStringLiteral("ATTACH DATABASE %1 AS [%2]").arg(DBQuote(store.File()), QLatin1String(kSourceSchema)));
    {
        SqliteTransaction transaction(copy);
        for (const QString &table : tables) {
            copy.Execute(QStringLiteral("INSERT INTO main.%1 SELECT * FROM [%2].%1;")
                             .arg(BracketName(table), QLatin1String(kSourceSchema)));
            DoEventsIfInput();
        }
        transaction.Commit();
    }
    copy.Execute(QStringLiteral("DETACH DATABASE [%1]").arg(QLatin1String(kSourceSchema)));
    // Indices last: building each once is cheaper than keeping it up to date row by row.
    for (const QString &table : tables)
        for (const QString &statement : SchemaStatements(store, table, "index"))
            copy.Execute(statement);
    copy.Close();
}

} // namespace

void SaveClashes2File(const QString &file)
{
    LoggedFrame("SaveClashes2File", [&] {
        LogMessage(msg::WritingChangesToFile, {file, GetLogonUserName()});
        SaveClashTable();
        SqliteDb &store = ClashConnection();
        const QString copy = NewWorkFileName("fxsave", ".fxdb");
        // Declared before anything opens the copy, so they go after every connection to it.
        const ScratchFile copyFile(copy), copyJournal(copy + QStringLiteral("-journal"));
        CopyTables(store, GetDBTables(store), copy);
        CopyFileA(copy, file);
        LogMessage(msg::ChangesWritten, {});
    });
}

void SaveDGNSettings2MDB(SqliteDb &db, const DGNSettings &units)
{
    Frame("SaveDGNSettings2MDB", [&] { WriteDGNSettings(db, units); });
}

void SaveDGNSettings2MDB()
{
    Frame("SaveDGNSettings2MDB", [&] {
        WriteDGNSettings(ClashConnection(), GetModelDGNSettings(TheCRIS(), GetProjectName()));
    });
}

void SaveProjFileSettings2MDB()
{
    Frame("SaveProjFileSettings2MDB", [&] {
        const ProjFile &projFile = GetProjectProjFile();
        ReplaceSettingsRow(ClashConnection(), kProjFileSettings,
                           "CREATE TABLE [proj_file_settings] (proj_addr VARCHAR(255), proj_file VARCHAR(255));",
                           QStringLiteral("INSERT INTO [proj_file_settings] VALUES (%1, %2);")
                               .arg(DBQuote(projFile.PROJ_ADDR), DBQuote(projFile.PROJ_FILE)));
    });
}

bool IsValidMDB(const QString &file)
{
    return Frame("IsValidMDB", [&] {
        if (!IsFileExists(file))
            Raise(msg::ClashFileNotExists, {file});
        // Whatever keeps the file from being read as a store makes it invalid; the caller words it.
        try {
            SqliteDb db(file, SqliteDb::OpenMode::ReadOnly);
            return IsLocalTableExists(db, BaseClashTableName());
        } catch (const std::exception &) {
            return false;
        }
    });
}

QString GetProjectNumber4MDB(const QString &file)
{
    return Frame("GetProjectNumber4MDB", [&] {
        SqliteDb db = OpenClashFile(file);
        const Recordset rows = db.Read(QStringLiteral("SELECT project_no FROM pdtable_101;"));
        if (rows.IsEmpty())
            Raise(msg::ProjectNumberNotDefined);
        return rows.Value(0, 0).toString();
    });
}

ProjFile GetProjFile4MDB(const QString &file)
{
    return Frame("GetProjFile4MDB", [&] {
        SqliteDb db = OpenClashFile(file);
        const Recordset rows = db.Read(QStringLiteral("SELECT [proj_addr], [proj_file] FROM [proj_file_settings];"));
        if (rows.IsEmpty())
            Raise(msg::ProjFileSettingsNotDefined);
        const ProjFile projFile{rows.Value(0, 0).toString(), rows.Value(0, 1).toString()};
        if (projFile.PROJ_ADDR.trimmed().isEmpty())
            Raise(msg::ClashFileProjAddrNotDefined);
        if (projFile.PROJ_FILE.trimmed().isEmpty())
            Raise(msg::ClashFileProjFileNotDefined);
        return projFile;
    });
}

QStringList GetDBTables(SqliteDb &db)
{
    return Frame("GetDBTables", [&] {
        // SQLite's own tables, and the system tables of the files this format stands for.
        const Recordset rows = db.Read(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT "
                                                      "LIKE 'sqlite\\_%' ESCAPE '\\' AND name NOT LIKE 'MSys%' "
                                                      "ORDER BY name COLLATE NOCASE"));
        QStringList tables;
        for (const QVariantList &row : rows.Rows())
            tables << row.at(0).toString().remove(QLatin1Char('$'));
        return tables;
    });
}

QString GetMasterUnits(SqliteDb &db, const QString &project)
{
    return Frame("GetMasterUnits", [&] { return StoreUnit(db, project, QStringLiteral("master_units")).toString(); });
}

qint32 GetSubPerMast(SqliteDb &db, const QString &project)
{
    return Frame("GetSubPerMast", [&] { return StoreUnit(db, project, QStringLiteral("sub_per_mast")).toInt(); });
}

qint32 GetUorPerSub(SqliteDb &db, const QString &project)
{
    return Frame("GetUorPerSub", [&] { return StoreUnit(db, project, QStringLiteral("uor_per_sub")).toInt(); });
}

QString GetMasterUnits()
{
    return GetMasterUnits(ClashConnection(), GetProjectName());
}

qint32 GetSubPerMast()
{
    return GetSubPerMast(ClashConnection(), GetProjectName());
}

qint32 GetUorPerSub()
{
    return GetUorPerSub(ClashConnection(), GetProjectName());
}

} // namespace fx

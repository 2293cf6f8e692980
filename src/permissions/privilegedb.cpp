#include "permissions/privilegedb.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "frame/unc.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "permissions/accounts.h"
#include "permissions/messages.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegestate.h"

#include <QFileInfo>
#include <QSet>

namespace fx {

namespace {

const QString kUser = QStringLiteral("user");
const QString kGroup = QStringLiteral("group");
const QString kUpgrade = QStringLiteral("upgrade");

// Jet's BIT is never NULL and starts false; SQLite is told so in words.
const QString kBitType = QStringLiteral(" BIT NOT NULL DEFAULT FALSE");

// Jet compares and keys text without regard to case; NOCASE gives the key that meaning.
QString CreateTableSql(const QString &table, qsizetype count)
{
    QStringList columns;
    for (const QString &column : BracketedPermissionColumns(count))
        columns << column + kBitType;
    return QStringLiteral("CREATE TABLE [") + table
           + QStringLiteral("] ([domain] VARCHAR(255) COLLATE NOCASE, [name] VARCHAR(255) COLLATE NOCASE, ")
           + columns.join(QStringLiteral(", ")) + QStringLiteral(", CONSTRAINT ID PRIMARY KEY([domain], [name]));");
}

QSet<QString> ColumnsOf(SqliteDb &db, const QString &table)
{
    QSet<QString> columns;
    const Recordset empty = MDBRead(db, QStringLiteral("SELECT * FROM [") + table + QStringLiteral("] WHERE 1 = 0;"));
    for (const RecordsetField &field : empty.Fields())
        columns.insert(field.name.toLower());
    return columns;
}

// SQLite can neither drop a key column nor add a primary key: the table is made anew in the
// present layout. Accounts that differ in case only become one, holding the rights of both.
void RebuildWithoutId(SqliteDb &db, const QString &table, qsizetype count)
{
    const QString fresh = table + QStringLiteral("_upgrade");
    const QStringList columns = BracketedPermissionColumns(count);
    QStringList merged;
    for (const QString &column : columns)
        merged << QStringLiteral("MAX(IFNULL(") + column + QStringLiteral(", 0) <> 0) AS ") + column;
    MDBWrite(db, CreateTableSql(fresh, count));
    // Beside MIN(rowid), SQLite takes the bare domain and name from that row: the first spelling.
    MDBWrite(db, QStringLiteral("INSERT INTO [") + fresh + QStringLiteral("] ([domain], [name], ") + columns.join(QStringLiteral(", "))
                     + QStringLiteral(") SELECT [domain], [name], ") + columns.join(QStringLiteral(", "))
                     + QStringLiteral(" FROM (SELECT MIN(rowid), [domain], [name], ") + merged.join(QStringLiteral(", "))
                     + QStringLiteral(" FROM [") + table + QStringLiteral("] GROUP BY LCASE([domain]), LCASE([name]));"));
    MDBWrite(db, QStringLiteral("DROP TABLE [") + table + QStringLiteral("];"));
    MDBWrite(db, QStringLiteral("ALTER TABLE [") + fresh + QStringLiteral("] RENAME TO [") + table + QStringLiteral("];"));
}

void UpgradeTable(SqliteDb &db, const QString &table, qsizetype count)
{
    if (!IsLocalTableExists(db, table)) {
        MDBWrite(db, CreateTableSql(table, count));
        return;
    }
    const QSet<QString> columns = ColumnsOf(db, table);
    for (qsizetype no = 0; no < count; ++no) {
        const QString column = PermissionColumn(int(no));
        if (!columns.contains(column))
            MDBWrite(db, QStringLiteral("ALTER TABLE [") + table + QStringLiteral("] ADD COLUMN [") + column + QLatin1Char(']')
                             + kBitType + QLatin1Char(';'));
    }
    if (!IsLocalTableExists(db, kUpgrade) && columns.contains(QStringLiteral("id")))
        RebuildWithoutId(db, table, count);
    MDBWrite(db, QStringLiteral("DELETE FROM [") + table + QStringLiteral("] WHERE(NOT(") + AnyPermissionCondition(count)
                     + QStringLiteral("));"));
}

void Upgrade(SqliteDb &db, qsizetype count)
{
    // All or nothing: a failed upgrade leaves the file as the older version wrote it.
    SqliteTransaction transaction(db);
    UpgradeTable(db, kUser, count);
    UpgradeTable(db, kGroup, count);
    if (!IsLocalTableExists(db, kUpgrade))
        MDBWrite(db, QStringLiteral("CREATE TABLE [upgrade] (id COUNTER);"));
    transaction.Commit();
}

bool CanWrite(const QString &file)
{
    return QFileInfo(file).isWritable() && QFileInfo(GetFolderOfPath(file)).isWritable();
}

} // namespace

PrivilegeState &ThePrivilegeState()
{
    static PrivilegeState state;
    return state;
}

SqliteDb &OpenPrivilegeDB(PrivilegeState &state)
{
    if (!state.db)
        Raise(msg::PermissionsDatabaseNotAvailable);
    return *state.db;
}

QStringList BracketedPermissionColumns(qsizetype count)
{
    QStringList columns;
    for (qsizetype no = 0; no < count; ++no)
        columns << QLatin1Char('[') + PermissionColumn(int(no)) + QLatin1Char(']');
    return columns;
}

QString AnyPermissionCondition(qsizetype count)
{
    return BracketedPermissionColumns(count).join(QStringLiteral(" = TRUE OR ")) + QStringLiteral(" = TRUE");
}

QString ObjectCondition(const QString &domain, const QString &name)
{
    return QStringLiteral("WHERE(LCASE([domain]) = ") + DBQuote(domain.toLower()) + QStringLiteral(" AND LCASE([name]) = ")
           + DBQuote(name.toLower()) + QStringLiteral(");");
}

QString GetPermissionDBFileName(const QString &projAddr, const QString &projFile, bool createFolder)
{
    return Frame("GetPermissionDBFileName", [&] {
        const QString directory =
            projAddr.trimmed().isEmpty() || projFile.trimmed().isEmpty() ? QString() : LocalPath2UNC(projAddr, projFile);
        if (directory.isEmpty())
            Raise(msg::ProjFileDirectoryNotDefined);
        const QString name = MainExecutableName() + QStringLiteral(".mdb");
        const QString beside = AddBackslash(directory) + name;
        if (IsFileExists(beside))
            return beside;
        const QString configDir = GetConfigDir();
        if (createFolder && !IsFileExists(configDir, true))
            CreateFolderA(configDir);
        return configDir + name;
    });
}

void PrivilegePermissionsSet(const QStringList &permissions, const QString &file)
{
    Frame("PrivilegePermissionsSet", [&] {
        if (permissions.isEmpty())
            Raise(msg::NoPermissionsDefined);
        if (file.isEmpty())
            Raise(msg::PrivilegesDatabaseNotDefined);
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        state.permissions = permissions;
        state.file = file;
    });
}

void PrivilegeDBInit(bool writable)
{
    Frame("PrivilegeDBInit", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        if (state.permissions.isEmpty())
            Raise(msg::NoPermissionsDefined);
        if (state.file.isEmpty())
            Raise(msg::PrivilegesDatabaseNotDefined);
        state.db.reset();
        state.writable = false;
        if (!IsFileExists(state.file)) {
            if (!writable)
                return;
            if (!CreateMDB(state.file))
                Raise(msg::CreatingPrivilegesDatabaseFailed, {state.file});
        }
        // Whoever may write the file brings it up to date, the reading user's program too;
        // a file nobody here may write is read as it stands.
        if (!CanWrite(state.file)) {
            state.db.emplace(state.file, SqliteDb::OpenMode::ReadOnly);
            return;
        }
        state.db.emplace(Connect2MDB(state.file));
        Upgrade(*state.db, state.permissions.size());
        state.writable = writable;
    });
}

void PrivilegeMgrInit()
{
    Frame("PrivilegeMgrInit", [] { PrivilegeDBInit(true); });
}

void PrivilegeMyPermissionInit()
{
    Frame("PrivilegeMyPermissionInit", [] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        state.granted.reset();
        PrivilegeDBInit(false);
        if (!state.db || (!IsLocalTableExists(*state.db, kUser) && !IsLocalTableExists(*state.db, kGroup)))
            return;
        // An empty database locks nobody out.
        if (MDBRead(*state.db, QStringLiteral("SELECT 1 FROM [user] UNION ALL SELECT 1 FROM [group];")).IsEmpty())
            return;

        const QString domain = DBQuote(GetMyAccountDomain().toLower());
        const QString user = DBQuote(GetMyUserName().toLower());
        QStringList groups;
        for (const QString &group : GetAllGroupsOfUser(GetMyAccountDomain(), GetMyUserName()))
            groups << DBQuote(group.toLower());

        state.granted.emplace();
        const qsizetype count = state.permissions.size();
        const QString columns = BracketedPermissionColumns(count).join(QStringLiteral(", "));
        const QString condition = AnyPermissionCondition(count);
        QString sql = QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM [user] WHERE(LCASE([domain]) = ") + domain
                      + QStringLiteral(" AND LCASE([name]) = ") + user + QStringLiteral(" AND (") + condition + QStringLiteral("))");
        if (!groups.isEmpty())
            sql += QStringLiteral(" UNION ALL SELECT ") + columns + QStringLiteral(" FROM [group] WHERE(LCASE([domain]) = ")
                   + domain + QStringLiteral(" AND LCASE([name]) IN (") + groups.join(QStringLiteral(", "))
                   + QStringLiteral(") AND (") + condition + QStringLiteral("))");
        const Recordset rows = MDBRead(*state.db, sql);
        for (int no = 0; no < count; ++no)
            for (const QVariantList &row : rows.Rows())
                if (row.at(no).toLongLong() != 0) {
                    state.granted->insert(PermissionColumn(no), true);
                    break;
                }
    });
}

bool IsPermissionGranted(int no)
{
    return Frame("IsPermissionGranted", [&] {
        if (no < 0)
            Raise(msg::PermissionNumberIncorrect, {QString::number(no)});
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        return !state.granted || state.granted->value(PermissionColumn(no), false);
    });
}

void PrivilegeDBClose()
{
    Frame("PrivilegeDBClose", [] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        state.writable = false;
        if (state.db) {
            CloseConnection(*state.db);
            state.db.reset();
        }
    });
}

void PrivilegeBeginTrans()
{
    Frame("PrivilegeBeginTrans", [] {
        std::lock_guard lock(ThePrivilegeState().mutex);
        MDBWrite(OpenPrivilegeDB(ThePrivilegeState()), QStringLiteral("BEGIN;"));
    });
}

void PrivilegeCommitTrans()
{
    Frame("PrivilegeCommitTrans", [] {
        std::lock_guard lock(ThePrivilegeState().mutex);
        MDBWrite(OpenPrivilegeDB(ThePrivilegeState()), QStringLiteral("COMMIT;"));
    });
}

void PrivilegeRollbackTrans()
{
    Frame("PrivilegeRollbackTrans", [] {
        std::lock_guard lock(ThePrivilegeState().mutex);
        MDBWrite(OpenPrivilegeDB(ThePrivilegeState()), QStringLiteral("ROLLBACK;"));
    });
}

} // namespace fx

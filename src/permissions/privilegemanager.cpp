#include "permissions/privilegemanager.h"

#include "frame/failure.h"
#include "pds/adotypes.h"
#include "pds/localdb.h"
#include "permissions/messages.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegestate.h"

namespace fx {

namespace {

// The table of an object type, which is also the table's name.
QString TableOf(const QString &type)
{
    if (type != QLatin1String("user") && type != QLatin1String("group"))
        Raise(msg::UnknownObjectType, {type});
    return type;
}

void CheckObject(const QString &domain, const QString &name)
{
    if (domain.isEmpty())
        Raise(msg::ObjectDomainNotDefined);
    if (name.isEmpty())
        Raise(msg::ObjectNameNotDefined);
}

// The connection and table for one account, its values checked; the caller holds the lock.
struct ObjectTarget
{
    SqliteDb &db;
    QString table;
};

ObjectTarget TargetOf(PrivilegeState &state, const QString &type, const QString &domain, const QString &name, bool write)
{
    SqliteDb &db = OpenPrivilegeDB(state);
    if (write && !state.writable)
        Raise(msg::PrivilegeDatabaseNotWritable, {state.file});
    const QString table = TableOf(type);
    CheckObject(domain, name);
    return {db, table};
}

QString ObjectsOf(const QString &table, const QString &domainFilter)
{
    QString sql = QStringLiteral("SELECT ") + DBQuote(table) + QStringLiteral(" AS [object_type], [domain], [name] FROM [") + table
                  + QLatin1Char(']');
    if (!domainFilter.isEmpty())
        sql += QStringLiteral(" WHERE(LCASE([domain]) = ") + DBQuote(domainFilter.toLower()) + QLatin1Char(')');
    return sql;
}

} // namespace

QStringList PrivilegeGetPermissionsByObject(const QString &type, const QString &domain, const QString &name)
{
    return Frame("PrivilegeGetPermissionsByObject", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        const auto [db, table] = TargetOf(state, type, domain, name, false);
        QStringList columns;
        for (int no = 0; no < state.permissions.size(); ++no)
            columns << QLatin1Char('[') + PermissionColumn(no) + QStringLiteral("] AS [") + state.permissions.at(no)
                           + QLatin1Char(']');
        const Recordset rows = MDBRead(db, QStringLiteral("SELECT ") + columns.join(QStringLiteral(", ")) + QStringLiteral(" FROM [")
                                               + table + QStringLiteral("] ") + ObjectCondition(domain, name));
        QStringList held;
        for (const QVariantList &row : rows.Rows())
            for (int no = 0; no < row.size(); ++no)
                if (row.at(no).toLongLong() != 0 && !held.contains(state.permissions.at(no)))
                    held << state.permissions.at(no);
        if (!held.isEmpty() && held.size() == state.permissions.size())
            return QStringList{QString::fromUtf8(msg::AllPermissions)};
        return held;
    });
}

Recordset PrivilegeGetObjectsByPermission(const QString &permissionName)
{
    return Frame("PrivilegeGetObjectsByPermission", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        SqliteDb &db = OpenPrivilegeDB(state);
        const QString column = PermissionColumn(GetPermissionNoByName(permissionName, state.permissions));
        return MDBRead(db, QStringLiteral("SELECT 'user' AS [object_type], [domain], [name] FROM [user] WHERE([") + column
                               + QStringLiteral("] = TRUE) UNION ALL SELECT 'group' AS [object_type], [domain], [name] FROM [group] WHERE([")
                               + column + QStringLiteral("] = TRUE);"));
    });
}

Recordset PrivilegeGetAllObjects4DB(const QString &typeFilter, const QString &domainFilter)
{
    return Frame("PrivilegeGetAllObjects4DB", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        SqliteDb &db = OpenPrivilegeDB(state);
        const QString order = QStringLiteral(" ORDER BY [domain], [name];");
        if (!typeFilter.isEmpty())
            return MDBRead(db, ObjectsOf(TableOf(typeFilter), domainFilter) + order);
        return MDBRead(db, QStringLiteral("SELECT * FROM (") + ObjectsOf(QStringLiteral("user"), domainFilter)
                               + QStringLiteral(" UNION ALL ") + ObjectsOf(QStringLiteral("group"), domainFilter)
                               + QLatin1Char(')') + order);
    });
}

Recordset PrivilegeGetAllPermissions4DB()
{
    return Frame("PrivilegeGetAllPermissions4DB", [] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        OpenPrivilegeDB(state);
        Recordset rows({RecordsetField{QStringLiteral("permission_name"), adotype::VarWChar, 255}});
        for (const QString &name : state.permissions)
            rows.AppendRow({name});
        return rows;
    });
}

void PrivilegeAddObject2DB(const QString &type, const QString &domain, const QString &name)
{
    Frame("PrivilegeAddObject2DB", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        const auto [db, table] = TargetOf(state, type, domain, name, true);
        if (!MDBRead(db, QStringLiteral("SELECT 1 FROM [") + table + QStringLiteral("]  ") + ObjectCondition(domain, name)).IsEmpty())
            return;
        MDBWrite(db, QStringLiteral("INSERT INTO [") + table + QStringLiteral("] ([domain], [name]) VALUES(") + DBQuote(domain)
                         + QStringLiteral(", ") + DBQuote(name) + QStringLiteral(");"));
    });
}

void PrivilegeRemoveObject4DB(const QString &type, const QString &domain, const QString &name)
{
    Frame("PrivilegeRemoveObject4DB", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        const auto [db, table] = TargetOf(state, type, domain, name, true);
        MDBWrite(db, QStringLiteral("DELETE FROM [") + table + QStringLiteral("]  ") + ObjectCondition(domain, name));
    });
}

void PrivilegeSet(const QString &type, const QString &domain, const QString &name, const QString &permissionName, bool value)
{
    Frame("PrivilegeSet", [&] {
        PrivilegeState &state = ThePrivilegeState();
        std::lock_guard lock(state.mutex);
        const auto [db, table] = TargetOf(state, type, domain, name, true);
        const QString setting = value ? QStringLiteral("] = TRUE") : QStringLiteral("] = FALSE");
        QStringList assignments;
        if (permissionName == QLatin1String(msg::AllPermissions)) {
            for (int no = 0; no < state.permissions.size(); ++no)
                assignments << QLatin1Char('[') + PermissionColumn(no) + setting;
        } else {
            assignments << QLatin1Char('[') + PermissionColumn(GetPermissionNoByName(permissionName, state.permissions)) + setting;
        }
        MDBWrite(db, QStringLiteral("UPDATE [") + table + QStringLiteral("] SET ") + assignments.join(QStringLiteral(", ")) + QLatin1Char(' ')
                         + ObjectCondition(domain, name));
    });
}

} // namespace fx

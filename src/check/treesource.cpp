#include "check/treesource.h"

#include "pds/cris.h"
#include "pds/projectschema.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"

namespace fx {

TreeSource StoreTreeSource()
{
    return {[](const QString &sql) { return ClashConnection().Read(sql); }, true};
}

TreeSource SchemaTreeSource(const QString &project)
{
    const QString schema = GetProjectSchema(project);
    return {[schema](const QString &sql) { return TheCRIS().DBRead(schema, sql); }, false};
}

bool IsStoreTableExists(const QString &table)
{
    if (!ClashStore().ClashConnection)
        return false;
    SqliteStatement query(*ClashStore().ClashConnection,
                          QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE;"));
    query.Bind(1, table);
    return query.Step();
}

Recordset ReadProjectTable(const QString &table, const QString &sql)
{
    if (IsStoreTableExists(table))
        return ClashConnection().Read(sql);
    return TheCRIS().DBRead(GetProjectSchema(GetProjectName()), sql);
}

} // namespace fx

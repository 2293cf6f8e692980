#pragma once
// Where the project tree reads its levels: a function that runs one SELECT and hands back its
// rows, and whether the statements keep to what has clashes.

#include "pds/recordset.h"

#include <QString>

#include <functional>

namespace fx {

/// Runs one of the tree's statements; raises as its database does.
using TreeRowReader = std::function<Recordset(const QString &sql)>;

/// The rows of a tree and the restriction flag: only what has clashes in the store.
struct TreeSource
{
    TreeRowReader read;
    /// Adds the clause that keeps each level to what has clashes in the store's `clashes`; only
    /// a reader of the local store can run it.
    bool restricted = false;
};

/// The open clash store (ClashConnection() at each read, so a project opened later is the
/// one read), restricted to what has clashes: the approval filter's tree.
TreeSource StoreTreeSource();

/// The project schema "pd_" + `project` through the gateway (TheCRIS().DBRead), not
/// restricted: the check module's tree.
TreeSource SchemaTreeSource(const QString &project);

/// Whether the open store holds `table`; false with no project open.
bool IsStoreTableExists(const QString &table);

/// One project table read "from the store if it holds the table, otherwise from the schema
/// pd_<project>": the store's copy when it has `table`, else the schema of the
/// project GetProjectName() names.
Recordset ReadProjectTable(const QString &table, const QString &sql);

} // namespace fx

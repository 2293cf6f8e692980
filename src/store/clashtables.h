#pragma once
// The working tables derived from the copied project tables: the clash volume, the object
// linkages, one denormalised row a clash, and the advanced filter tables.

#include "pds/sqlitedb.h"

#include <QString>
#include <QStringList>

namespace fx {

/// The declared type of the text columns of the clash rows: compared without regard to case,
/// as reviewers have always filtered, sorted and paired them.
inline constexpr char StoreTextType[] = "VARCHAR(255) COLLATE NOCASE";

/// The table names, so that no literal is repeated.
QString BaseClashTableName();
QString ClashesTableName();
QString LinkagesTableName();
QString IntersectionTableName();

/// The seven "AdvancedFilter_..." table names.
QStringList AdvancedFilterTableNames();

/// Builds the working tables of `project`'s store when `rebuild` (a store fresh from the
/// project), then brings the tables of an older clash file up to date.
void InitClashTables(SqliteDb &db, const QString &project, bool rebuild);

/// `intersection`: the overlap of the two components' ranges, in master units as the store's
/// `dgn_settings` gives them.
void CreateIntersectionTable(SqliteDb &db, const QString &project);

/// `linkages`: each clash's two viewer object addresses; gives pdtable_134 its partition and
/// linkage columns first.
void CreateLinkageTable(SqliteDb &db);

/// `base_clash_table`: one row a clash with every name resolved. Raises the double clash
/// failure when the joins give a clash more than one row.
void CreateBaseClashTable(SqliteDb &db, const QString &project);

/// The seven empty advanced filter tables.
void CreateAdvancedFilterTables(SqliteDb &db);

/// `clashes`: the rows of `base_clash_table` that pass the filters, with the component and
/// DVCS columns the settings ask for. Saves the reviewer's changes in the old one first.
void CreateClashTable();

/// Drops a table when it exists.
void DropLocalTable(SqliteDb &db, const QString &table);

} // namespace fx

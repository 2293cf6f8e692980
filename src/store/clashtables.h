#pragma once
// The working tables derived from the copied project tables: the clash volume, the object
// linkages, one denormalised row a clash, and the advanced filter tables.

#include "pds/sqlitedb.h"

#include <QString>
#include <QStringList>

namespace fx {

/// The table names, so that no literal is repeated.
QString BaseClashTableName();
QString ClashesTableName();
QString LinkagesTableName();
QString IntersectionTableName();

/// The seven "AdvancedFilter_..." table names.
QStringList AdvancedFilterTableNames();

/// What the working tables need of the open project.
struct ClashTablesContext
{
    QString project;
    /// Design units a master unit (uor_per_sub * sub_per_mast of the project's design files).
    double unitsPerMaster = 1;
};

/// Builds the working tables when `rebuild` (a store fresh from the project), then brings the
/// tables of an older clash file up to date.
void InitClashTables(SqliteDb &db, const ClashTablesContext &context, bool rebuild);

/// `intersection`: the overlap of the two components' ranges, in master units.
void CreateIntersectionTable(SqliteDb &db, double unitsPerMaster);

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

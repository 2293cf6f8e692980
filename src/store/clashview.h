#pragma once
// What the reviewer sees: the rows of `base_clash_table` that pass the volume filter, the
// action area and the advanced filter, kept in `clashes` and rebuilt only when one of those
// settings changed. Also the counts of the status line.
//
// Every procedure works on the open project (ClashConnection(), GetProjectName()); settings
// come from the user config file unless a file is passed.

#include <QString>

namespace fx {

/// The view that the grid binds to. Rows are fetched by the grid itself; the store keeps the
/// grid's filter, a condition on `clashes` in the grid's own form.
struct ClashRecordsetState
{
    bool open = false;
    QString Filter; ///< empty: no filter
};

/// The process-wide view of `clashes`.
ClashRecordsetState &ClashRecordset();

/// Forgets the remembered filter values, so that the next GetClashes rebuilds `clashes`, and
/// the remembered total count; done for every project opened.
void ResetRememberedClashFilters();

/// Rebuilds `clashes` when a filter setting changed or the table is missing, and opens the
/// view on it. Gives the number of rows in `clashes`.
qint64 GetClashes();

/// True when the options no longer give the `clashes` last built (or it is missing): the next
/// GetClashes builds it anew.
bool IsClashViewOutdated();

/// The advanced filter as one condition with the excluded values written in; empty when
/// nothing is excluded. An empty `configFile` is the user config file.
QString GetAdvancedFilter(const QString &configFile);

/// The same condition reading the excluded values from the advanced filter tables, for
/// lists too long to go into a statement.
QString GetAdvancedFilter3();

/// Fills the advanced filter tables from the settings of `configFile` (empty: user config).
void FillAdvancedFilterTables(const QString &configFile);

/// Carries the five columns a reviewer can change from `clashes` back to `base_clash_table`.
void SaveClashTable();

/// The grid's filter as a WHERE condition; empty without one.
QString GetGridFilter();

/// Clashes in `base_clash_table`, remembered per project.
qint32 GetTotalClashCount();
/// Clashes in `clashes` that pass the grid filter.
qint32 GetClashCount();
/// Approved clashes of the project: those in view as they stand, the others as last saved.
qint32 GetTotalApprovedClashCount();
/// Approved clashes in `clashes` that pass the grid filter.
qint32 GetApprovedClashCount();

/// The bounds of the clash centres of the project, as texts with "." for the decimal point.
struct ClashRange
{
    QString xMax, xMin, yMax, yMin, zMax, zMin;
};
ClashRange GetClashRange();

/// The interference report whose clashes alone are shown (`PDSReportFile` of the project's
/// options); empty when none is set. An empty `configFile` is the user config file.
QString GetPDSReportFile(const QString &configFile);

} // namespace fx

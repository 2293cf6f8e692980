#pragma once
// The dimensions of the advanced filter: the names the reviewer picks values of, and the
// columns of `clashes` each one stands for.

#include <QList>
#include <QString>

namespace fx {

/// Stands for a null among a dimension's values.
inline constexpr char NotDefinedValue[] = "NOT DEFINED";

/// One filter dimension: its name, its side a column and its side b column (empty for one
/// that has no sides).
struct FilterDimension
{
    QString name;
    QString columnA;
    QString columnB;
};

/// The seven dimensions in their fixed order, "Clash type" last.
QList<FilterDimension> FilterDimensions();

/// The dimension of that name; raises "Unknown filter column" for any other.
FilterDimension GetFilterDimension(const QString &name);

/// The settings section that holds a dimension's excluded values: "AdvancedFilter" + name.
QString AdvancedFilterSection(const QString &dimension);

} // namespace fx

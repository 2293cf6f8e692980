#pragma once
// The settings that shape `clashes`: read for the open project, and remembered as they were
// when `clashes` was last built, so that an unchanged view is never built again.

#include <QString>

#include <optional>

namespace fx {

/// From this length on the advanced filter no longer goes into a statement as it stands: the
/// filter tables stand in for its values.
inline constexpr qsizetype kLongFilterLength = 60000;

/// The twelve values a build of `clashes` depends on.
struct ClashViewSettings
{
    QString area;          ///< action area of the volume filter
    QString compSeparator; ///< empty: one component column a side
    QString eastingCenter, northingCenter, elevationCenter; ///< DVCS centres, "." for the decimal point
    QString eastingLow, northingLow, elevationLow;          ///< volume bounds, normalised
    QString eastingHigh, northingHigh, elevationHigh;
    QString advancedFilter; ///< GetAdvancedFilter's text

    bool operator==(const ClashViewSettings &) const = default;
};

/// The values `clashes` was last built with; CreateClashTable builds by them.
ClashViewSettings &RememberedClashViewSettings();

/// The number a setting's text begins with, read as far as it makes a number (sign, digits,
/// decimal point, exponent); none when the text begins with no number.
std::optional<double> LeadingNumber(const QString &text);

/// True when the whole text, blanks around it aside, is one number: "." or "," for the decimal
/// point, an exponent allowed. A volume bound or an offset must be one.
bool IsNumericSetting(const QString &text);

/// A volume bound as it is kept: "," becomes "." and a text that begins with a number becomes
/// that number; any other text stays as it is and counts as no bound.
QString NormaliseBound(const QString &text);

/// A number as an SQL literal: "." for the decimal point, never an exponent.
QString SqlNumber(double value);

} // namespace fx

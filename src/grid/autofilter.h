#pragma once
// The automatic filter on unapproved clashes after a load, and the settings that rule it
// (section AutoFilter of the user config file).

#include "frame/configkeys.h"

#include <QString>

#include <functional>

namespace fx {

namespace autofilterkey {
inline constexpr char Section[] = "AutoFilter";
inline constexpr ConfigKey ShowFilterDialog{Section, "ShowFilterDialog", "1"};
inline constexpr ConfigKey SetAutoFilter{Section, "SetAutoFilter", "1"};
} // namespace autofilterkey

/// The filter text the `status` column gets: "Unapproved" when its filter is empty and neither
/// the filter message (asked through `askSkip` when ShowFilterDialog is on) nor SetAutoFilter
/// says no, which is logged; otherwise empty, leaving the filter as it is.
QString AutoStatusFilter(const QString &statusFilterNow, const std::function<bool()> &askSkip);

} // namespace fx

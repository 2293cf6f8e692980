#pragma once
// The automatic filter on unapproved clashes after a load, as the AutoFilter options rule it.

#include <QString>

#include <functional>

namespace fx {

/// The filter text the `status` column gets: "Unapproved" when its filter is empty and neither
/// the filter message (asked through `askSkip` when ShowFilterDialog is on) nor SetAutoFilter
/// says no, which is logged; otherwise empty, leaving the filter as it is.
QString AutoStatusFilter(const QString &statusFilterNow, const std::function<bool()> &askSkip);

} // namespace fx

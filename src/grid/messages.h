#pragma once
// Texts of the clash grid.

namespace fx::msg {

// ---- Clash grid ----
inline constexpr char GridFilteringNotAvailable[] = "Filtering '%0%' is not available";

// ---- Clash grid: window, column settings and automatic filter ----
inline constexpr char GridSettingAutomaticFilter[] = "Setting automatic filter ...";
inline constexpr char GridDragHeaderHint[] = "Drag a column header here to group by that column";
inline constexpr char GridGroupByThisColumn[] = "Group by this column";
inline constexpr char GridRemoveGroupColumn[] = "Remove the grouping by '%0%'";
inline constexpr char GridGroupBand[] = "%0%: %1% (%2% clashes: %3% approved, %4% unapproved)";

} // namespace fx::msg

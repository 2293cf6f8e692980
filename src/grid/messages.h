#pragma once
// Texts of the clash grid.

namespace fx::msg {

// ---- Clash grid ----
inline constexpr char GridFilteringNotAvailable[] = "Filtering '%0%' is not available";

} // namespace fx::msg

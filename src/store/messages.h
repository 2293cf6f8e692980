#pragma once
// Every text of the clash store that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Bringing the project tables into the working database
inline constexpr char ImportingData[] = "Importing data ('%0%') from schema '%1%' ...";
inline constexpr char DataImported[] = "Data imported successfully";

// The working tables
inline constexpr char CreatingIntersectionTable[] = "Creating intersection table ...";
inline constexpr char IntersectionTableCreated[] = "Intersection table created successfully";
inline constexpr char CreatingLinkagesTable[] = "Creating linkages table ...";
inline constexpr char LinkagesTableCreated[] = "Linkages table created successfully";
inline constexpr char CreatingBaseClashTable[] = "Creating base clash table ...";
inline constexpr char BaseClashTableCreated[] = "Base clash table created successfully (%0% clashes found)";
inline constexpr char DoubleClashes[] = "Double clashes in PDS-Project '%0%' found.%1%Please run PDS Interference Checker again";
inline constexpr char CreatingAdvancedFilterTables[] = "Creating advanced filter tables ...";
inline constexpr char CreatingNamedTable[] = "Creating %0% table ...";
inline constexpr char AdvancedFilterTablesCreated[] = "Advanced filter tables created successfully";

} // namespace fx::msg

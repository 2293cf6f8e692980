#pragma once
// The failures of pdssim's site building, in argument form (%0%, %1%). Test equipment's own
// texts, not Fendrix's.

namespace pdssim::sitemsg {

inline constexpr char SimCannotWriteFile[] = "Cannot write file '%0%'";
inline constexpr char SimPathOutsideSite[] = "Path '%0%' is not below '%1%'";
inline constexpr char SimProjFileTextTooLong[] = "Text '%0%' is longer than %1% characters";
inline constexpr char SimUnitLabelTooLong[] = "Unit name '%0%' is longer than two characters";
inline constexpr char SimDgnCannotRead[] = "Design file '%0%' cannot be read";
inline constexpr char SimDgnNoDesignHeader[] = "Design file '%0%' has no design header";
inline constexpr char SimDgnNoEndOfDesign[] = "Design file '%0%' has no end of design";
inline constexpr char SimUnknownDatabaseKind[] = "Unknown database kind '%0%' (sqlite, ris or postgres=CONN)";
inline constexpr char SimConnectionIncomplete[] = "Connection '%0%' names no host or no database";
inline constexpr char SimTableNotDefined[] = "Table '%0%' has no definition in the simulated schema";
inline constexpr char SimClashCountOutOfRange[] = "Clash count %0% out of range (%1% to %2%)";
inline constexpr char SimManifestNotWritten[] = "Manifest '%0%' could not be written";
inline constexpr char SimSchemaFileNotFound[] = "Schema database '%0%' not found";
inline constexpr char SimOptionWithoutValue[] = "Option '%0%' needs a value";
inline constexpr char SimModelCountOutOfRange[] = "Model count '%0%' out of range (%1% to %2%)";
inline constexpr char SimLockOwnerWidthOutOfRange[] = "Lock owner width '%0%' out of range (1 to 240)";
inline constexpr char SimUnknownArgument[] = "Unknown argument '%0%'";
inline constexpr char SimSiteArgumentsMissing[] = "Usage: pdssim site DIR --project NAME --clashes N [--seed S] [--kind sqlite|ris|postgres=CONN] [--edge] [--lock-owner-width W] [--models M]";

} // namespace pdssim::sitemsg

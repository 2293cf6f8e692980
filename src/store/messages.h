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

// Loading clashes from a project or a clash file
inline constexpr char NoProject[] = "NO_PROJECT";
inline constexpr char NoProjectOpen[] = "No project loaded";
inline constexpr char LoadingProject[] = "Loading project '%0%' ('%1%') ...";
inline constexpr char ClashFileNotDefined[] = "Fendrix access database not defined";
inline constexpr char InvalidClashFile[] = "Invalid Fendrix access database '%0%'";
inline constexpr char ControlFileNotExists[] = "Control file '%0%' not exists";
inline constexpr char PdsProjectSchemaNotExists[] = "Project schema of PDS-Project '%0%' not exists";
inline constexpr char LoadingClashesFromFile[] = "Loading clashes from file: '%0%' ...";
inline constexpr char LoadingClashesFromSchema[] = "Loading clashes from project schema ...";
inline constexpr char CheckingProjectMarker[] = "Checking if project marker file is locked ...";
inline constexpr char CheckingAreaMarkers[] = "Checking if interference area marker files are locked ...";
inline constexpr char ReadOnlyModeText[] = " (read only mode) ";
inline constexpr char ProjectMarkerLockedUnlock[] = "Project marker file is locked by '%0%' since %1%.%2%To unlock press 'Yes'.%2%To continue anyway%3%without unlocking press 'No'";
inline constexpr char ProjectMarkerLockedContinue[] = "Project marker file is locked by '%0%' since %1%.%2%Continue anyway%3%without unlocking?";
inline constexpr char ProjectMarkerLocked[] = "Project marker file is locked";
inline constexpr char AreaMarkersLockedUnlock[] = "Some of area marker files are locked by '%0%' since %1%.%2%To unlock press 'Yes'.%2%To continue anyway%3%without unlocking press 'No'";
inline constexpr char AreaMarkersLockedContinue[] = "Some of area marker files are locked by '%0%' since %1%.%2%Continue anyway%3%without unlocking?";
inline constexpr char AreaMarkersLocked[] = "Some of area marker files are locked";
inline constexpr char PreparingClashData[] = "Preparing clash data ...";
inline constexpr char NoClashesInProject[] = "No clashes in PDS-Project '%0%' found.%1%Please run PDS Interference Checker at first";
inline constexpr char ClashesLoaded[] = "Clashes loaded successfully";
inline constexpr char MaxDBSizeReached[] = "Fendrix database '%0%' has reached maximal allowed file size %1% KB";
inline constexpr char MaxDBSizeNear[] = "%0% percent (%1% KB) of maximal allowed Fendrix database file size '%2%' has been reached.%3%"
                                        "Please save all changes to file to compress the database (File->Save changes) "
                                        "and reload clashes from this file (File->Load clashes from file)";

// Clash files: saving the store, and what a clash file carries to be opened on its own
inline constexpr char WritingChangesToFile[] = "Writing changes to file '%0%' by user '%1%' ...";
inline constexpr char ChangesWritten[] = "Changes written successfully";
inline constexpr char ClashFileNotExists[] = "Fendrix access database: '%0%' not exists";
inline constexpr char ProjFileSettingsNotDefined[] = "proj_file settings not defined";
inline constexpr char ClashFileProjAddrNotDefined[] = "PROJ_ADDR not defined";
inline constexpr char ClashFileProjFileNotDefined[] = "PROJ_FILE not defined";

// Commands on the open project's clashes that the project or the user's permissions refuse
inline constexpr char ProjectIsReadOnly[] = "PDS-Project '%0%' is opened in read only mode";
inline constexpr char ProjectIsOffline[] = "PDS-Project '%0%' is offline: its schema can't be reached";
inline constexpr char PermissionNotGranted[] = "Permission '%0%' not granted";

// Clashes written out as comma-separated values
inline constexpr char ExportingClashes[] = "Exporting clashes to '%0%' ...";
inline constexpr char ClashesExported[] = "%0% clashes exported";
inline constexpr char ExportWriteFailed[] = "File '%0%' can't be written: %1%";

// The counts of the status line
inline constexpr char StatusLineTotal[] = "Total: %0% clashes (approved: %1%; unapproved: %2%)";
inline constexpr char StatusLineFiltered[] = "; Filtered: %0% clashes (approved: %1%; unapproved: %2%)";

// The view of clashes: its filters, its table and its counts
inline constexpr char LoadingClashTable[] = "Loading clash table ...";
inline constexpr char ComponentsSeparator[] = "Components separator: '%0%'";
inline constexpr char ComponentsSeparatorNotDefined[] = "Components separator not defined";
inline constexpr char DvcsCenters[] = "Easting center: %0%; northing center: %1%; elevation center: %2%";
inline constexpr char ActionArea[] = "Action area: '%0%'";
inline constexpr char ActionAreaNotDefined[] = "Action area not defined";
inline constexpr char VolumeBounds[] = "Easting low: %0%; northing low: %1%; elevation low: %2%; easting high: %3%; "
                                       "northing high: %4%; elevation high: %5%";
inline constexpr char AdvancedFilterText[] = "Advanced filter: '%0%'";
inline constexpr char AdvancedFilterNotDefined[] = "Advanced filter not defined";
inline constexpr char ClashTableLoaded[] = "Clash table loaded successfully (%0% clashes)";
inline constexpr char CreatingClashTable[] = "Creating clash table ...";
inline constexpr char ClashTableCreated[] = "Clash table created successfully";
inline constexpr char UnknownFilterColumn[] = "Unknown filter column: '%0%'";

// The save dialog
inline constexpr char SaveChangesCaption[] = "Save project changes";
inline constexpr char SaveChangesLabel[] = "PDS-Project '%0%' was %1%modified.";
inline constexpr char SaveChangesNot[] = "NOT ";
inline constexpr char AreYouSure[] = "Are you sure?";

// Writing changes back to the project: the markers, the merge in a private copy, backups, load
inline constexpr char WritingChangesToSchema[] = "Writing changes to project schema by user '%0%' ...";
inline constexpr char WriteBackSchemaNotExists[] = "Project schema not exists";
inline constexpr char ProjectMarkerOverwrite[] = "Project marker file is locked by '%0%' since %1%.%2%Overwriting lock may cause data loss. Do you wish to continue?";
inline constexpr char AreaMarkersOverwrite[] = "Some of area marker files are locked by '%0%' since %1%.%2%Overwriting lock may cause data loss. Do you wish to continue?";
inline constexpr char AreaMarkersLockedBy[] = "Some of area marker files are locked by '%0%' since %1%";
inline constexpr char ClashesInStoreFound[] = "%0% clashes in Fendrix database found";
inline constexpr char DeletingOldBackupFile[] = "Deleting old backup file '%0%' ...";
inline constexpr char BackupClashData[] = "Backup current clash data from schema '%0%' to file '%1%' ...";
inline constexpr char ImportingCurrentClashData[] = "Importing current clash data ('%0%') ...";
inline constexpr char SchemaCurrentRecordsCount[] = "%0% (schema '%1%'): current records count %2%";
inline constexpr char CheckingForChanges[] = "Checking for changes ...";
inline constexpr char MergeRecordsInserted[] = "%0%: %1% records inserted";
inline constexpr char MergeRecordsUpdated[] = "%0%: %1% records updated";
inline constexpr char StoreRecordsCount[] = "%0% (Fendrix database): records count %1%";
inline constexpr char IncorrectRecordsCount[] = "Incorrect records count in %0% (project schema %1%, Fendrix database %2% records)";
inline constexpr char NoChangesFound[] = "No changes found between Fendrix database and project schema '%0%'";
inline constexpr char CreatingRISDumpFile[] = "Creating RIS dump file ...";
inline constexpr char LoadingFromRISDump[] = "Loading data from RIS dump file '%0%' ...";
inline constexpr char LoadingInTransaction[] = "Loading data into project schema '%0%' in one transaction ...";
inline constexpr char SchemaRowsWritten[] = "%0% (schema '%1%'): %2% records updated, %3% records inserted";
inline constexpr char ValidatingProjectSchema[] = "Validating project schema ...";
inline constexpr char SchemaNewRecordsCount[] = "%0% (schema '%1%'): new records count %2%";
inline constexpr char LoadRecordsCountCritical[] = "Critical error! Writing changes back into PDS failed: incorrect records count in %0% (project schema %1%, Fendrix database %2% records).%3%Project schema backup file '%4%'";
inline constexpr char RunningRISClean[] = "Running RIS clean ...";
inline constexpr char DeletingBackupFile[] = "Deleting '%0%' ...";

} // namespace fx::msg

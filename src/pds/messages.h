#pragma once
// Every text of project and database access that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Results and the local store
inline constexpr char FieldNotInResult[] = "Field '%0%' not found in the result";
inline constexpr char RowWidthMismatch[] = "Row of %0% values does not fit %1% fields";
inline constexpr char DatabaseError[] = "Database error %0%: %1%";
inline constexpr char FileWriteFailed[] = "Writing file '%0%' failed";
inline constexpr char DatabaseFileNotExists[] = "Database file '%0%' not exists";

// The gateway
inline constexpr char DatabaseServerNotDefined[] = "Database server name not defined";
inline constexpr char DatabaseUserNotDefined[] = "Database user name not defined";
inline constexpr char CrisTempDirMissing[] = "TEMP directory not defined or not existing. Please first set operating system environment variable TEMP to correct folder";
inline constexpr char RisbatchClientNotFound[] = "RIS client (risbatch) not found in '%0%'";
inline constexpr char RisunlodClientNotFound[] = "RIS client (risunlod) not found in '%0%'";
inline constexpr char RisClientNotInstalled[] = "RIS client not found or not correctly installed";
inline constexpr char SchemaNotDefined[] = "Schema name not defined";
inline constexpr char SqlNotDefined[] = "SQL statement not defined";
inline constexpr char OnlySelectQueries[] = "Only SELECT queries can be processed '%0%'";
inline constexpr char CrisTempDirNotCorrect[] = "TEMP directory '%0%' is not correct. The path must not contain any of the following characters: ' ', '.', '~'";
inline constexpr char AccessDatabaseNotExists[] = "Access database '%0%' not exists";
inline constexpr char TableToExtractNotDefined[] = "Table to extract not defined";
inline constexpr char TableNameNotDefined[] = "Table name not defined";

// The RIS tools
inline constexpr char RisbatchNotFound[] = "risbatch in '%0%' not found";
inline constexpr char RisunlodNotFound[] = "risunlod in '%0%' not found";
inline constexpr char RislodNotFound[] = "rislod in '%0%' not found";
inline constexpr char RisclnsrNotFound[] = "risclnsr in '%0%' not found";
inline constexpr char ToolMessage[] = "%0%";
inline constexpr char DirectoryNotExistsColon[] = "Directory: '%0%' not exists";
inline constexpr char RisDumpNotExists[] = "RIS dump file: '%0%' not exists";
inline constexpr char SchemaNameNotFound[] = "Schema name not found";
inline constexpr char BeginOfBadFile[] = "Begin of RIS bad file";
inline constexpr char EndOfBadFile[] = "End of RIS bad file";
inline constexpr char RisLoadRowsRejected[] = "Loading RIS dump file '%0%' failed: rows rejected (see bad file '%1%')";
inline constexpr char RisCleanFailed[] = "risclnsr failed";
inline constexpr char DbTypeIncorrect[] = "DB type is incorrect";
inline constexpr char UnknownDatabaseType[] = "Unknown project database type '%0%'";
inline constexpr char SchemaCountMismatch[] = "Schema count does not match user or password count";

// The SQL kinds of the project schema (ODBC, embedded SQLite) and their database users
inline constexpr char OracleServerNotDefined[] = "Oracle Server name not defined";
inline constexpr char SQLServerNotDefined[] = "SQL Server name not defined";
inline constexpr char UserCountMismatch[] = "User count does not match password count";
inline constexpr char NoSchemaConnection[] = "No database connection open";
inline constexpr char InvalidDatabaseName[] = "'%0%' is not a valid database name";

// Local database services
inline constexpr char CreatingAccessDatabase[] = "Creating new Access database: '%0%'...";
inline constexpr char AccessDatabaseCreated[] = "Access %0% database created successfully";
inline constexpr char CreatingAccessDatabaseFailed[] = "Creating Access database failed: %0%";
inline constexpr char DatabaseFileAlreadyExists[] = "Database file '%0%' already exists";
inline constexpr char CreatingIndex[] = "Creating index on table: '%0%' column: '%1%'...";
inline constexpr char IndexCreated[] = "Index created successfully";
inline constexpr char CreatingIndexFailed[] = "Creating index failed: %0%";
inline constexpr char NotAutoNumberColumn[] = "Column '%0%' of table '%1%' is not an autonumber column";
inline constexpr char DatabaseClosed[] = "Database '%0%' is closed";

// Jet's failures inside a statement (the text of the statement's failure)
inline constexpr char JetInvalidUseOfNull[] = "Invalid use of Null";
inline constexpr char JetTypeMismatch[] = "Type mismatch";
inline constexpr char JetOverflow[] = "Overflow";
inline constexpr char JetInvalidArgument[] = "Invalid procedure call or argument";
inline constexpr char JetWrongArgumentCount[] = "Wrong number of arguments used with function in query expression";

// RIS dumps, Schema.ini and text files
inline constexpr char RISDumpFileNotFound[] = "RIS dump file '%0%' not found";
inline constexpr char RISDumpFileColonNotFound[] = "RIS dump file: '%0%' not found";
inline constexpr char SchemaNotInDumpFile[] = "Schema '%0%' not found in dump file '%1%'";
inline constexpr char SchemaNameNotInDumpFile[] = "Schema name not found in dump file: '%0%'";
inline constexpr char TableNotInDumpFile[] = "Table '%0%' (schema '%1%') not found in dump file '%2%'";
inline constexpr char IncorrectRISDumpFormat[] = "Incorrect RIS dump file format";
inline constexpr char NoColumnsInTable[] = "No columns in table: '%0%' found";
inline constexpr char ColumnsWidthNotDefined[] = "Columns width of table: '%0%' not defined";
inline constexpr char EndOfTableNotFound[] = "Incorrect RIS dump file: '***RIS*** End of Table ***RIS***' not found";
inline constexpr char ColumnTypeNotFound[] = "Type of column: '%0%' not found";
inline constexpr char ColumnWidthNotFound[] = "Width of column: '%0%' not found";
inline constexpr char ColumnWidthNotCorrect[] = "Width ('%0%', '%1%') for column: '%2%' not correct";
inline constexpr char AccessDatabaseColonNotExists[] = "Access Database: '%0%' not exists";
inline constexpr char SchemaIniSectionNotFound[] = "Section '%0%' not found in '%1%'";
inline constexpr char TextFileFormatNotSupported[] = "Format '%0%' of text file '%1%' not supported";
inline constexpr char TextFileColumnTypeNotSupported[] = "Type '%0%' of column '%1%' in '%2%' not supported";
inline constexpr char TextFileNotInStatement[] = "Text file '%0%' not found in statement '%1%'";

// Control file, proj_file and the project selection
inline constexpr char ControlFileNotDefined[] = "Control file not defined";
inline constexpr char ControlFileNotExisting[] = "Control file: '%0%' not existing";
inline constexpr char PerlFileNotExists[] = "Perl file '%0%' not exists";
inline constexpr char ExecutingControlFileFailed[] = "Executing control file failed";
// The path is part of the text itself, as the control file names it.
inline constexpr char ProjAddrInControlFile[] = "PROJ_ADDR in control file '";
inline constexpr char ProjFileInControlFile[] = "PROJ_FILE in control file '";
inline constexpr char InControlFileNotDefined[] = "' not defined";
inline constexpr char ProjFilePathNotAccessible[] = "Path to proj_file '%0%' on server '%1%' not existing or not accessible";
inline constexpr char ProjFileProjAddrNotDefined[] = "Path to proj_file not correct: PROJ_ADDR not defined";
inline constexpr char ProjFileProjFileNotDefined[] = "Path to proj_file not correct: PROJ_FILE not defined";
inline constexpr char ProjFileFolderNotAccessible[] = "Path to proj_file: '%0%' on server: '%1%' not existing or not accessible";
inline constexpr char ProjFileIncorrect[] = "proj_file: '%0%' is incorrect";
inline constexpr char SelectProjectTitle[] = "Select PDS Project";
inline constexpr char GettingDefaultControlFile[] = "Getting default control file...";
inline constexpr char ReadingControlFile[] = "Reading control file: '%0%'...";
inline constexpr char ReadingProjFile[] = "Reading proj_file (PROJ_ADDR: '%0%'; PROJ_FILE: '%1%')...";
inline constexpr char ProjectsFound[] = "%0% projects found";
inline constexpr char NoProjectsInControlFile[] = "No PDS-Projects in control file found";
inline constexpr char ProjectNotDefined[] = "PDS-Project not defined";
inline constexpr char ControlFileFilter[] = "Control file (*.cmd)|*.cmd";
inline constexpr char ClashFileFilter[] = "Fendrix database (*.fxdb)|*.fxdb";

// Project schema queries, project and area locks, design file settings
inline constexpr char ProjectNumberNotDefined[] = "Project number not defined";
inline constexpr char ProjectSchemaNotExists[] = "Project schema doesn't exist";
inline constexpr char ProjectDirectoryNotDefined[] = "Project directory not defined";
inline constexpr char ProjectDirectoryNotExists[] = "Project directory '%0%' doesn't exist";
inline constexpr char ProjectSeedFileNotDefined[] = "Project seed file not defined";
inline constexpr char ProjectSeedFileNotExists[] = "Project seed file '%0%' doesn't exist";
inline constexpr char ModelSeedFileNotExists[] = "Model seed file: '%0%' doesn't exist";
inline constexpr char ClashDisciplineNotDefined[] = "Clash discipline not defined";
inline constexpr char UnknownLockOwner[] = "UNKNOWN";
inline constexpr char ProjectMarkerLockedBy[] = "Project marker file is locked by '%0%' since %1%";
inline constexpr char ReleasingProjectLockFailed[] = "Releasing project marker file failed: %0%";
inline constexpr char ReleasingAreaLocksFailed[] = "Releasing area marker files failed: %0%";
inline constexpr char ReadingDesignFileSettings[] = "Reading settings from design file '%0%'...";
inline constexpr char DesignMasterUnits[] = "Master units: '%0%'";
inline constexpr char DesignSubUnits[] = "Sub units: '%0%'";
inline constexpr char DesignSubPerMast[] = "SubPerMast: %0%";
inline constexpr char DesignUorPerSub[] = "UorPerSub: %0%";
inline constexpr char DesignFileNotReadable[] = "Design file '%0%' cannot be read";
inline constexpr char DesignHeaderMissing[] = "'%0%' is not a design file: no design header";

// Writing to a project schema in one transaction
inline constexpr char RisSchemaWithoutTransactions[] = "A RIS schema takes no transaction: its tables are loaded through RIS dumps";

} // namespace fx::msg

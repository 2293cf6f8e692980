#pragma once
// Every text of project and database access that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Results and the local store
inline constexpr char FieldNotInResult[] = "Field '%0%' not found in the result";
inline constexpr char RowWidthMismatch[] = "Row of %0% values does not fit %1% fields";
inline constexpr char DatabaseError[] = "Database error %0%: %1%";
inline constexpr char DatabaseFileNotExists[] = "Database file '%0%' not exists";

// RIS dumps, Schema.ini and text files
inline constexpr char SchemaNameNotDefined[] = "Schema name not defined";
inline constexpr char TableNameNotDefined[] = "Table name not defined";
inline constexpr char TableToExtractNotDefined[] = "Table to extract not defined";
inline constexpr char SQLStatementNotDefined[] = "SQL statement not defined";
inline constexpr char OnlySelectQueries[] = "Only SELECT queries can be processed '%0%'";
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
inline constexpr char DirectoryColonNotExists[] = "Directory: '%0%' not exists";
inline constexpr char AccessDatabaseColonNotExists[] = "Access Database: '%0%' not exists";
inline constexpr char AccessDatabaseNotExists[] = "Access database '%0%' not exists";
inline constexpr char SchemaIniSectionNotFound[] = "Section '%0%' not found in '%1%'";
inline constexpr char TextFileFormatNotSupported[] = "Format '%0%' of text file '%1%' not supported";
inline constexpr char TextFileColumnTypeNotSupported[] = "Type '%0%' of column '%1%' in '%2%' not supported";
inline constexpr char TextFileNotInStatement[] = "Text file '%0%' not found in statement '%1%'";
inline constexpr char FileNotWritten[] = "File '%0%' not written";

} // namespace fx::msg

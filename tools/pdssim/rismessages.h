#pragma once
// What the RIS stand-ins print, log and put into their error boxes, in argument form (%0%, %1%).
// These are the tools' own texts, not Fendrix's.

namespace pdssim::rismsg {

// Printed by the tools
inline constexpr char SchemaName[] = "Schema name: %0%";
inline constexpr char SchemaFileName[] = "SCHEMA FILE NAME: %0%";
inline constexpr char RowsProcessed[] = "%0% row(s) processed";
inline constexpr char UnloadedSchema[] = "Unloaded schema: %0%.";
inline constexpr char UnloadedTable[] = "   %0% rows of table: %1% unloaded in file: %2%.";
inline constexpr char LoadedSchema[] = "Loaded schema %0%.";
inline constexpr char RowsLoaded[] = "   Rows loaded: %0%  Error rows: %1%";
inline constexpr char SchemaCleaned[] = "Schema %0% cleaned successfully";
inline constexpr char SchemaNotCleaned[] = "Schema %0% is not in the schema file: nothing cleaned";
inline constexpr char Usage[] = "usage: %0% --site DIR %1%";

// rislod's log
inline constexpr char LoadedTable[] = "Table %0%: %1% rows loaded, %2% error rows";
inline constexpr char RejectedRow[] = "Row %0% of table %1% rejected: %2%";
inline constexpr char FieldCount[] = "%0% fields where the table has %1%";
inline constexpr char RowTooLong[] = "the row is longer than its %0% positions";
inline constexpr char NotAValue[] = "'%0%' of column %1% is no %2%";
inline constexpr char TableNotLoaded[] = "Table %0% not loaded";

// The messages of the error boxes
inline constexpr char UnknownSchema[] = "Schema unknown or not in the schema file.";
inline constexpr char UnknownRelation[] = "Relation unknown or no access for operation.";
inline constexpr char UnknownColumn[] = "Column unknown or not in the relations of the statement.";
inline constexpr char SyntaxError[] = "Syntax error.";
inline constexpr char CreateIndex[] = "An index of this name exists already.";
inline constexpr char TableExists[] = "A relation of this name exists already.";
inline constexpr char SchemaExists[] = "A schema of this name exists already.";
inline constexpr char NoDefaultSchema[] = "No default schema: give one with DEFAULT SCHEMA.";
inline constexpr char DuplicateValue[] = "Duplicate value in a unique index.";
inline constexpr char NullValue[] = "NULL value in a column that is NOT NULL.";
inline constexpr char TypeMismatch[] = "Value does not match the column's type.";
inline constexpr char DatabaseError[] = "The database reported an error:";
inline constexpr char CannotOpenFile[] = "Cannot open file %0%.";
inline constexpr char DumpIncomplete[] = "Table %0% of the dump does not end with '***RIS*** End of Table ***RIS***'.";

} // namespace pdssim::rismsg

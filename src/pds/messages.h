#pragma once
// Every text of project and database access that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Results and the local store
inline constexpr char FieldNotInResult[] = "Field '%0%' not found in the result";
inline constexpr char RowWidthMismatch[] = "Row of %0% values does not fit %1% fields";
inline constexpr char DatabaseError[] = "Database error %0%: %1%";
inline constexpr char DatabaseFileNotExists[] = "Database file '%0%' not exists";

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

} // namespace fx::msg

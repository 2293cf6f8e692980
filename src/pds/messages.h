#pragma once
// Every text of project and database access that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// Results and the local store
inline constexpr char FieldNotInResult[] = "Field '%0%' not found in the result";
inline constexpr char RowWidthMismatch[] = "Row of %0% values does not fit %1% fields";
inline constexpr char DatabaseError[] = "Database error %0%: %1%";
inline constexpr char DatabaseFileNotExists[] = "Database file '%0%' not exists";

} // namespace fx::msg

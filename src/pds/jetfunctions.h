#pragma once
// The SQL functions of Jet that statements written for the local store use and SQLite lacks.
//
// Registered on every connection (SqliteDb does it), each with Jet's handling of NULL and types:
//   SWITCH(c1, v1, c2, v2, ...)  the value after the first true condition; NULL if none. A
//                                condition is true when it is a nonzero number or numeric text;
//                                NULL is false, other text fails with "Type mismatch". Every
//                                value is evaluated, so none may fail.
//   IIF(c, a, b)                 SQLite's own: like Jet's in a statement, it evaluates only the
//                                branch it picks, so IIF(x IS NULL, 0, CLNG(x)) is safe; a NULL
//                                condition is false; text counts by its number
//   FORMAT(x, pattern)           see JetFormat; FORMAT(NULL, ..) is NULL
//   LCASE, UCASE, LEN, TRIM, LTRIM, RTRIM, MID(s, start[, n]), [LEFT](s, n), [RIGHT](s, n)
//                                NULL gives NULL; TRIM and its kin drop blanks only
//   INSTR([start,] s, find[, compare])
//                                1-based, 0 when absent, NULL when s or find is NULL; compare 0
//                                is binary, otherwise (and by default) case is ignored as Jet
//                                compares text
//   [ISNULL](x)                  -1 for NULL, else 0
//   NZ(x[, default])             the default (or '') for NULL
//   CSTR, CLNG, CINT, CDBL, VAL  fail with "Invalid use of Null" on NULL; CLNG and CINT round
//                                halves to even (CLNG(2.5) = 2, CLNG(3.5) = 4)
//   STR(x)                       a blank before a number that is not negative; NULL gives NULL
//   DATEVALUE(x), NOW(), DATE()  dates as the store keeps them: 'YYYY-MM-DD HH:MM:SS', local
//   JCAT(a, b, ...)              Jet's "a & b": NULL counts as '' unless every part is NULL, then
//                                NULL; numbers as CSTR writes them. Write "a & b & c" as
//                                JCAT(a, b, c): SQLite's "||" gives NULL for any NULL part.
// Jet's own true is -1 (ISNULL gives it); SQLite's comparisons give 1, and both count as true.
// LEFT, RIGHT and ISNULL are words of SQLite's grammar: call them in brackets, as in [LEFT](s, 2).
// SQLite allows a function at most 127 arguments, so one SWITCH takes at most 63 pairs: put
// more into a second SWITCH as the value of a last condition 1.
// A Jet failure inside a statement (a type mismatch, an overflow) fails the statement with the
// text Jet gives ("Type mismatch", "Overflow", ...).

#include <QDateTime>
#include <QString>

struct sqlite3;

namespace fx {

/// Registers the functions above on one connection; raises when SQLite refuses one.
void RegisterJetFunctions(sqlite3 *db);

/// A date as the local store keeps it and compares it: 'YYYY-MM-DD HH:MM:SS' in quotes, the
/// stand-in for Jet's #date# literal.
QString JetDateLiteral(const QDateTime &dateTime);

} // namespace fx

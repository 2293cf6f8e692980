#pragma once
// The SQL functions of Jet that statements written for the local store use and SQLite lacks.

#include <QDateTime>
#include <QString>

struct sqlite3;

namespace fx {

/// Registers SWITCH, IIF, FORMAT, LCASE, UCASE, LEN, ISNULL, NZ, CSTR, CLNG, CDBL, INSTR, MID,
/// LEFT, RIGHT, TRIM and their kin on one connection, each behaving as Jet's does (nulls and rounding
/// included).
void RegisterJetFunctions(sqlite3 *db);

/// A date as the local store keeps it and compares it: 'YYYY-MM-DD HH:MM:SS' in quotes, the
/// stand-in for Jet's #date# literal.
QString JetDateLiteral(const QDateTime &dateTime);

} // namespace fx

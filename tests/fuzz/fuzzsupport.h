#pragma once
// What the fuzz targets share: stopping on a broken promise, a private folder, and a guard that
// lets an SQLite connection read and do nothing else.

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

struct sqlite3;

namespace fuzz {

/// Stops the run as a crash, so that libFuzzer keeps the input: a promise of the code was broken.
[[noreturn]] void Broken(const QString &what);

/// Calls Broken unless `holds`.
inline void Expect(bool holds, const QString &what)
{
    if (!holds)
        Broken(what);
}

/// A folder of this process for the files a target writes, with a trailing separator; made
/// once, and TEMP points at it so that nothing of the product writes elsewhere.
QString Folder();

/// Writes `bytes` to `name` in Folder() and gives the path; the same name is overwritten.
QString WriteFile(const QString &name, const char *data, std::size_t size);

/// Lets `db` run nothing but reads of `tables`, the functions in `functions` and the pragmas
/// in `pragmas` that only look at the schema (all lower case): anything else met while a
/// statement is prepared (a write, ATTACH, another PRAGMA, table or function) stops the run.
void AllowOnlyReading(sqlite3 *db, const QStringList &tables, const QStringList &functions,
                      const QStringList &pragmas = {});

/// `condition` must be one expression: "SELECT 1 FROM <table> WHERE (<condition>);" must
/// prepare as one statement with nothing after it. Gives false when SQLite refuses it.
bool IsOneCondition(sqlite3 *db, const QString &table, const QString &condition);

/// Splits fuzz bytes into texts at `separator`, at most `maxParts` of them (the last takes the
/// rest); the bytes are read as UTF-8, as the product reads typed or stored text.
QStringList SplitInput(const uint8_t *data, std::size_t size, char separator, int maxParts);

} // namespace fuzz

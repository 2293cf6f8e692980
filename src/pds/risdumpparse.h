#pragma once
// Reading RIS dumps: the schemas and tables they hold, and one table turned into a text file
// with its Schema.ini entry for the text-file route.

#include "pds/blocklinereader.h"
#include "pds/schemaini.h"

#include <QString>
#include <QStringList>

namespace fx {
struct RISDumpColumn;
}

namespace fx::risdump {

/// The Schema.ini column of a dump column: "char width n" (n capped at 239), "short", "long",
/// "double", "datetime" (timestamp) or "memo" (ris_text, ris_blob); an empty type when unknown.
TextFileColumn SchemaIniColumn(const RISDumpColumn &column);

/// The names of the schemas a dump holds, in file order.
QStringList RISDumpGetSchemas(const QString &dumpFile);

/// The tables of `schema` in a dump, in file order.
QStringList RISDumpGetTables(const QString &dumpFile, const QString &schema);

/// The columns of `table` of `schema` in a dump, as its definition declares them.
QList<RISDumpColumn> RISDumpGetColumns(const QString &dumpFile, const QString &schema, const QString &table);

/// Writes the rows of `table` of `schema` as a new text file in `tempDir` (a random name with
/// ".txt") and its section of the Schema.ini there; gives the text file. Free-form rows become
/// fields separated by the character 1; fixed-form rows are copied as they stand, but for char
/// fields wider than the text driver takes, which are cut to 239 characters. With
/// `replaceNull` the NULL number -32768 becomes 0, fixed-form rows keeping their width.
QString RISDumpParse(const QString &tempDir, const QString &dumpFile, const QString &schema, const QString &table,
                     bool replaceNull = false, qsizetype blockSize = BlockLineReader::kDefaultBlockSize);

} // namespace fx::risdump

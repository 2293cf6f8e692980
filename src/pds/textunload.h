#pragma once
// A query of a project schema written out as a tab-separated text file with its Schema.ini entry.

#include "pds/schemaconnection.h"

namespace fx {

/// The Schema.ini type of a column: "short", "long", "double", "char width 38" for a GUID, and
/// "char width <size>" for the rest, 240 for a size over 255.
QString SchemaIniColumnType(int adoType, qint64 definedSize);

/// Writes the rows of `sql` to a new text file of a random name in `folder` and adds its section
/// to the folder's Schema.ini; gives the text file. Fields are separated by TAB, rows end in
/// CR LF, a NULL is "-32768" and a double quote becomes a single one, so that the text driver
/// never takes it for the start of a quoted field. On a failure neither file is left behind.
QString UnloadQueryToTextFile(SchemaConnection &connection, const QString &sql, const QString &folder);

} // namespace fx

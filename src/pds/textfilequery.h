#pragma once
// Queries over a text file: the text driver's part of the text-file route, done in SQLite.

#include "pds/recordset.h"

#include <QRegularExpressionMatch>
#include <QString>

namespace fx {

/// The FROM of `sql`, in any case, as a word of its own followed by blanks: the match ends where
/// the table starts. No match for a text without one.
QRegularExpressionMatch MatchFromClause(const QString &sql);

/// The caller's SELECT over `table` turned into one over the text file: the table after FROM
/// becomes the file's name with " AS [table]"; without a FROM naming the table, the whole file.
QString TextFileSelect(const QString &sql, const QString &table, const QString &textFile);

/// Runs `rewrittenSql` (a SELECT naming the text file "AS [table]") over the rows of the text
/// file and its Schema.ini entry; gives the result in memory.
Recordset ReadTextFileQuery(const QString &textFile, const QString &rewrittenSql);

/// Brings the rows of `rewrittenSql` over the text file into `table` of the local store
/// `database`: appended by column position when the table exists, else into a new table of the
/// result's columns; committed in slices.
void ImportTextFileQuery(const QString &textFile, const QString &rewrittenSql, const QString &database,
                         const QString &table);

} // namespace fx

#pragma once
// The clashes in view written out as comma-separated values, for scripts and spreadsheets.

#include <QString>

namespace fx {

/// Writes the rows of `clashes` that pass the grid filter to `file`, in order of the clash
/// id: a header line of column names, then one line a clash (UTF-8, fields quoted where they
/// hold a comma, a quote or a line end, an empty field for null). The file is replaced only
/// when all is written. Gives the number of clashes written.
qint64 ExportClashesCsv(const QString &file);

} // namespace fx

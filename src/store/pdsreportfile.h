#pragma once
// The clash numbers of a report of the interference checker: each stands in the first ten
// columns of its line.

#include <QString>
#include <QStringList>

namespace fx {

/// The clash numbers of the report's lines, as text, in the order of the file. A line counts
/// when its first ten characters, trimmed, are a whole number above 0.
QStringList ReadPDSReportFile(const QString &file);

} // namespace fx

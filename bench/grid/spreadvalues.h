#pragma once
// The made-up text columns of the grid benchmarks: in turn columns of few values, of many
// values and of mostly distinct ones, each with some NULLs, as a project's clash columns are.

#include <QString>

namespace fxbench {

/// The SQL expression over the row number `n` that fills the `index`-th text column `column`.
inline QString SpreadValues(int index, const char *column)
{
    const int spread = (index % 3 == 0) ? 5 : (index % 3 == 1) ? 400 : 100000;
    return QStringLiteral("CASE WHEN n % 11 = %1 THEN NULL ELSE '%2-' || ((n * %3) % %4) END")
        .arg(index % 11)
        .arg(QLatin1String(column))
        .arg(2654435761LL % (index + 97))
        .arg(spread);
}

} // namespace fxbench

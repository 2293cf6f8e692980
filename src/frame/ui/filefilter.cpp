#include "frame/ui/filefilter.h"

#include <QStringList>

namespace fx {

QString QtFileFilter(const QString &pairs)
{
    const QStringList parts = pairs.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i].trimmed();
        const QString patterns = parts[i + 1].trimmed().replace(QLatin1Char(';'), QLatin1Char(' '));
        filters.append(description.contains(QLatin1Char('(')) ? description
                                                              : description + QStringLiteral(" (") + patterns + QLatin1Char(')'));
    }
    return filters.join(QStringLiteral(";;"));
}

} // namespace fx

#include "grid/cellstyle.h"

#include <optional>

namespace fx {

namespace {
// Text colours of the disciplines, as Windows RGB numbers.
std::optional<quint32> DisciplineColour(const QString &value)
{
    if (value == QLatin1String("Piping"))
        return 49152;
    if (value == QLatin1String("Equipment"))
        return 16711680;
    if (value == QLatin1String("Structural"))
        return 255;
    return std::nullopt;
}
} // namespace

bool IsDisciplineColumn(const QString &column)
{
    return column.contains(QLatin1String("discipline"), Qt::CaseInsensitive);
}

bool IsStructureColumn(const QString &column)
{
    return column.endsWith(QLatin1String("_structure"), Qt::CaseInsensitive);
}

CellStyle CellStyleOf(const QString &column, const QString &value)
{
    CellStyle style;
    style.bold = IsStructureColumn(column);
    if (IsDisciplineColumn(column)) {
        if (const auto colour = DisciplineColour(value)) {
            style.coloured = true;
            style.rgb = *colour;
            style.bold = true;
        }
    }
    return style;
}

} // namespace fx

#include "grid/columnsettings.h"

#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/settings.h"

#include <vector>

namespace fx {

namespace {

constexpr char OrderSection[] = "ColumnsOrder";
constexpr char WidthSection[] = "ColumnsWidth";
constexpr char FilterSection[] = "ColumnsFilter";

QString Saved(const char *section, const QString &column)
{
    return GetIniValue(GetConfigFile(), QString::fromLatin1(section), column).trimmed();
}

// A whole number as the settings file may hold it ("3", "3.0", " 3 "); nothing otherwise.
std::optional<int> WholeNumber(const QString &text)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || value != double(qint64(value)) || value < -2147483648.0 || value > 2147483647.0)
        return std::nullopt;
    return int(value);
}

} // namespace

std::optional<int> SavedColumnOrder(const QString &column, int columnCount)
{
    const auto order = WholeNumber(Saved(OrderSection, column));
    if (!order || *order < 0 || *order >= columnCount)
        return std::nullopt;
    return order;
}

std::optional<int> SavedColumnWidth(const QString &column)
{
    bool ok = false;
    const double width = Saved(WidthSection, column).toDouble(&ok);
    if (!ok || width < 0 || width > 1e6)
        return std::nullopt;
    return int(width + 0.5);
}

QString SavedColumnFilter(const QString &column)
{
    if (column.compare(QLatin1String("status"), Qt::CaseInsensitive) == 0)
        return QString();
    return Saved(FilterSection, column);
}

void SaveColumnSettings(const QList<SavedColumn> &columns)
{
    Frame("SaveColumnSettings", [&] {
        std::vector<IniEdit> edits;
        for (const char *section : {OrderSection, WidthSection, FilterSection})
            edits.push_back({QString::fromLatin1(section), std::nullopt, std::nullopt});
        for (const SavedColumn &column : columns) {
            edits.push_back({QString::fromLatin1(OrderSection), column.name, QString::number(column.order)});
            edits.push_back({QString::fromLatin1(WidthSection), column.name, QString::number(column.width)});
            edits.push_back({QString::fromLatin1(FilterSection), column.name, column.filter});
        }
        // One write for all: the private-profile calls would rewrite the file once a key.
        IniFile::Write(GetConfigFile(), edits);
    });
}

} // namespace fx

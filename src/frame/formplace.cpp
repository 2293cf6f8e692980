#include "frame/formplace.h"

#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/settings.h"

#include <vector>

namespace fx {

namespace {
std::optional<qint32> ReadNumber(const QString &file, const QString &form, const QString &key)
{
    bool ok = false;
    const qint32 number = GetIniValue(file, form, key).toInt(&ok);
    return ok ? std::optional<qint32>(number) : std::nullopt;
}
} // namespace

void SaveFormSettings(const QString &form, const FormPlace &place)
{
    Frame("SaveFormSettings", [&] {
        std::vector<IniEdit> edits{{form, QStringLiteral("WindowState"), QString::number(place.WindowState)}};
        if (place.WindowState == FormPlace::Normal) {
            edits.push_back({form, QStringLiteral("Top"), QString::number(place.Top)});
            edits.push_back({form, QStringLiteral("Left"), QString::number(place.Left)});
            edits.push_back({form, QStringLiteral("Height"), QString::number(place.Height)});
            edits.push_back({form, QStringLiteral("Width"), QString::number(place.Width)});
        }
        IniFile::Write(GetConfigFile(), edits);
    });
}

std::optional<FormPlace> LoadFormSettings(const QString &form, const QRect &screen)
{
    return Frame("LoadFormSettings", [&]() -> std::optional<FormPlace> {
        const QString file = GetConfigFile();
        const auto state = ReadNumber(file, form, QStringLiteral("WindowState"));
        if (!state)
            return std::nullopt;
        FormPlace place;
        place.WindowState = *state;
        const auto top = ReadNumber(file, form, QStringLiteral("Top"));
        const auto left = ReadNumber(file, form, QStringLiteral("Left"));
        const auto height = ReadNumber(file, form, QStringLiteral("Height"));
        const auto width = ReadNumber(file, form, QStringLiteral("Width"));
        if (top && left && height && width && *height > 0 && *width > 0) {
            const QRect rect(*left, *top, *width, *height);
            if (screen.contains(rect)) {
                place.Top = *top;
                place.Left = *left;
                place.Height = *height;
                place.Width = *width;
                place.HasPosition = true;
            }
        }
        return place;
    });
}

} // namespace fx

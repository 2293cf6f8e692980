#include "store/volumefilter.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/translation.h"
#include "store/clashstore.h"
#include "store/clashviewsettings.h"
#include "store/optionsmessages.h"

#include <QHash>

namespace fx {

namespace {

const QString kNameEnd = QStringLiteral(" (");

QString Translated(const char *message, const QStringList &args)
{
    return TranslateText(ArgForm(message, args));
}

// Raises `messages[i]` for the first set text that is not a number.
template <std::size_t N>
void CheckNumbers(const std::array<QString, N> &texts, const std::array<const char *, N> &messages)
{
    for (std::size_t i = 0; i < N; ++i)
        if (!texts[i].trimmed().isEmpty() && !IsNumericSetting(texts[i]))
            Raise(messages[i], {texts[i]});
}

} // namespace

QList<InterferenceArea> ReadInterferenceAreas()
{
    return Frame("ReadInterferenceAreas", [] {
        LogMessage(msg::ReadingInterferenceAreas, {});
        SqliteDb &db = ClashConnection();
        const Recordset names = db.Read(QStringLiteral("SELECT discipline_indx_no, discipline_name FROM pdtable_111;"));
        QHash<QString, QString> disciplines;
        for (const QVariantList &row : names.Rows())
            disciplines.insert(row.at(0).toString(), row.at(1).toString().trimmed());
        const Recordset rows = db.Read(QStringLiteral(
            "SELECT discipline_indx_no, area_name, volume_low_x, volume_low_y, volume_low_z, volume_high_x, volume_high_y, "
            "volume_high_z FROM pdtable_112 WHERE(volume_low_x <> 0 OR volume_low_y <> 0 OR volume_low_z <> 0 OR "
            "volume_high_x <> 0 OR volume_high_y <> 0 OR volume_high_z <> 0);"));
        QList<InterferenceArea> areas;
        for (const QVariantList &row : rows.Rows()) {
            InterferenceArea area;
            area.name = row.at(1).toString().trimmed();
            area.text = area.name + kNameEnd + disciplines.value(row.at(0).toString()) + QLatin1Char(')');
            for (int i = 0; i < 6; ++i)
                area.bounds[std::size_t(i)] = row.at(2 + i).toDouble();
            areas << area;
        }
        LogMessage(msg::InterferenceAreasFound, {QString::number(areas.size())});
        return areas;
    });
}

QString AreaNameOfText(const QString &text)
{
    const qsizetype end = text.indexOf(kNameEnd);
    return end < 0 ? text : text.left(end);
}

std::array<QString, 6> AreaBoundTexts(const QList<InterferenceArea> &areas, const QString &text)
{
    std::array<QString, 6> texts;
    if (text.isEmpty())
        return texts;
    const QString name = AreaNameOfText(text);
    for (const InterferenceArea &area : areas) {
        if (area.name != name)
            continue;
        for (std::size_t i = 0; i < 6; ++i)
            texts[i] = QString::number(area.bounds[i], 'f', 3);
        break;
    }
    return texts;
}

bool IsDvcsDefined(const std::array<QString, 3> &centres)
{
    for (const QString &centre : centres) {
        const std::optional<double> value = LeadingNumber(QString(centre).replace(QLatin1Char(','), QLatin1Char('.')));
        if (value && *value != 0)
            return true;
    }
    return false;
}

QString VolumeFrameCaption(bool dvcsDefined)
{
    return Translated(dvcsDefined ? msg::VolumeFrameDvcs : msg::VolumeFrameMasterUnits, {});
}

std::array<QString, 6> VolumeBoundCaptions(const ClashRange &range, const QString &masterUnits)
{
    return {Translated(msg::LabelEastingLow, {range.xMin, masterUnits}),
            Translated(msg::LabelNorthingLow, {range.yMin, masterUnits}),
            Translated(msg::LabelElevationLow, {range.zMin, masterUnits}),
            Translated(msg::LabelEastingHigh, {range.xMax, masterUnits}),
            Translated(msg::LabelNorthingHigh, {range.yMax, masterUnits}),
            Translated(msg::LabelElevationHigh, {range.zMax, masterUnits})};
}

std::array<QString, 3> DvcsCaptions(const QString &masterUnits)
{
    return {Translated(msg::DvcsEastingCaption, {masterUnits}), Translated(msg::DvcsNorthingCaption, {masterUnits}),
            Translated(msg::DvcsElevationCaption, {masterUnits})};
}

void CheckVolumeBounds(const std::array<QString, 6> &bounds)
{
    CheckNumbers<6>(bounds, {msg::EastingLowNotCorrect, msg::NorthingLowNotCorrect, msg::ElevationLowNotCorrect,
                             msg::EastingHighNotCorrect, msg::NorthingHighNotCorrect, msg::ElevationHighNotCorrect});
}

void CheckDvcsOffsets(const std::array<QString, 3> &centres)
{
    CheckNumbers<3>(centres, {msg::DvcsEastingNotCorrect, msg::DvcsNorthingNotCorrect, msg::DvcsElevationNotCorrect});
}

} // namespace fx

#pragma once
// The volume page of the options: the project's interference areas with their volumes, the
// captions that tell the extent of the clashes, and the checks of the bounds and the design
// volume offsets.

#include "store/clashview.h"

#include <QList>
#include <QString>

#include <array>

namespace fx {

/// One interference area with a volume, as the area box lists it.
struct InterferenceArea
{
    QString text;                 ///< the area's name, " (", its discipline's name, ")"
    QString name;
    std::array<double, 6> bounds; ///< low x, y, z, then high x, y, z
};

/// The areas of the open project that have a volume, logged as they are read.
QList<InterferenceArea> ReadInterferenceAreas();

/// The area's name of an entry of the area box: the text in front of " (".
QString AreaNameOfText(const QString &text);

/// The six bound boxes for a chosen entry, in the order of VolumeBoundKeys() and formatted
/// "0.000": those of the first area of that name; all blank for no entry or an unknown one.
std::array<QString, 6> AreaBoundTexts(const QList<InterferenceArea> &areas, const QString &text);

/// True when any of the design volume offsets is a number other than 0.
bool IsDvcsDefined(const std::array<QString, 3> &centres);

/// The caption of the volume frame, translated.
QString VolumeFrameCaption(bool dvcsDefined);

/// The captions of the six bound boxes, translated, in the order of VolumeBoundKeys(): each with
/// the extent of the clashes on its side and the master units.
std::array<QString, 6> VolumeBoundCaptions(const ClashRange &range, const QString &masterUnits);

/// The captions of the three offset boxes, translated, with the master units.
std::array<QString, 3> DvcsCaptions(const QString &masterUnits);

/// Raises the first bound that is set and not a number, in the order of VolumeBoundKeys().
void CheckVolumeBounds(const std::array<QString, 6> &bounds);

/// Raises the first offset that is set and not a number: easting, northing, elevation.
void CheckDvcsOffsets(const std::array<QString, 3> &centres);

} // namespace fx

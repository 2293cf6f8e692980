#pragma once
// The working units of a DGN V7 design file, read from its design header (the TCB): the
// first element of the file, type 9, 1536 bytes long.

#include <QString>

namespace fx {

/// Working units and dimension of a design file.
struct DGNSettings
{
    QString masterUnits; ///< two-letter label, "FT" say
    QString subUnits;    ///< two-letter label, "IN" say
    qint32 subPerMaster = 0;
    qint32 uorPerSub = 0; ///< units of resolution per sub unit
    bool is3D = false;
};

/// The settings in the design header of `file`. Raises when the file cannot be read or does
/// not begin with a whole design header.
DGNSettings ReadDGNSettings(const QString &file);

} // namespace fx

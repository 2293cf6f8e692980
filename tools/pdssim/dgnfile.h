#pragma once
// DGN V7 (IGDS) design files of a simulated site: the design header (TCB, type 9) with the
// working units, dimension and global origin, graphic elements, and the end-of-design word.
//
// Offsets in the TCB as readers use them: 1112 sub units per master unit, 1116 units of
// resolution per sub unit (both 32-bit integers in DGN word order), 1120 and 1122 the two-
// letter master and sub unit names, 1214 bit 0x40 set for 3D, 1240/1248/1256 the global
// origin in units of resolution (VAX D-float).

#include <QByteArray>
#include <QList>
#include <QString>

namespace pdssim {

inline constexpr int kTcbSize = 1536;
inline constexpr int kTcbSubPerMaster = 1112;
inline constexpr int kTcbUorPerSub = 1116;
inline constexpr int kTcbMasterUnits = 1120;
inline constexpr int kTcbSubUnits = 1122;
inline constexpr int kTcbDimension = 1214;
inline constexpr int kTcbGlobalOrigin = 1240;

/// The working units and geometry settings of a design file.
struct DgnSettings
{
    QString masterUnits = QStringLiteral("FT"); ///< at most two Latin-1 characters
    QString subUnits = QStringLiteral("IN");
    qint32 subPerMaster = 12;
    qint32 uorPerSub = 2032;
    bool is3d = true;
    double originX = 0;
    double originY = 0;
    double originZ = 0;

    bool operator==(const DgnSettings &) const = default;
};

/// A box in units of resolution; a model file draws each as a 3D line from corner to corner.
struct DgnBox
{
    qint32 low[3] = {0, 0, 0};
    qint32 high[3] = {0, 0, 0};
};

/// The bytes of a design file: the TCB, a line element per box on `level`, the end word.
QByteArray DgnFileBytes(const DgnSettings &settings, const QList<DgnBox> &boxes, int level = 10);

/// Writes a design file at `path`.
void WriteDgnFile(const QString &path, const DgnSettings &settings, const QList<DgnBox> &boxes = {});

/// The settings of the design file's TCB. Raises when the file cannot be read or does not
/// begin with a complete TCB.
DgnSettings ReadDgnSettings(const QString &path);

/// The element types after the TCB up to the end word, in file order; deleted ones left out.
QList<int> ReadDgnElementTypes(const QString &path);

} // namespace pdssim

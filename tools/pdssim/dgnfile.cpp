#include "pdssim/dgnfile.h"
#include "pdssim/sitemessages.h"

#include "pdssim/sitewrite.h"
#include "pdssim/vaxnumbers.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QFile>

#include <algorithm>

namespace pdssim {

namespace {
constexpr int kTypeLine = 3;
constexpr int kTypeTcb = 9;
constexpr int kTcbLevel = 8;
constexpr int kLineSize = 60; // a 36-byte header and two 3D points
constexpr int kHeaderSize = 4;

// The first four bytes of an element: level (bit 7 complex), type (bit 7 deleted), and the
// number of 16-bit words that follow.
void PutElementHeader(QByteArray &element, int level, int type)
{
    const int words = int(element.size() - kHeaderSize) / 2;
    element[0] = char(level & 0x3f);
    element[1] = char(type & 0x7f);
    element[2] = char(words & 0xff);
    element[3] = char(words >> 8);
}

QByteArray UnitLabel(const QString &label)
{
    const QByteArray bytes = label.toLatin1();
    if (bytes.size() > 2)
        fx::Raise(pdssim::sitemsg::SimUnitLabelTooLong, {label});
    return bytes.leftJustified(2, '\0');
}

QByteArray Tcb(const DgnSettings &settings)
{
    QByteArray tcb(kTcbSize, '\0');
    PutElementHeader(tcb, kTcbLevel, kTypeTcb);
    PutVaxInt32(tcb, kTcbSubPerMaster, settings.subPerMaster);
    PutVaxInt32(tcb, kTcbUorPerSub, settings.uorPerSub);
    tcb.replace(kTcbMasterUnits, 2, UnitLabel(settings.masterUnits));
    tcb.replace(kTcbSubUnits, 2, UnitLabel(settings.subUnits));
    if (settings.is3d)
        tcb[kTcbDimension] = char(0x40);
    PutVaxDouble(tcb, kTcbGlobalOrigin, settings.originX);
    PutVaxDouble(tcb, kTcbGlobalOrigin + 8, settings.originY);
    PutVaxDouble(tcb, kTcbGlobalOrigin + 16, settings.originZ);
    return tcb;
}

// A 3D line: the range (each bound with its sign bit flipped, as ranges are stored), no
// graphic group, the attribute offset to the element's end, colour 3, then the two points.
QByteArray Line(const DgnBox &box, int level)
{
    QByteArray line(kLineSize, '\0');
    PutElementHeader(line, level, kTypeLine);
    for (int axis = 0; axis < 3; ++axis) {
        const qint32 low = std::min(box.low[axis], box.high[axis]);
        const qint32 high = std::max(box.low[axis], box.high[axis]);
        PutVaxInt32(line, 4 + 4 * axis, qint32(quint32(low) ^ 0x80000000u));
        PutVaxInt32(line, 16 + 4 * axis, qint32(quint32(high) ^ 0x80000000u));
        PutVaxInt32(line, 36 + 4 * axis, box.low[axis]);
        PutVaxInt32(line, 48 + 4 * axis, box.high[axis]);
    }
    line[30] = char((kLineSize - 32) / 2);
    line[34] = char(3);
    return line;
}

QByteArray ReadWhole(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fx::Raise(pdssim::sitemsg::SimDgnCannotRead, {path});
    return file.readAll();
}

// The TCB's bytes, raising unless the file begins with a whole one.
void RequireTcb(const QByteArray &bytes, const QString &path)
{
    if (bytes.size() < kTcbGlobalOrigin + 24 || (bytes.at(1) & 0x7f) != kTypeTcb)
        fx::Raise(pdssim::sitemsg::SimDgnNoDesignHeader, {path});
    const int words = quint8(bytes.at(2)) | quint8(bytes.at(3)) << 8;
    if (kHeaderSize + 2 * words < kTcbGlobalOrigin + 24 || kHeaderSize + 2 * words > bytes.size())
        fx::Raise(pdssim::sitemsg::SimDgnNoDesignHeader, {path});
}
} // namespace

QByteArray DgnFileBytes(const DgnSettings &settings, const QList<DgnBox> &boxes, int level)
{
    return fx::Frame("DgnFileBytes", [&] {
        QByteArray bytes = Tcb(settings);
        for (const DgnBox &box : boxes)
            bytes.append(Line(box, level));
        bytes.append(2, char(0xff));
        return bytes;
    });
}

void WriteDgnFile(const QString &path, const DgnSettings &settings, const QList<DgnBox> &boxes)
{
    fx::Frame("WriteDgnFile", [&] { WriteSiteFile(path, DgnFileBytes(settings, boxes)); });
}

DgnSettings ReadDgnSettings(const QString &path)
{
    return fx::Frame("ReadDgnSettings", [&] {
        const QByteArray bytes = ReadWhole(path);
        RequireTcb(bytes, path);
        const auto label = [&](int at) { return QString::fromLatin1(bytes.mid(at, 2)).remove(QChar(0)).trimmed(); };
        DgnSettings settings;
        settings.subPerMaster = GetVaxInt32(bytes, kTcbSubPerMaster);
        settings.uorPerSub = GetVaxInt32(bytes, kTcbUorPerSub);
        settings.masterUnits = label(kTcbMasterUnits);
        settings.subUnits = label(kTcbSubUnits);
        settings.is3d = (bytes.at(kTcbDimension) & 0x40) != 0;
        settings.originX = GetVaxDouble(bytes, kTcbGlobalOrigin);
        settings.originY = GetVaxDouble(bytes, kTcbGlobalOrigin + 8);
        settings.originZ = GetVaxDouble(bytes, kTcbGlobalOrigin + 16);
        return settings;
    });
}

QList<int> ReadDgnElementTypes(const QString &path)
{
    return fx::Frame("ReadDgnElementTypes", [&] {
        const QByteArray bytes = ReadWhole(path);
        RequireTcb(bytes, path);
        QList<int> types;
        qsizetype at = kHeaderSize + 2 * (quint8(bytes.at(2)) | quint8(bytes.at(3)) << 8);
        while (at + 2 <= bytes.size()) {
            if (quint8(bytes.at(at)) == 0xff && quint8(bytes.at(at + 1)) == 0xff)
                return types;
            if (at + kHeaderSize > bytes.size())
                break;
            if ((bytes.at(at + 1) & 0x80) == 0)
                types.append(bytes.at(at + 1) & 0x7f);
            at += kHeaderSize + 2 * (quint8(bytes.at(at + 2)) | quint8(bytes.at(at + 3)) << 8);
        }
        fx::Raise(pdssim::sitemsg::SimDgnNoEndOfDesign, {path});
    });
}

} // namespace pdssim

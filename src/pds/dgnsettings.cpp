#include "pds/dgnsettings.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QFile>

namespace fx {

namespace {
// The design header: level 8, type 9, 766 words after the 4-byte element header.
constexpr qsizetype kTcbSize = 1536;
constexpr int kTcbLevel = 8;
constexpr int kTcbType = 9;
constexpr int kTcbWords = (kTcbSize - 4) / 2;
constexpr qsizetype kSubPerMaster = 1112;
constexpr qsizetype kUorPerSub = 1116;
constexpr qsizetype kMasterUnits = 1120;
constexpr qsizetype kSubUnits = 1122;
constexpr qsizetype kDimension = 1214;
constexpr char k3DFlag = 0x40;

quint32 Byte(const QByteArray &bytes, qsizetype at)
{
    return quint8(bytes.at(at));
}

// DGN V7 keeps a 32-bit integer as two little-endian 16-bit words, the high word first.
qint32 VaxInt32(const QByteArray &bytes, qsizetype at)
{
    return qint32(Byte(bytes, at) << 16 | Byte(bytes, at + 1) << 24 | Byte(bytes, at + 2) | Byte(bytes, at + 3) << 8);
}

// A unit label of up to two characters, padded with NUL or blanks.
QString Label(const QByteArray &bytes, qsizetype at)
{
    return QString::fromLatin1(bytes.mid(at, 2)).remove(QChar(0)).trimmed();
}

bool IsDesignHeader(const QByteArray &bytes)
{
    // Bits above the level (0xc0) mark a complex or 3D header and may be set.
    return bytes.size() >= kTcbSize && (Byte(bytes, 0) & 0x3f) == kTcbLevel && (Byte(bytes, 1) & 0x7f) == kTcbType
        && int(Byte(bytes, 2) | Byte(bytes, 3) << 8) == kTcbWords;
}
} // namespace

DGNSettings ReadDGNSettings(const QString &file)
{
    return Frame("ReadDGNSettings", [&] {
        QFile design(file);
        if (!design.open(QIODevice::ReadOnly))
            Raise(msg::DesignFileNotReadable, {file});
        const QByteArray header = design.read(kTcbSize);
        if (!IsDesignHeader(header))
            Raise(msg::DesignHeaderMissing, {file});
        DGNSettings settings;
        settings.masterUnits = Label(header, kMasterUnits);
        settings.subUnits = Label(header, kSubUnits);
        settings.subPerMaster = VaxInt32(header, kSubPerMaster);
        settings.uorPerSub = VaxInt32(header, kUorPerSub);
        settings.is3D = (header.at(kDimension) & k3DFlag) != 0;
        return settings;
    });
}

} // namespace fx

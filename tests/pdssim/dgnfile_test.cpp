#include "pdssim/dgnfile.h"
#include "pdssim/sitemessages.h"
#include "pdssim/vaxnumbers.h"

#include "pds/messages.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

QByteArray Hex(const QByteArray &bytes, qsizetype at, qsizetype size)
{
    return bytes.mid(at, size).toHex(' ');
}

TEST(VaxNumbers, integers_and_doubles_take_the_dgn_byte_order_and_come_back)
{
    QByteArray bytes(8, '\0');
    PutVaxInt32(bytes, 0, 0x12345678);
    EXPECT_EQ(Hex(bytes, 0, 4), "34 12 78 56");
    for (const qint32 value : {0, 1, -1, 12, 2032, -2147483647 - 1, 2147483647}) {
        PutVaxInt32(bytes, 2, value);
        EXPECT_EQ(GetVaxInt32(bytes, 2), value);
    }
    // 1.0 is the D-float 0x4080 0000 0000 0000, its words little-endian with the high word first.
    PutVaxDouble(bytes, 0, 1.0);
    EXPECT_EQ(Hex(bytes, 0, 8), "80 40 00 00 00 00 00 00");
    PutVaxDouble(bytes, 0, -2.5);
    EXPECT_EQ(Hex(bytes, 0, 8), "20 c1 00 00 00 00 00 00");
    for (const double value : {0.0, 1.0, -2.5, 0.1, 2147483648.0, -123456.789, 1e30, 3e-38}) {
        PutVaxDouble(bytes, 0, value);
        EXPECT_EQ(GetVaxDouble(bytes, 0), value) << value;
    }
    PutVaxDouble(bytes, 0, 1e-300); // below the D-float range
    EXPECT_EQ(GetVaxDouble(bytes, 0), 0.0);
}

TEST(DgnFile, header_settings_stand_at_their_offsets_and_read_back_with_the_elements)
{
    fxtest::Sandbox box;
    DgnSettings metric{u"M"_s, u"MM"_s, 1000, 80, false, 1000.5, -2000.0, 0.0};
    const QString seed = box.Root() + u"mdlsdz.dgn"_s;
    WriteDgnFile(seed, metric);
    QFile file(seed);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(Hex(bytes, 0, 4), "08 09 fe 02"); // level 8, type 9, 766 words follow
    EXPECT_EQ(bytes.size(), kTcbSize + 2);
    EXPECT_EQ(Hex(bytes, kTcbSubPerMaster, 8), "00 00 e8 03 00 00 50 00");
    EXPECT_EQ(bytes.mid(kTcbMasterUnits, 4), QByteArray("M\0MM", 4));
    EXPECT_EQ(bytes.at(kTcbDimension) & 0x40, 0);
    EXPECT_EQ(Hex(bytes, kTcbSize, 2), "ff ff");
    EXPECT_EQ(ReadDgnSettings(seed), metric);
    EXPECT_EQ(ReadDgnElementTypes(seed), QList<int>());

    const DgnSettings imperial; // FT/IN, 12 sub per master, 2032 units per sub, 3D
    const QString model = box.Root() + u"models/p101.dgn"_s;
    DgnBox pipe{{-100, 200, 300}, {400, 100, 900}};
    WriteDgnFile(model, imperial, {pipe, DgnBox{}});
    EXPECT_EQ(ReadDgnSettings(model), imperial);
    EXPECT_EQ(ReadDgnElementTypes(model), QList<int>({3, 3}));
    QFile modelFile(model);
    ASSERT_TRUE(modelFile.open(QIODevice::ReadOnly));
    const QByteArray line = modelFile.readAll().mid(kTcbSize, 60);
    EXPECT_EQ(Hex(line, 0, 4), "0a 03 1c 00");
    // The range's bounds are ordered per axis and stored with the sign bit flipped.
    EXPECT_EQ(quint32(GetVaxInt32(line, 4)), 0x80000000u - 100);
    EXPECT_EQ(GetVaxInt32(line, 8) ^ qint32(0x80000000), 100);
    EXPECT_EQ(GetVaxInt32(line, 20) ^ qint32(0x80000000), 200);
    EXPECT_EQ(GetVaxInt32(line, 36), -100);
    EXPECT_EQ(GetVaxInt32(line, 52), 100);

    const QString bad = box.WriteFile(u"bad.dgn"_s, QByteArray(1000, '\0'));
    EXPECT_EQ(fxtest::FailureText([&] { ReadDgnSettings(bad); }),
              u"ReadDgnSettings: "_s + fx::ArgForm(pdssim::sitemsg::SimDgnNoDesignHeader, {bad}));
    const QString open = box.WriteFile(u"open.dgn"_s, DgnFileBytes(imperial, {pipe}).chopped(2));
    EXPECT_EQ(fxtest::FailureText([&] { ReadDgnElementTypes(open); }),
              u"ReadDgnElementTypes: "_s + fx::ArgForm(pdssim::sitemsg::SimDgnNoEndOfDesign, {open}));
    EXPECT_EQ(fxtest::FailureText([&] { WriteDgnFile(model, DgnSettings{u"FEET"_s}); }),
              u"WriteDgnFile: DgnFileBytes: "_s + fx::ArgForm(pdssim::sitemsg::SimUnitLabelTooLong, {u"FEET"_s}));
}

} // namespace

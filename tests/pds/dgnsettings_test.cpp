// The working units of a design file, read from its design header.

#include "pds/dgnsettings.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// A design header as a V7 file begins: level 8, type 9, 766 words, then the settings.
QByteArray DesignHeader(char levelByte = 0x08)
{
    QByteArray tcb(1536, '\0');
    tcb[0] = levelByte;
    tcb[1] = 0x09;
    tcb[2] = char(0xfe);
    tcb[3] = 0x02;
    return tcb;
}

void Put(QByteArray &bytes, int at, std::initializer_list<int> values)
{
    for (const int value : values)
        bytes[at++] = char(value);
}

QString WriteFile(const fxtest::Sandbox &box, const QByteArray &bytes)
{
    const QString path = box.Root() + u"seed.dgn"_s;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    return path;
}

} // namespace

TEST(DGNSettings, the_units_come_from_the_header_in_vax_word_order)
{
    fxtest::Sandbox box;
    QByteArray bytes = DesignHeader();
    Put(bytes, 1112, {0x34, 0x12, 0x78, 0x56}); // 0x12345678
    Put(bytes, 1116, {0x00, 0x00, 0xf0, 0x07}); // 2032
    Put(bytes, 1120, {'F', 'T', 'I', 'N'});
    bytes[1214] = 0x40;
    bytes.append(QByteArray(2, char(0xff)));
    DGNSettings settings = ReadDGNSettings(WriteFile(box, bytes));
    EXPECT_EQ(settings.subPerMaster, 0x12345678);
    EXPECT_EQ(settings.uorPerSub, 2032);
    EXPECT_EQ(settings.masterUnits, u"FT"_s);
    EXPECT_EQ(settings.subUnits, u"IN"_s);
    EXPECT_TRUE(settings.is3D);

    // A 2D file of one-letter labels, its header marked with the upper level bits.
    bytes = DesignHeader(char(0xc8));
    Put(bytes, 1112, {0xff, 0xff, 0xfe, 0xff}); // -2
    Put(bytes, 1116, {0x01, 0x00, 0x00, 0x00}); // 65536
    Put(bytes, 1120, {'m', 0, 'c', ' '});
    settings = ReadDGNSettings(WriteFile(box, bytes));
    EXPECT_EQ(settings.subPerMaster, -2);
    EXPECT_EQ(settings.uorPerSub, 65536);
    EXPECT_EQ(settings.masterUnits, u"m"_s);
    EXPECT_EQ(settings.subUnits, u"c"_s);
    EXPECT_FALSE(settings.is3D);
}

TEST(DGNSettings, a_file_without_a_whole_design_header_is_refused)
{
    fxtest::Sandbox box;
    const QString missing = box.Root() + u"none.dgn"_s;
    EXPECT_EQ(fxtest::FailureText([&] { ReadDGNSettings(missing); }),
              u"ReadDGNSettings: Design file '%0%' cannot be read|||"_s + missing);

    QByteArray cut = DesignHeader();
    cut.truncate(1535);
    const QString path = WriteFile(box, cut);
    const QString refused = u"ReadDGNSettings: '%0%' is not a design file: no design header|||"_s + path;
    EXPECT_EQ(fxtest::FailureText([&] { ReadDGNSettings(path); }), refused);

    QByteArray otherElement = DesignHeader();
    otherElement[1] = 0x03; // a line, not a header
    WriteFile(box, otherElement);
    EXPECT_EQ(fxtest::FailureText([&] { ReadDGNSettings(path); }), refused);

    WriteFile(box, QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(2000, '\0')); // a V8 file
    EXPECT_EQ(fxtest::FailureText([&] { ReadDGNSettings(path); }), refused);
}

// One reader going through the tables of a dump in turn, as the loader of a dump with several
// tables does: whatever block a table's end falls in, the next table is found whole.

#include "pds/risdumpreader.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace fx;

namespace {

// Three tables ended in the three ways a dump has: the end marker at once, index and grant
// lines before the marker, and no marker before the next table.
const QByteArray kDump = "default schema s1\n"
                         "create table t1 (a int)\ninsert into t1 (a) values (?)\n***variable*** a\n1 \n2 \n"
                         "***RIS*** End of Table ***RIS***\n"
                         "create table t2 (b int)\ninsert into t2 (b) values (?)\n***variable*** b\n3 \n4 \n5 \n"
                         "create unique index ut2 on t2 (b)\ngrant select on t2 to PUBLIC\n"
                         "***RIS*** End of Table ***RIS***\n"
                         "create table t3 (c int)\ninsert into t3 (c) values (?)\n***variable*** c\n6 \n"
                         "create table t4 (d int)\ninsert into t4 (d) values (?)\n***variable*** d\n7 \n8 \n"
                         "***RIS*** End of Table ***RIS***\n"
                         "***RIS*** End of Schema ***RIS***\n";

struct TableRead
{
    QByteArray rows;
    bool endMarker = false;
};

TableRead ReadTable(RISDumpReader &reader, const char *table)
{
    TableRead read;
    if (!reader.FindTable(QString::fromLatin1(table)))
        return read;
    reader.ReadTableHeader();
    QByteArrayView rows;
    while (reader.ReadRows(rows))
        read.rows += rows.toByteArray();
    read.endMarker = reader.EndOfTableFound();
    return read;
}

} // namespace

TEST(RisDumpReader, tables_read_one_after_another_are_each_found_whole_whatever_the_block_size)
{
    for (const qsizetype block : {qsizetype(1), qsizetype(5), qsizetype(17), qsizetype(40), qsizetype(64), qsizetype(1) << 20}) {
        QByteArray bytes = kDump;
        QBuffer device(&bytes);
        ASSERT_TRUE(device.open(QIODevice::ReadOnly));
        RISDumpReader reader(device, block);
        ASSERT_TRUE(reader.FindSchema(QStringLiteral("s1")));
        const TableRead t1 = ReadTable(reader, "t1");
        EXPECT_EQ(t1.rows, QByteArray("1 \n2 \n")) << block;
        EXPECT_TRUE(t1.endMarker) << block;
        const TableRead t2 = ReadTable(reader, "t2");
        EXPECT_EQ(t2.rows, QByteArray("3 \n4 \n5 \n")) << block;
        EXPECT_TRUE(t2.endMarker) << "the marker after the trailer, block " << block;
        const TableRead t3 = ReadTable(reader, "t3");
        EXPECT_EQ(t3.rows, QByteArray("6 \n")) << block;
        EXPECT_FALSE(t3.endMarker) << block;
        const TableRead t4 = ReadTable(reader, "t4");
        EXPECT_EQ(t4.rows, QByteArray("7 \n8 \n")) << "the table that ended the one before, block " << block;
        EXPECT_TRUE(t4.endMarker) << block;
        EXPECT_FALSE(reader.FindTable(QStringLiteral("t5"))) << block;
    }
}

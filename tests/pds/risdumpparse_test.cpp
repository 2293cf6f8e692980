#include "pds/messages.h"
#include "pds/risdumpparse.h"
#include "pds/schemaini.h"
#include "pds/textfilereader.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDateTime>
#include <QDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

const QString kRealDump = QStringLiteral(FENDRIX_TEST_DATA_DIR "/risdump/real_fixed_and_free.dmp");

QList<QVariantList> ReadRows(const QString &textFile)
{
    TextFileReader reader(textFile);
    QList<QVariantList> rows;
    QVariantList row;
    while (reader.Next(row))
        rows << row;
    return rows;
}

QByteArray Dump(const QByteArray &tableLines, const QByteArray &lineEnd = "\n")
{
    QByteArray text = "default schema s1\n" + tableLines + "***RIS*** End of Schema ***RIS***\n";
    return text.replace("\n", lineEnd);
}

QStringList TempFiles(const fxtest::Sandbox &sandbox)
{
    return QDir(sandbox.Temp()).entryList(QDir::Files);
}

} // namespace

TEST(RisDumpParse, a_real_fixed_form_dump_is_copied_as_it_stands_and_reads_by_its_positions)
{
    fxtest::Sandbox sandbox;
    const QString text = risdump::RISDumpParse(sandbox.Temp(), kRealDump, QStringLiteral("PD_DEMO"),
                                               QStringLiteral("PDTABLE_111"));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(text), "1      Piping                        \n"
                                               "2      Equipment            A1       \n");
    const TextFileFormat format = ReadSchemaIni(text);
    EXPECT_EQ(format.layout, TextFileFormat::Layout::FixedLength);
    const QByteArray ini = fxtest::Sandbox::ReadFile(SchemaIniPath(text));
    EXPECT_TRUE(ini.contains("ColNameHeader=False\nFormat=FixedLength\nCharacterSet=ANSI\n"
                             "Col1=discipline_indx_no short width 7\nCol2=discipline_name char width 21\n"
                             "Col3=remark char width 9\n"))
        << ini.constData();
    const QList<QVariantList> rows = ReadRows(text);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], (QVariantList{qint64(1), QStringLiteral("Piping"), QVariant()}));
    EXPECT_EQ(rows[1], (QVariantList{qint64(2), QStringLiteral("Equipment"), QStringLiteral("A1")}));
}

TEST(RisDumpParse, free_form_rows_become_fields_split_by_character_1_with_quotes_and_nulls_resolved)
{
    fxtest::Sandbox sandbox;
    const QString text = risdump::RISDumpParse(sandbox.Temp(), kRealDump, QStringLiteral("pd_demo"),
                                               QStringLiteral("pdtable_113"));
    // The index line before the end marker is no row.
    EXPECT_EQ(fxtest::Sandbox::ReadFile(text), "7\x01" "Area it's 7 \x01" "1.5\x01" "1994-03-07:10:20:30\n"
                                               "-32768\x01\x01" "-2.25e+20\x01\n");
    const QByteArray ini = fxtest::Sandbox::ReadFile(SchemaIniPath(text));
    EXPECT_TRUE(ini.contains("Format=Delimited(\x01)\nCharacterSet=ANSI\nCol1=area_indx_no long\n"
                             "Col2=area_name char width 24\nCol3=volume double\nCol4=stamp datetime\n"))
        << ini.constData();
    const QList<QVariantList> rows = ReadRows(text);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], (QVariantList{qint64(7), QStringLiteral("Area it's 7 "), 1.5,
                                     QDateTime(QDate(1994, 3, 7), QTime(10, 20, 30))}));
    EXPECT_EQ(rows[1], (QVariantList{qint64(-32768), QVariant(), -2.25e20, QVariant()}));

    const QString replaced = risdump::RISDumpParse(sandbox.Temp(), kRealDump, QStringLiteral("pd_demo"),
                                                   QStringLiteral("pdtable_113"), true);
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(replaced).endsWith("\n0\x01\x01" "-2.25e+20\x01\n"));
}

TEST(RisDumpParse, free_form_reads_three_blank_nulls_runs_of_blanks_and_cr_lf)
{
    fxtest::Sandbox sandbox;
    const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), Dump(
        "create table t (a smallint, b char(300), c decimal(10,2) not null);\n"
        "insert into t (a, b, c) values (?, ?, ?)\n"
        "***variable*** t \n"
        "   'x'    \n"      // NULL, x, NULL with a NULL of three blanks
        "1     '  '    2\n"  // the older form: runs of blanks between values, no NULL
        "''''   '' \n"       // a lone quote, a NULL, an empty text
        "***RIS*** End of Table ***RIS***\n", "\r\n"));
    const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(text), "\x01x\x01\n1\x01  \x01" "2\n'\x01\x01\n");
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(SchemaIniPath(text)).contains("Col2=b char width 239\nCol3=c double\n"));
}

TEST(RisDumpParse, no_line_is_split_whatever_the_block_size)
{
    fxtest::Sandbox sandbox;
    QByteArray rows;
    for (int i = 0; i < 40; ++i)
        rows += QByteArray::number(i * 7919) + " 'v" + QByteArray(i % 13, 'x') + " y' -32768 \n";
    const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), Dump(
        "create table t (a int, b char(20), c int)\ninsert into t (a, b, c) values (?, ?, ?)\n"
        "***variable*** a b c\n" + rows + "grant select on t to PUBLIC\n***RIS*** End of Table ***RIS***\n"));
    const QByteArray whole = fxtest::Sandbox::ReadFile(
        risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"), true));
    EXPECT_EQ(whole.count('\n'), 40);
    for (qsizetype block : {1, 2, 3, 7, 16, 31, 64, 100}) {
        const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"), true,
                                                   block);
        EXPECT_EQ(fxtest::Sandbox::ReadFile(text), whole) << block;
    }
}

TEST(RisDumpParse, replace_null_in_fixed_form_keeps_the_width_and_touches_only_numbers)
{
    fxtest::Sandbox sandbox;
    const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), Dump(
        "create table t (a smallint, b char(8), c int)\ninsert into t (a, b, c) values (?, ?, ?)\n"
        "a 1 6 b 8 15 c 17 27 \n"
        "-32768 -32768   -32768      \n"
        "5      x        -327689     \n"
        "***RIS*** End of Table ***RIS***\n", "\r\n"));
    const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"), true);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(text), "0      -32768   0           \r\n"
                                               "5      x        -327689     \r\n");
    const QList<QVariantList> rows = ReadRows(text);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], (QVariantList{qint64(0), QStringLiteral("-32768"), qint64(0)}));
    EXPECT_EQ(rows[1], (QVariantList{qint64(5), QStringLiteral("x"), qint64(-327689)}));
}

TEST(RisDumpParse, a_fixed_form_char_column_wider_than_the_text_driver_takes_is_cut_to_239_and_the_rest_stays_in_place)
{
    fxtest::Sandbox sandbox;
    const QByteArray wide(240, 'w');
    const QByteArray at239 = QByteArray(238, 'v') + 'e';
    const QByteArray blanks(240, ' ');
    const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), Dump(
        "create table t (a smallint, note char(240), c int, tail char(250))\n"
        "insert into t (a, note, c, tail) values (?, ?, ?, ?)\n"
        "a 1 6 note 8 247 c 249 259 tail 261 510 \n"
        "1      " + wide + " 7           " + QByteArray(250, 't') + " \n"
        "-32768 " + at239 + "  -32768      x" + QByteArray(249, ' ') + " \n"
        "3      " + blanks + " 9           \n"
        "***RIS*** End of Table ***RIS***\n", "\r\n"));
    for (const bool replaceNull : {false, true}) {
        const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"),
                                                   replaceNull, 100);
        EXPECT_TRUE(fxtest::Sandbox::ReadFile(SchemaIniPath(text))
                        .contains("Col1=a short width 7\nCol2=note char width 239\nCol3=c long width 12\n"
                                  "Col4=tail char width 239\n"));
        const QList<QVariantList> rows = ReadRows(text);
        ASSERT_EQ(rows.size(), 3);
        const QVariant null = replaceNull ? QVariant(qint64(0)) : QVariant(qint64(-32768));
        EXPECT_EQ(rows[0], (QVariantList{qint64(1), QString::fromLatin1(wide.first(239)), qint64(7),
                                         QString(239, QLatin1Char('t'))}));
        EXPECT_EQ(rows[1], (QVariantList{null, QString::fromLatin1(at239), null, QStringLiteral("x")}));
        EXPECT_EQ(rows[2], (QVariantList{qint64(3), QVariant(), qint64(9), QVariant()}));
    }
}

TEST(RisDumpParse, the_older_fixed_form_gives_bare_widths_after_a_table_1_line)
{
    fxtest::Sandbox sandbox;
    const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), Dump(
        "create table t (a smallint,\n b char(4))\ninsert into t (a, b) values (?, ?)\nt 1\n3 4\n"
        "12 abc\n-3    \n***RIS*** End of Table ***RIS***\n"));
    const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("s1"), QStringLiteral("t"));
    EXPECT_EQ(ReadRows(text), (QList<QVariantList>{{qint64(12), QStringLiteral("abc")}, {qint64(-3), QVariant()}}));
}

TEST(RisDumpParse, each_failure_names_what_is_wrong_and_leaves_no_file)
{
    fxtest::Sandbox sandbox;
    const QByteArray head = "create table t (a smallint, b char(4))\ninsert into t (a, b) values (?, ?)\n";
    const QByteArray end = "***RIS*** End of Table ***RIS***\n";
    const struct
    {
        QByteArray dump;
        const char *schema;
        const char *table;
        const char *message;
        QStringList args; ///< "%1" stands for the dump file
    } cases[] = {
        {Dump(head + "***variable*** t\n"), " ", "t", msg::SchemaNotDefined, {}},
        {Dump(head + "***variable*** t\n"), "s1", "", msg::TableNameNotDefined, {}},
        {Dump(head + end), "s2", "t", msg::SchemaNotInDumpFile, {QStringLiteral("s2"), QStringLiteral("%1")}},
        {Dump(head + end) + Dump("create table u (x int)\n"), "s1", "u", msg::TableNotInDumpFile,
         {QStringLiteral("u"), QStringLiteral("s1"), QStringLiteral("%1")}},
        {Dump("create table t a smallint\n"), "s1", "t", msg::IncorrectRISDumpFormat, {}},
        {Dump("create table t ( , )\n"), "s1", "t", msg::NoColumnsInTable, {QStringLiteral("t")}},
        {Dump(head + "a 1 6 b 8\n" + end), "s1", "t", msg::ColumnsWidthNotDefined, {QStringLiteral("t")}},
        {Dump(head + "a 1 6 c 8 11 \n" + end), "s1", "t", msg::ColumnWidthNotFound, {QStringLiteral("b")}},
        {Dump(head + "a 1 6 b 8 x \n" + end), "s1", "t", msg::ColumnWidthNotCorrect,
         {QStringLiteral("8"), QStringLiteral("x"), QStringLiteral("b")}},
        {Dump(head + "a 1 6 b 5 9 \n" + end), "s1", "t", msg::ColumnWidthNotCorrect,
         {QStringLiteral("5"), QStringLiteral("9"), QStringLiteral("b")}},
        {Dump("create table t (a blob)\ninsert into t (a) values (?)\n***variable*** a\n" + end), "s1", "t",
         msg::ColumnTypeNotFound, {QStringLiteral("a")}},
        {Dump(head + "***variable*** a b\n1 'x' \n"), "s1", "t", msg::EndOfTableNotFound, {}},
    };
    for (const auto &c : cases) {
        const QString dump = sandbox.WriteFile(QStringLiteral("d.dmp"), c.dump);
        QStringList args = c.args;
        args.replaceInStrings(QStringLiteral("%1"), dump);
        EXPECT_EQ(fxtest::FailureText([&] {
                      risdump::RISDumpParse(sandbox.Temp(), dump, QString::fromLatin1(c.schema), QString::fromLatin1(c.table));
                  }).toStdString(),
                  (QStringLiteral("CRIS::RISDumpParse: ") + ArgForm(c.message, args)).toStdString())
            << c.dump.constData();
        EXPECT_EQ(TempFiles(sandbox), QStringList()) << c.dump.constData();
    }
    EXPECT_EQ(fxtest::FailureText([&] {
                  risdump::RISDumpParse(sandbox.Temp(), sandbox.Root() + QStringLiteral("no.dmp"), QStringLiteral("s"),
                                        QStringLiteral("t"));
              }),
              QStringLiteral("CRIS::RISDumpParse: ") + ArgForm(msg::RISDumpFileNotFound, {sandbox.Root() + QStringLiteral("no.dmp")}));
}

TEST(RisDumpParse, a_table_of_a_later_schema_is_found_only_within_that_schema)
{
    fxtest::Sandbox sandbox;
    const QString dump = sandbox.WriteFile(QStringLiteral("two.dmp"),
        "create schema first on database (ora) user x\n"
        "create table shared (a int)\ninsert into shared (a) values (?)\n***variable*** a\n1 \n"
        "***RIS*** End of Table ***RIS***\n***RIS*** End of Schema ***RIS***\n"
        "default schema Second;\n"
        "create table shared (a int)\ninsert into shared (a) values (?)\n***variable*** a\n2 \n"
        "***RIS*** End of Table ***RIS***\n"
        "create table only_second (b char(3))\ninsert into only_second (b) values (?)\n***variable*** b\n'z' \n"
        "***RIS*** End of Table ***RIS***\n***RIS*** End of Schema ***RIS***\n");
    EXPECT_EQ(risdump::RISDumpGetSchemas(dump), (QStringList{QStringLiteral("first"), QStringLiteral("Second")}));
    EXPECT_EQ(risdump::RISDumpGetTables(dump, QStringLiteral("second")),
              (QStringList{QStringLiteral("shared"), QStringLiteral("only_second")}));
    EXPECT_EQ(risdump::RISDumpGetTables(dump, QStringLiteral("first")), QStringList{QStringLiteral("shared")});
    EXPECT_EQ(ReadRows(risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("second"), QStringLiteral("shared"))),
              QList<QVariantList>{{qint64(2)}});
    EXPECT_EQ(fxtest::FailureText([&] {
                  risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("first"), QStringLiteral("only_second"));
              }),
              QStringLiteral("CRIS::RISDumpParse: ")
                  + ArgForm(msg::TableNotInDumpFile, {QStringLiteral("only_second"), QStringLiteral("first"), dump}));

    EXPECT_EQ(fxtest::FailureText([&] { risdump::RISDumpGetTables(dump, QStringLiteral("third")); }),
              QStringLiteral("CRIS::RISDumpGetTables: ") + ArgForm(msg::SchemaNameNotInDumpFile, {dump}));
    EXPECT_EQ(fxtest::FailureText([&] { risdump::RISDumpGetSchemas(dump + QStringLiteral("x")); }),
              QStringLiteral("CRIS::RISDumpGetSchemas: ") + ArgForm(msg::RISDumpFileColonNotFound, {dump + QStringLiteral("x")}));
    EXPECT_EQ(fxtest::FailureText([&] { risdump::RISDumpGetTables(dump + QStringLiteral("x"), QStringLiteral("first")); }),
              QStringLiteral("CRIS::RISDumpGetTables: ") + ArgForm(msg::RISDumpFileNotFound, {dump + QStringLiteral("x")}));
}

#include "pds/messages.h"
#include "pds/sqlitedb.h"
#include "pds/textfilequery.h"
#include "pds/textfilereader.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace fx;

namespace {

// A tab-delimited file with a header line, as the gateway kinds write them, and its entry.
QString WriteTabFile(const fxtest::Sandbox &sandbox)
{
    sandbox.WriteFile(QStringLiteral("temp/Schema.ini"),
                      "[other.txt]\r\nFormat=CSVDelimited\r\n"
                      "[rows.txt]\r\nColNameHeader=True\r\nFormat=TabDelimited\r\nCharacterSet=ANSI\r\n"
                      "Col1=id Long\r\nCol2=\"the name\" Char Width 10\r\nCol3=ratio Double\r\nCol4=seen DateTime\r\n");
    return sandbox.WriteFile(QStringLiteral("temp/rows.txt"), "id\tname\tratio\tseen\r\n"
                                                              "1\t M\xfc" "ller \t2.5\t2001-09-11 08:46:00\r\n"
                                                              "x\t\t \tnot a date\r\n"
                                                              "3.0\t\"q\"\t-1e3\t2001-09-11:08:46:01\r\n");
}

} // namespace

TEST(TextFileReader, gives_typed_values_nulls_for_empty_or_unreadable_fields_and_keeps_text_as_written)
{
    fxtest::Sandbox sandbox;
    TextFileReader reader(WriteTabFile(sandbox));
    ASSERT_EQ(reader.Fields().size(), 4);
    EXPECT_EQ(reader.Fields()[1].name, QStringLiteral("the name"));
    EXPECT_EQ(reader.Fields()[1].definedSize, 10);
    QList<QVariantList> rows;
    QVariantList row;
    while (reader.Next(row))
        rows << row;
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0], (QVariantList{qint64(1), QStringLiteral(" M\u00fcller "), 2.5,
                                     QDateTime(QDate(2001, 9, 11), QTime(8, 46))}));
    EXPECT_EQ(rows[1], (QVariantList{QVariant(), QVariant(), QVariant(), QVariant()}));
    EXPECT_EQ(rows[2], (QVariantList{qint64(3), QStringLiteral("\"q\""), -1000.0,
                                     QDateTime(QDate(2001, 9, 11), QTime(8, 46, 1))}));

    const QString orphan = sandbox.WriteFile(QStringLiteral("temp/orphan.txt"), "1\r\n");
    EXPECT_EQ(fxtest::FailureText([&] { TextFileReader{orphan}; }).toStdString(),
              (QStringLiteral(": ") + ArgForm(msg::SchemaIniSectionNotFound,
                                              {QStringLiteral("orphan.txt"), sandbox.Temp() + QStringLiteral("Schema.ini")}))
                  .toStdString());
}

TEST(TextFileQuery, the_select_over_the_text_file_reads_and_imports_into_the_store)
{
    fxtest::Sandbox sandbox;
    const QString text = WriteTabFile(sandbox);
    EXPECT_EQ(TextFileSelect(QStringLiteral("select id from Rows where id > 1"), QStringLiteral("rows"), text),
              QStringLiteral("select id from rows.txt AS [rows] where id > 1"));
    EXPECT_EQ(TextFileSelect(QStringLiteral("SELECT 1"), QStringLiteral("rows"), text),
              QStringLiteral("SELECT * FROM rows.txt AS [rows];"));
    // FROM is a word of its own: a name that ends in it is no FROM.
    EXPECT_EQ(TextFileSelect(QStringLiteral("SELECT a_from, FROMAGE\nfrom\trows WHERE a_from > 1"), QStringLiteral("rows"), text),
              QStringLiteral("SELECT a_from, FROMAGE\nfrom\trows.txt AS [rows] WHERE a_from > 1"));

    const Recordset read = ReadTextFileQuery(
        text, TextFileSelect(QStringLiteral("SELECT [the name], ratio FROM rows WHERE [rows].id >= 1 ORDER BY id DESC"),
                             QStringLiteral("rows"), text));
    ASSERT_EQ(read.RecordCount(), 2);
    EXPECT_EQ(read.Value(0, 0), QVariant(QStringLiteral("\"q\"")));
    EXPECT_EQ(read.Value(1, 1), QVariant(2.5));

    const QString store = sandbox.Root() + QStringLiteral("store.fxdb");
    SqliteDb(store, SqliteDb::OpenMode::ReadWriteCreate).Execute(QStringLiteral("CREATE TABLE kept (a INTEGER, b TEXT(5))"));
    const QString all = TextFileSelect(QStringLiteral("SELECT * FROM rows"), QStringLiteral("rows"), text);
    ImportTextFileQuery(text, all, store, QStringLiteral("rows"));
    ImportTextFileQuery(text, all, store, QStringLiteral("rows"));
    ImportTextFileQuery(text, TextFileSelect(QStringLiteral("SELECT id, [the name] FROM rows WHERE id = 3"),
                                             QStringLiteral("rows"), text),
                        store, QStringLiteral("kept"));
    SqliteDb db(store);
    const Recordset created = db.Read(QStringLiteral("SELECT * FROM rows ORDER BY id"));
    EXPECT_EQ(created.RecordCount(), 6);
    EXPECT_EQ(created.Fields()[0].type, 3);
    EXPECT_EQ(created.Value(5, 3), QVariant(QStringLiteral("2001-09-11 08:46:01")));
    EXPECT_EQ(db.Read(QStringLiteral("SELECT a, b FROM kept")).Row(0), (QVariantList{qint64(3), QStringLiteral("\"q\"")}));
}

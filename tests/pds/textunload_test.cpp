// A query written out as a text file with its Schema.ini section, for the text-file route.

#include "pds/adotypes.h"
#include "pds/sqliteschemaconnection.h"
#include "pds/textunload.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(TextUnload, schema_ini_types_follow_the_ado_type_table)
{
    const std::tuple<int, qint64, const char *> cases[] = {
        {2, 0, "short"},   {16, 0, "short"},  {17, 0, "short"},  {18, 0, "short"},
        {3, 0, "long"},    {19, 0, "long"},   {20, 0, "long"},   {21, 0, "long"},  {131, 19, "long"},
        {4, 0, "double"},  {5, 0, "double"},  {14, 0, "double"}, {139, 0, "double"},
        {72, 16, "char width 38"}, {202, 255, "char width 255"}, {202, 256, "char width 240"},
        {129, 300, "char width 240"}, {135, 19, "char width 19"}, {11, 2, "char width 2"}};
    for (const auto &[type, size, expected] : cases)
        EXPECT_EQ(SchemaIniColumnType(type, size), QString::fromUtf8(expected)) << type << " " << size;
}

TEST(TextUnload, rows_become_tab_separated_lines_with_nulls_and_quotes_made_safe)
{
    fxtest::Sandbox box;
    QTemporaryDir schemas;
    {
        SqliteDb db(schemas.filePath(u"pd_x.db"_s), SqliteDb::OpenMode::ReadWriteCreate);
        db.Execute(u"CREATE TABLE t (id SMALLINT, n INTEGER, d DOUBLE, name TEXT(20), memo TEXT(300), gone INTEGER);"
                   "INSERT INTO t VALUES (1, 10, 1.5, 'say \"hi\" €', 'x', NULL);"
                   "INSERT INTO t VALUES (2, NULL, NULL, 'tab\there', NULL, NULL);"_s);
    }
    SqliteSchemaConnection connection(schemas.path());
    connection.UseSchema(u"pd_x"_s, false);
    const QString folder = box.Temp();
    const QString schemaIni = folder + u"Schema.ini"_s;
    box.WriteFile(u"temp/Schema.ini"_s, "[other.txt]\r\nColNameHeader=True\r\nCol1=a long\r\n");

    const QString file = UnloadQueryToTextFile(connection, u"SELECT * FROM t ORDER BY id"_s, folder);
    EXPECT_TRUE(file.startsWith(folder));
    EXPECT_TRUE(file.endsWith(u".txt"_s));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file), QByteArray("1\t10\t1.5\tsay 'hi' \x80\tx\t-32768\r\n"
                                                          "2\t-32768\t-32768\ttab here\t-32768\t-32768\r\n"));

    const QStringList lines = QString::fromLatin1(fxtest::Sandbox::ReadFile(schemaIni)).split(u"\r\n"_s);
    EXPECT_EQ(lines.mid(0, 3), QStringList({u"[other.txt]"_s, u"ColNameHeader=True"_s, u"Col1=a long"_s}));
    const qsizetype at = lines.indexOf(u"["_s + QFileInfo(file).fileName() + u"]"_s);
    ASSERT_GE(at, 3);
    EXPECT_EQ(lines.mid(at + 1, 9),
              QStringList({u"ColNameHeader=False"_s, u"Format=TabDelimited"_s, u"CharacterSet=ANSI"_s,
                           u"Col1=id short"_s, u"Col2=n long"_s, u"Col3=d double"_s, u"Col4=name char width 20"_s,
                           u"Col5=memo char width 240"_s, u"Col6=gone long"_s}));

    // A query that fails leaves neither a text file nor a section behind.
    const QByteArray before = fxtest::Sandbox::ReadFile(schemaIni);
    const QStringList filesBefore = QDir(folder).entryList(QDir::Files);
    EXPECT_FALSE(fxtest::FailureText([&] { UnloadQueryToTextFile(connection, u"SELECT * FROM nowhere"_s, folder); })
                     .isEmpty());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), filesBefore);
    EXPECT_EQ(fxtest::Sandbox::ReadFile(schemaIni), before);
}

#include "pds/messages.h"
#include "pds/risdumpparse.h"
#include "pds/risdumpwriter.h"
#include "pds/schemaini.h"
#include "pds/sqlitedb.h"
#include "pds/textfilequery.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

const QString kText300 = QString(150, QLatin1Char('a')) + QStringLiteral(" '' ") + QString(146, QLatin1Char('z'));

QString MakeStore(const fxtest::Sandbox &sandbox)
{
    const QString file = sandbox.Root() + QStringLiteral("store.fxdb");
    SqliteDb db(file, SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(QStringLiteral("CREATE TABLE items (id SMALLINT, count INTEGER, size DOUBLE, name TEXT(20), "
                              "note TEXT(255), made DATETIME)"));
    SqliteStatement insert(db, QStringLiteral("INSERT INTO items VALUES (?1, ?2, ?3, ?4, ?5, ?6)"));
    const QList<QVariantList> rows = {
        {1, -2147483647LL, -0.125, QStringLiteral("it's"), QStringLiteral("  lead, inner  and trail  "),
         QStringLiteral("2024-02-29 23:59:58")},
        {2, QVariant(), QVariant(), QVariant(), QString(239, QLatin1Char('x')), QVariant()},
        {-3, 0, 1.0 / 3.0, QStringLiteral("''"), QString(240, QLatin1Char('y')), QStringLiteral("1994-03-07 00:00:00")},
        {4, 7, 6.02214076e23, QStringLiteral("-32768"), kText300, QVariant()},
    };
    for (const QVariantList &row : rows) {
        for (int i = 0; i < row.size(); ++i)
            insert.Bind(i + 1, row.at(i));
        insert.Step();
        insert.Reset();
    }
    return file;
}

} // namespace

TEST(RisDumpCreate, writes_what_rislod_loads_and_the_reader_gives_back_every_value)
{
    fxtest::Sandbox sandbox;
    const QString store = MakeStore(sandbox);
    const QString dump = risdump::RISDumpCreate(sandbox.Root(), store, QStringLiteral("pd_x"), QStringLiteral("items"));
    const QList<QByteArray> lines = fxtest::Sandbox::ReadFile(dump).split('\n');
    ASSERT_GE(lines.size(), 12);
    EXPECT_EQ(lines[0], "default schema pd_x");
    EXPECT_EQ(lines[1], "create table items (id smallint, count int, size double, name char(20), note char(240), "
                        "made timestamp)");
    EXPECT_EQ(lines[2], "insert into items (id, count, size, name, note, made) values (?, ?, ?, ?, ?, ?)");
    EXPECT_EQ(lines[3], "***variable*** id count size name note made");
    EXPECT_EQ(lines[4], "1 -2147483647 -0.125 'it''s' '  lead, inner  and trail  ' 2024-02-29:23:59:58 ");
    EXPECT_EQ(lines[5], "2       '" + QByteArray(239, 'x') + "'   ");
    EXPECT_EQ(lines[8], "***RIS*** End of Table ***RIS***");
    EXPECT_EQ(lines[9], "create unique index uitems on items (id, count, size, name, note, made)");
    EXPECT_EQ(lines[10], "grant select, insert, delete, update on items to PUBLIC");
    EXPECT_EQ(lines[11], "***RIS*** End of Schema ***RIS***");

    // Back through the text-file route. The declared sizes are capped (char(240) in the dump,
    // "char width 239" in Schema.ini) but no value is cut; an empty text would come back NULL.
    const QString text = risdump::RISDumpParse(sandbox.Temp(), dump, QStringLiteral("PD_X"), QStringLiteral("items"));
    EXPECT_TRUE(fxtest::Sandbox::ReadFile(SchemaIniPath(text)).contains("Col5=note char width 239\n"));
    const Recordset back = ReadTextFileQuery(text, TextFileSelect(QStringLiteral("SELECT * FROM items ORDER BY id"),
                                                                  QStringLiteral("items"), text));
    SqliteDb db(store, SqliteDb::OpenMode::ReadOnly);
    const Recordset original = db.Read(QStringLiteral("SELECT * FROM items ORDER BY id"));
    ASSERT_EQ(back.RecordCount(), 4);
    // Doubles keep the 15 significant digits of "%.15g"; every other value comes back as it was.
    EXPECT_EQ(back.Value(0, QStringLiteral("size")).toDouble(), 0.333333333333333);
    for (qsizetype row = 0; row < 4; ++row) {
        QVariantList expected = original.Row(row);
        if (!expected[2].isNull())
            expected[2] = QByteArray::number(expected[2].toDouble(), 'g', 15).toDouble();
        EXPECT_EQ(back.Row(row), expected) << row;
    }
    EXPECT_EQ(back.Value(3, QStringLiteral("note")).toString(), kText300);
}

TEST(RisDumpCreate, checks_folder_database_schema_and_tables_and_leaves_no_dump_on_failure)
{
    fxtest::Sandbox sandbox;
    const QString store = MakeStore(sandbox);
    const QString missing = sandbox.Root() + QStringLiteral("none");
    const auto failure = [&](const QString &folder, const QString &db, const QString &schema, const QString &tables) {
        return fxtest::FailureText([&] { risdump::RISDumpCreate(folder, db, schema, tables); }).toStdString();
    };
    const auto expected = [](const char *message, const QStringList &args = {}) {
        return (QStringLiteral("RISDumpCreate: ") + ArgForm(message, args)).toStdString();
    };
    EXPECT_EQ(failure(missing, store, QStringLiteral("s"), QStringLiteral("items")),
              expected(msg::DirectoryNotExistsColon, {missing}));
    EXPECT_EQ(failure(sandbox.Temp(), missing, QStringLiteral("s"), QStringLiteral("items")),
              expected(msg::AccessDatabaseColonNotExists, {missing}));
    EXPECT_EQ(failure(sandbox.Temp(), store, QStringLiteral(" "), QStringLiteral("items")),
              expected(msg::SchemaNotDefined));
    EXPECT_EQ(failure(sandbox.Temp(), store, QStringLiteral("s"), QStringLiteral("items; ")),
              expected(msg::TableNameNotDefined));
    EXPECT_NE(failure(sandbox.Temp(), store, QStringLiteral("s"), QStringLiteral("nosuchtable")), "");
    EXPECT_EQ(QDir(sandbox.Temp()).entryList(QDir::Files), QStringList());
}

TEST(RisTableCopy, renames_schema_and_table_so_the_copy_reads_under_the_new_names)
{
    fxtest::Sandbox sandbox;
    const QString dump = risdump::RISDumpCreate(sandbox.Root(), MakeStore(sandbox), QStringLiteral("pd_x"),
                                                QStringLiteral("items"), QStringLiteral("id >= 2"));
    const QString copy = sandbox.Root() + QStringLiteral("copy.dmp");
    risdump::RISTableCopy(dump, copy, {QStringLiteral("pd_x"), QStringLiteral("items")},
                          {QStringLiteral("pd_y"), QStringLiteral("things")});
    EXPECT_EQ(risdump::RISDumpGetSchemas(copy), QStringList{QStringLiteral("pd_y")});
    EXPECT_EQ(risdump::RISDumpGetTables(copy, QStringLiteral("pd_y")), QStringList{QStringLiteral("things")});
    const QString text = risdump::RISDumpParse(sandbox.Temp(), copy, QStringLiteral("pd_y"), QStringLiteral("things"));
    const Recordset rows = ReadTextFileQuery(text, TextFileSelect(QStringLiteral("SELECT id FROM things"),
                                                                  QStringLiteral("things"), text));
    EXPECT_EQ(rows.RecordCount(), 2);
}

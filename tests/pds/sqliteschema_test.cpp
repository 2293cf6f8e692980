// The embedded kind: one SQLite file per schema in a folder.

#include "pds/adotypes.h"
#include "pds/messages.h"
#include "pds/sqliteschemaconnection.h"

#include "support/failures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

void MakeSchema(const QTemporaryDir &dir, const QString &schema, const QString &sql)
{
    SqliteDb db(dir.filePath(schema + u".db"_s), SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(sql);
}

} // namespace

TEST(SqliteSchema, each_schema_is_its_own_file_and_a_missing_one_is_named)
{
    QTemporaryDir dir;
    MakeSchema(dir, u"pd_a"_s, u"CREATE TABLE t (id INTEGER, name TEXT(300)); INSERT INTO t VALUES (1, 'a');"
                               "CREATE TABLE only_a (x SMALLINT)"_s);
    MakeSchema(dir, u"pd_b"_s, u"CREATE TABLE t (id INTEGER, name TEXT(300)); INSERT INTO t VALUES (2, 'b')"_s);
    SqliteSchemaConnection connection(dir.path());

    EXPECT_EQ(fxtest::FailureText([&] { connection.Read(u"SELECT 1"_s); }), u": "_s + ArgForm(msg::SchemaNotDefined));
    connection.UseSchema(u"pd_a"_s, false);
    EXPECT_EQ(connection.Read(u"SELECT id FROM t"_s).Value(0, 0).toLongLong(), 1);
    connection.UseSchema(u"pd_b"_s, true);
    connection.Execute(u"INSERT INTO t VALUES (3, NULL)"_s);
    EXPECT_EQ(connection.Read(u"SELECT sum(id) FROM t"_s).Value(0, 0).toLongLong(), 5);
    connection.UseSchema(QString(), false); // a blank schema keeps the current one
    EXPECT_EQ(connection.Read(u"SELECT count(*) FROM t"_s).Value(0, 0).toLongLong(), 2);

    const QString missing = connection.SchemaFile(u"pd_typo"_s);
    EXPECT_EQ(fxtest::FailureText([&] { connection.UseSchema(u"pd_typo"_s, false); }),
              u": "_s + ArgForm(msg::DatabaseFileNotExists, {missing}));
    EXPECT_FALSE(QFile::exists(missing));

    EXPECT_EQ(connection.Tables(u"pd_a"_s), QStringList({u"only_a"_s, u"t"_s}));
    const QList<ColumnDescription> columns = connection.Columns(u"pd_a"_s, u"t"_s);
    ASSERT_EQ(columns.size(), 2);
    EXPECT_EQ(columns.at(1).name, u"name"_s);
    EXPECT_EQ(columns.at(1).type, u"TEXT(300)"_s);
    EXPECT_EQ(columns.at(1).adoType, adotype::VarWChar);
    EXPECT_EQ(columns.at(1).size, 300);
    EXPECT_TRUE(connection.Columns(u"pd_a"_s, u"nothing"_s).isEmpty());

    EXPECT_FALSE(fxtest::FailureText([&] { SqliteSchemaConnection(dir.filePath(u"nowhere"_s)); }).isEmpty());
}

TEST(SqliteSchema, slices_keep_every_row_once_and_computed_columns_take_their_first_value_type)
{
    QTemporaryDir dir;
    MakeSchema(dir, u"s"_s, u"CREATE TABLE n (v INTEGER);"
                            "WITH RECURSIVE g(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM g WHERE x < 25) "
                            "INSERT INTO n SELECT x FROM g"_s);
    SqliteSchemaConnection connection(dir.path());
    connection.UseSchema(u"s"_s, false);
    auto slices = [&](const QString &sql, int size, QList<RecordsetField> *fields = nullptr) {
        QList<qsizetype> sizes;
        qint64 last = 0;
        connection.ReadInSlices(
            sql, size,
            [&](const QList<RecordsetField> &described) {
                if (fields)
                    *fields = described;
            },
            [&](const QList<QVariantList> &rows) {
                sizes << rows.size();
                for (const QVariantList &row : rows)
                    EXPECT_EQ(row.at(0).toLongLong(), ++last);
            });
        return sizes;
    };
    EXPECT_EQ(slices(u"SELECT v FROM n ORDER BY v"_s, 10), QList<qsizetype>({10, 10, 5}));
    EXPECT_EQ(slices(u"SELECT v FROM n WHERE v <= 20 ORDER BY v"_s, 10), QList<qsizetype>({10, 10}));
    EXPECT_EQ(slices(u"SELECT v FROM n WHERE v = 1"_s, 10), QList<qsizetype>({1}));
    QList<RecordsetField> fields;
    EXPECT_EQ(slices(u"SELECT v, v * 0.5 AS half FROM n WHERE v > 99"_s, 10, &fields), QList<qsizetype>());
    ASSERT_EQ(fields.size(), 2);
    EXPECT_EQ(fields.at(0).type, adotype::Integer);
    slices(u"SELECT v, v * 0.5 AS half FROM n ORDER BY v"_s, 10, &fields);
    EXPECT_EQ(fields.at(1).type, adotype::Double);
}

// The ODBC route of the SQL kinds, against a real PostgreSQL server.

#include "pds/adotypes.h"
#include "pds/odbcschemaconnection.h"
#include "pds/textunload.h"
#include "pgtestserver.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDateTime>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(OdbcPostgreSQL, values_come_typed_with_nulls_and_quotes_and_writes_are_seen_by_others)
{
    FX_REQUIRE_PG_SERVER(server);
    OdbcConnection admin(server.ConnectionString());
    fxtest::PgScratchSchema schema(admin);
    OdbcSchemaConnection connection(DBConType::PostgreSQL, server.ConnectionString());
    connection.UseSchema(schema.Name(), true);
    connection.Execute(u"CREATE TABLE t (id integer, small smallint, big bigint, amount numeric(10,2), "
                       "whole numeric(12,0), ratio double precision, name varchar(20), note text, made timestamp)"_s);
    connection.Execute(u"INSERT INTO t VALUES (1, -3, 9000000000, 12.50, 123456789012, 0.1, "
                       "'it''s \"quoted\"', 'ünïcode €', '2021-03-04 05:06:07')"_s);
    connection.Execute(u"INSERT INTO t (id) VALUES (2)"_s);
    connection.Execute(u"commit"_s); // outside a transaction only a warning: must not fail

    const Recordset result = connection.Read(u"SELECT * FROM t ORDER BY id"_s);
    ASSERT_EQ(result.RecordCount(), 2);
    const int types[] = {adotype::Integer, adotype::SmallInt, adotype::BigInt, adotype::Numeric, adotype::Numeric,
                         adotype::Double, adotype::VarWChar};
    for (int i = 0; i < int(std::size(types)); ++i)
        EXPECT_EQ(result.Fields().at(i).type, types[i]) << result.Fields().at(i).name.toStdString();
    EXPECT_EQ(result.Fields().at(6).definedSize, 20);
    EXPECT_EQ(result.Fields().at(8).type, adotype::DBTimeStamp);

    const QVariantList &row = result.Row(0);
    EXPECT_EQ(row.at(0), QVariant(qint64(1)));
    EXPECT_EQ(row.at(1), QVariant(qint64(-3)));
    EXPECT_EQ(row.at(2), QVariant(qint64(9000000000)));
    EXPECT_EQ(row.at(3), QVariant(12.5));
    EXPECT_EQ(row.at(4), QVariant(qint64(123456789012)));
    EXPECT_EQ(row.at(5), QVariant(0.1));
    EXPECT_EQ(row.at(6).toString(), u"it's \"quoted\""_s);
    EXPECT_EQ(row.at(7).toString(), u"ünïcode €"_s);
    EXPECT_EQ(row.at(8).toDateTime(), QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)));
    for (int i = 1; i < result.FieldCount(); ++i)
        EXPECT_TRUE(result.Value(1, i).isNull()) << i;

    // Auto-commit, as ADO leaves a connection: another session sees the rows at once.
    EXPECT_EQ(admin.Read(u"SELECT count(*) FROM "_s + schema.Name() + u".t"_s).Value(0, 0).toLongLong(), 2);
}

TEST(OdbcPostgreSQL, the_search_path_picks_the_schema_and_the_catalog_lists_only_its_tables)
{
    FX_REQUIRE_PG_SERVER(server);
    OdbcConnection admin(server.ConnectionString());
    // "_" is a wildcard of catalog patterns: "fx_..." must not also match "fxx...".
    fxtest::PgScratchSchema first(admin, u"fx_"_s);
    const QString lookalike = u"fxx"_s + first.Name().mid(3);
    admin.Execute(u"CREATE SCHEMA "_s + lookalike);
    admin.Execute(u"CREATE TABLE "_s + lookalike + u".decoy (a integer)"_s);
    fxtest::PgScratchSchema second(admin);
    admin.Execute(u"CREATE TABLE "_s + first.Name() + u".t (id integer, code char(8), label varchar(30))"_s);
    admin.Execute(u"CREATE TABLE "_s + first.Name() + u".only_first (a integer)"_s);
    admin.Execute(u"INSERT INTO "_s + first.Name() + u".t VALUES (1, 'first', 'a')"_s);
    admin.Execute(u"CREATE TABLE "_s + second.Name() + u".t (id integer, code char(8), label varchar(30))"_s);
    admin.Execute(u"INSERT INTO "_s + second.Name() + u".t VALUES (2, 'second', 'b')"_s);

    OdbcSchemaConnection connection(DBConType::PostgreSQL, server.ConnectionString());
    connection.UseSchema(first.Name(), false);
    EXPECT_EQ(connection.Read(u"SELECT id FROM t"_s).Value(0, 0).toLongLong(), 1);
    connection.UseSchema(second.Name(), false);
    EXPECT_EQ(connection.Read(u"SELECT id FROM t"_s).Value(0, 0).toLongLong(), 2);

    QStringList tables = connection.Tables(first.Name());
    tables.sort();
    EXPECT_EQ(tables, QStringList({u"only_first"_s, u"t"_s}));
    const QList<ColumnDescription> columns = connection.Columns(first.Name(), u"t"_s);
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns.at(0).name, u"id"_s);
    EXPECT_EQ(columns.at(0).adoType, adotype::Integer);
    EXPECT_EQ(columns.at(1).adoType, adotype::WChar);
    EXPECT_EQ(columns.at(1).size, 8);
    EXPECT_EQ(columns.at(2).name, u"label"_s);
    EXPECT_EQ(columns.at(2).size, 30);
    EXPECT_TRUE(columns.at(2).type.endsWith(u"(30)"_s)) << columns.at(2).type.toStdString();
    EXPECT_TRUE(connection.Columns(first.Name(), u"missing"_s).isEmpty());
    admin.Execute(u"DROP SCHEMA "_s + lookalike + u" CASCADE"_s);
}

TEST(OdbcPostgreSQL, rows_come_in_slices_of_the_size_asked_and_a_bad_statement_is_named)
{
    FX_REQUIRE_PG_SERVER(server);
    OdbcConnection connection(server.ConnectionString());
    auto sliceSizes = [&](int rows, int slice) {
        QList<qsizetype> sizes;
        int fieldCalls = 0;
        qint64 last = 0;
        connection.ReadInSlices(
            u"SELECT g FROM generate_series(1, %1) g ORDER BY g"_s.arg(rows), slice,
            [&](const QList<RecordsetField> &fields) {
                ++fieldCalls;
                EXPECT_EQ(fields.size(), 1);
            },
            [&](const QList<QVariantList> &part) {
                sizes << part.size();
                for (const QVariantList &row : part)
                    EXPECT_EQ(row.at(0).toLongLong(), ++last); // none lost or repeated at the seams
            });
        EXPECT_EQ(fieldCalls, 1);
        EXPECT_EQ(last, rows);
        return sizes;
    };
    EXPECT_EQ(sliceSizes(25, 10), QList<qsizetype>({10, 10, 5}));
    EXPECT_EQ(sliceSizes(20, 10), QList<qsizetype>({10, 10}));
    EXPECT_EQ(sliceSizes(0, 10), QList<qsizetype>());

    const QString failure = fxtest::FailureText([&] { connection.Read(u"SELECT nothing FROM nowhere"_s); });
    EXPECT_TRUE(failure.contains(u"SELECT nothing FROM nowhere"_s)) << failure.toStdString();
    EXPECT_TRUE(failure.startsWith(u": Database error %0%: %1%|||42"_s)) << failure.toStdString();
}

TEST(OdbcPostgreSQL, a_wrong_password_fails_without_showing_it_and_special_passwords_connect)
{
    FX_REQUIRE_PG_SERVER(server);
    const QString wrong = u"Wr0ngSecret;x"_s;
    const QString failure = fxtest::FailureText([&] { OdbcConnection(server.ConnectionString(wrong)); });
    EXPECT_TRUE(failure.contains(u"Database error"_s)) << failure.toStdString();
    EXPECT_FALSE(failure.contains(u"Wr0ngSecret"_s)) << failure.toStdString();

    // A password with the connection string's own characters goes in braces and still works.
    OdbcConnection admin(server.ConnectionString());
    const QString role = u"fx_"_s + RandomScratchName();
    const QString special = u"p;a}s{s= x"_s;
    admin.Execute(u"CREATE ROLE "_s + role + u" LOGIN PASSWORD 'p;a}s{s= x'"_s);
    try {
        OdbcConnection user(server.ConnectionString(special, role));
        EXPECT_EQ(user.Read(u"SELECT current_user"_s).Value(0, 0).toString(), role);
    } catch (const Failure &f) {
        ADD_FAILURE() << f.Description().toStdString();
    }
    admin.Execute(u"DROP ROLE "_s + role);
}

TEST(OdbcPostgreSQL, an_unload_declares_the_server_types_and_sizes_in_schema_ini)
{
    FX_REQUIRE_PG_SERVER(server);
    fxtest::Sandbox box;
    OdbcConnection admin(server.ConnectionString());
    fxtest::PgScratchSchema schema(admin);
    OdbcSchemaConnection connection(DBConType::PostgreSQL, server.ConnectionString());
    connection.UseSchema(schema.Name(), true);
    connection.Execute(u"CREATE TABLE t (id integer, amount numeric(9,0), wide varchar(300), made date)"_s);
    connection.Execute(u"INSERT INTO t VALUES (7, 12, 'a \"b\"', '2021-03-04'), (8, NULL, NULL, NULL)"_s);

    const QString file = UnloadQueryToTextFile(connection, u"SELECT * FROM t ORDER BY id"_s, box.Temp());
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file),
              QByteArray("7\t12\ta 'b'\t2021-03-04\r\n8\t-32768\t-32768\t-32768\r\n"));
    const QStringList lines = QString::fromLatin1(fxtest::Sandbox::ReadFile(box.Temp() + u"Schema.ini"_s))
                                  .split(QRegularExpression(u"\r?\n"_s));
    EXPECT_TRUE(lines.contains(u"Col1=id long"_s));
    EXPECT_TRUE(lines.contains(u"Col2=amount long"_s));
    EXPECT_TRUE(lines.contains(u"Col3=wide char width 240"_s));
    EXPECT_TRUE(lines.contains(u"Col4=made char width 10"_s)) << lines.join(u" | "_s).toStdString();
}

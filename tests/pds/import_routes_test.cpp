// The same table brought into the local store by every route the gateway has: from an SQLite
// schema and from PostgreSQL through DBImport2Access, and from a dump through RISDumpImport2Access.

#include "pds/adotypes.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/sqlitedb.h"
#include "pgtestserver.h"

#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// 100,000 rows with quotes, blanks, NULL texts and numbers, dates and fractions.
constexpr char kRowsSql[] =
    "WITH RECURSIVE g(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM g WHERE i < 100000) "
    "SELECT i AS id, 'c ' || i AS code, i * 0.25 AS qty, "
    "CASE WHEN i % 7 = 0 THEN NULL ELSE 'it''s \"' || i || '\"  ' END AS note, "
    "strftime('%Y-%m-%d %H:%M:%S', '2020-01-01', '+' || i || ' seconds') AS made, "
    "CASE WHEN i % 11 = 0 THEN NULL ELSE i % 3 END AS flag FROM g";

constexpr char kColumns[] = "(id INTEGER, code TEXT(12), qty DOUBLE, note TEXT(40), made DATETIME, flag SMALLINT)";

void CreateExpected(SqliteDb &db, const QString &table)
{
    db.Execute(u"CREATE TABLE "_s + table + QString::fromLatin1(kColumns) + u"; INSERT INTO "_s + table + u" "_s
               + QString::fromLatin1(kRowsSql));
}

// Equal when each table holds every row of the other, and as many.
void ExpectSameRows(SqliteDb &db, const QString &a, const QString &b)
{
    auto count = [&](const QString &sql) { return db.Read(sql).Value(0, 0).toLongLong(); };
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM "_s + a), 100000);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM "_s + b), 100000);
    const QString columns = u"id, code, qty, note, made, flag"_s;
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM (SELECT "_s + columns + u" FROM "_s + a + u" EXCEPT SELECT "_s + columns
                    + u" FROM "_s + b + u")"_s),
              0)
        << a.toStdString() << " has rows that " << b.toStdString() << " lacks";
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM (SELECT "_s + columns + u" FROM "_s + b + u" EXCEPT SELECT "_s + columns
                    + u" FROM "_s + a + u")"_s),
              0)
        << b.toStdString() << " has rows that " << a.toStdString() << " lacks";
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM "_s + b + u" WHERE note IS NULL"_s), 100000 / 7);
}

// The store declares the source's types and sizes, so later statements compare as they would there.
void ExpectSourceTypes(SqliteDb &db, const QString &table)
{
    const Recordset declared = db.Read(u"SELECT code, flag, qty, id FROM "_s + table + u" WHERE 0"_s);
    EXPECT_EQ(declared.Fields().at(0).type, adotype::VarWChar);
    EXPECT_EQ(declared.Fields().at(0).definedSize, 12);
    EXPECT_EQ(declared.Fields().at(1).type, adotype::SmallInt);
    EXPECT_EQ(declared.Fields().at(2).type, adotype::Double);
    EXPECT_TRUE(IsAdoDataTypeInteger(declared.Fields().at(3).type));
}

} // namespace

TEST(ImportRoutes, an_sqlite_schema_and_a_dump_of_it_give_the_store_the_same_rows)
{
    fxtest::Sandbox box;
    const QString folder = box.Root() + u"schemas"_s;
    QDir().mkpath(folder);
    {
        SqliteDb schema(folder + u"/pd_big.db"_s, SqliteDb::OpenMode::ReadWriteCreate);
        CreateExpected(schema, u"big"_s);
    }
    const QString storeFile = box.Root() + u"store.db"_s;
    ASSERT_TRUE(CreateMDB(storeFile, true));

    CRIS cris;
    cris.SetUseSQLite(folder);
    cris.DBImport2Access(storeFile, u"big"_s, u"SELECT * FROM big"_s, u"pd_big"_s);
    const QString dump = cris.RISDumpCreate(box.Temp(), storeFile, u"pd_big"_s, u"big"_s);
    cris.RISDumpImport2Access(dump, u"pd_big"_s, storeFile, u"from_dump"_s, u"SELECT * FROM big"_s);

    SqliteDb store(storeFile);
    CreateExpected(store, u"expected"_s);
    ExpectSameRows(store, u"expected"_s, u"big"_s);
    ExpectSourceTypes(store, u"big"_s);
    ExpectSameRows(store, u"expected"_s, u"from_dump"_s);
}

TEST(ImportRoutes, a_postgresql_schema_gives_the_store_the_same_rows)
{
    FX_REQUIRE_PG_SERVER(server);
    OdbcConnection admin(server.ConnectionString());
    fxtest::PgScratchSchema schema(admin);
    admin.Execute(u"CREATE TABLE "_s + schema.Name()
                  + u".big AS SELECT i AS id, ('c ' || i)::varchar(12) AS code, (i * 0.25)::double precision AS qty, "
                    "(CASE WHEN i % 7 = 0 THEN NULL ELSE 'it''s \"' || i || '\"  ' END)::varchar(40) AS note, "
                    "timestamp '2020-01-01' + i * interval '1 second' AS made, "
                    "(CASE WHEN i % 11 = 0 THEN NULL ELSE i % 3 END)::smallint AS flag "
                    "FROM generate_series(1, 100000) i"_s);

    fxtest::Sandbox box;
    const QString storeFile = box.Root() + u"store.db"_s;
    ASSERT_TRUE(CreateMDB(storeFile, true));
    CRIS cris;
    cris.SetUsePostgreSQL(server.host + u':' + server.port, server.database, server.user, server.password);
    cris.DBImport2Access(storeFile, u"big"_s, u"SELECT * FROM big"_s, schema.Name());

    SqliteDb store(storeFile);
    CreateExpected(store, u"expected"_s);
    ExpectSameRows(store, u"expected"_s, u"big"_s);
    ExpectSourceTypes(store, u"big"_s);
}

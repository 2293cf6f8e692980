// A large query of the project schema brought into the local store, from both SQL kinds we can run.

#include "pds/adotypes.h"
#include "pds/odbcschemaconnection.h"
#include "pds/queryimport.h"
#include "pds/sqliteschemaconnection.h"
#include "pgtestserver.h"

#include <QDateTime>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

constexpr int kRows = 100000;

// The row the source builds for `i`, computed here on its own so that a fault on the way
// cannot cancel itself out.
QStringList ExpectedRow(int i)
{
    return {QString::number(i), u"c%1"_s.arg(i), QString::number(i * 0.25, 'g', 17),
            i % 7 == 0 ? u"<null>"_s : u"it's \"%1\""_s.arg(i),
            QDateTime(QDate(2020, 1, 1), QTime(0, 0)).addSecs(i).toString(u"yyyy-MM-dd HH:mm:ss"_s),
            QString::number(i % 3)};
}

QString Text(const QVariant &value)
{
    if (value.isNull())
        return u"<null>"_s;
    if (value.typeId() == QMetaType::Double)
        return QString::number(value.toDouble(), 'g', 17);
    return value.toString();
}

// Every row of the store's table, in order, against the expected rows; stops at the first few faults.
void ExpectStoreHoldsTheRows(SqliteDb &store)
{
    const Recordset rows = store.Read(u"SELECT id, code, qty, note, made, flag FROM big ORDER BY id"_s);
    ASSERT_EQ(rows.RecordCount(), kRows);
    int faults = 0;
    for (int i = 1; i <= kRows && faults < 5; ++i) {
        QStringList got;
        for (const QVariant &value : rows.Row(i - 1))
            got << Text(value);
        if (got != ExpectedRow(i)) {
            ++faults;
            ADD_FAILURE() << "row " << i << ": " << got.join(u" | "_s).toStdString() << " expected "
                          << ExpectedRow(i).join(u" | "_s).toStdString();
        }
    }
    const Recordset declared = store.Read(u"SELECT code, flag, qty FROM big WHERE 0"_s);
    EXPECT_EQ(declared.Fields().at(0).definedSize, 12);
    EXPECT_EQ(declared.Fields().at(1).type, adotype::SmallInt);
    EXPECT_EQ(declared.Fields().at(2).type, adotype::Double);
}

} // namespace

TEST(QueryImport, a_hundred_thousand_rows_arrive_unchanged_from_postgresql)
{
    FX_REQUIRE_PG_SERVER(server);
    OdbcConnection admin(server.ConnectionString());
    fxtest::PgScratchSchema schema(admin);
    admin.Execute(u"CREATE TABLE "_s + schema.Name()
                  + u".big AS SELECT i AS id, ('c' || i)::varchar(12) AS code, (i * 0.25)::double precision AS qty, "
                    "(CASE WHEN i % 7 = 0 THEN NULL ELSE 'it''s \"' || i || '\"' END)::text AS note, "
                    "timestamp '2020-01-01' + i * interval '1 second' AS made, (i % 3)::smallint AS flag "
                    "FROM generate_series(1, 100000) i"_s);
    OdbcSchemaConnection connection(DBConType::PostgreSQL, server.ConnectionString());
    connection.UseSchema(schema.Name(), false);

    QTemporaryDir dir;
    SqliteDb store(dir.filePath(u"store.db"_s), SqliteDb::OpenMode::ReadWriteCreate);
    ImportQueryInto(connection, u"SELECT * FROM big"_s, store, u"big"_s);
    ExpectStoreHoldsTheRows(store);
}

TEST(QueryImport, a_hundred_thousand_rows_arrive_unchanged_from_an_sqlite_schema_and_append_to_a_table)
{
    QTemporaryDir dir;
    {
        SqliteDb source(dir.filePath(u"pd_big.db"_s), SqliteDb::OpenMode::ReadWriteCreate);
        source.Execute(u"CREATE TABLE big (id INTEGER, code TEXT(12), qty DOUBLE, note MEMO, made DATETIME, flag SMALLINT);"
                       "WITH RECURSIVE g(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM g WHERE i < 100000) "
                       "INSERT INTO big SELECT i, 'c' || i, i * 0.25, "
                       "CASE WHEN i % 7 = 0 THEN NULL ELSE 'it''s \"' || i || '\"' END, "
                       "strftime('%Y-%m-%d %H:%M:%S', '2020-01-01', '+' || i || ' seconds'), i % 3 FROM g"_s);
    }
    SqliteSchemaConnection connection(dir.path());
    connection.UseSchema(u"pd_big"_s, false);
    SqliteDb store(dir.filePath(u"store.db"_s), SqliteDb::OpenMode::ReadWriteCreate);
    ImportQueryInto(connection, u"SELECT * FROM big WHERE id <= 40000"_s, store, u"big"_s);
    ImportQueryInto(connection, u"SELECT * FROM big WHERE id > 40000"_s, store, u"big"_s);
    ExpectStoreHoldsTheRows(store);
}

// The gateway's own work over the SQL kinds: the embedded one, and PostgreSQL when a test server runs.

#include "pds/adotypes.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pgtestserver.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <optional>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

enum class Kind { SQLite, PostgreSQL };

// The kind by its name in ctest's list of tests, not by its bytes.
[[maybe_unused]] void PrintTo(Kind kind, std::ostream *out)
{
    *out << (kind == Kind::SQLite ? "SQLite" : "PostgreSQL");
}

// A private world, a fresh schema of the kind and a gateway opened on it.
class CRISSqlKinds : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override
    {
        if (GetParam() == Kind::SQLite) {
            const QString folder = m_box.Root() + u"schemas"_s;
            QDir().mkpath(folder);
            m_schema = u"pd_proj"_s;
            SqliteDb(folder + u"/pd_proj.db"_s, SqliteDb::OpenMode::ReadWriteCreate);
            m_cris.SetUseSQLite(folder);
            return;
        }
        m_server = fxtest::PgTestServer::FromEnv();
        if (!m_server)
            GTEST_SKIP() << "no PostgreSQL test server";
        m_admin.emplace(m_server->ConnectionString());
        m_pgSchema.emplace(*m_admin);
        m_schema = m_pgSchema->Name();
        m_cris.SetUsePostgreSQL(m_server->host + u':' + m_server->port, m_server->database, m_server->user,
                                m_server->password);
    }

    // Parts(id, name, weight) with a full row, a row of NULLs and a name with a quote.
    void WriteParts()
    {
        m_cris.DBWrite(m_schema,
                       u"CREATE TABLE Parts (id INTEGER, name VARCHAR(20), weight DOUBLE PRECISION)\r\n"
                       "INSERT INTO Parts VALUES (1, 'it''s \"x\"', 2.5)\r\n"
                       "\r\n"
                       "INSERT INTO Parts (id) VALUES (2)\r\n"_s,
                       true);
    }

    fxtest::Sandbox m_box;
    std::optional<fxtest::PgTestServer> m_server;
    std::optional<OdbcConnection> m_admin;
    std::optional<fxtest::PgScratchSchema> m_pgSchema;
    CRIS m_cris;
    QString m_schema;
};

} // namespace

TEST_P(CRISSqlKinds, lines_of_a_write_run_one_by_one_and_a_read_gives_typed_values_and_nulls)
{
    WriteParts();
    // The SQL kinds take any text, even one that RIS would refuse for its leading blanks.
    const Recordset rows = m_cris.DBRead(m_schema, u"  select id, name, weight FROM parts ORDER BY id"_s);
    ASSERT_EQ(rows.RecordCount(), 2);
    ASSERT_EQ(rows.FieldCount(), 3);
    EXPECT_EQ(rows.Fields().at(0).type, adotype::Integer);
    EXPECT_EQ(rows.Fields().at(1).type, adotype::VarWChar);
    EXPECT_EQ(rows.Fields().at(1).definedSize, 20);
    EXPECT_EQ(rows.Fields().at(2).type, adotype::Double);
    EXPECT_EQ(rows.Value(0, 0).toLongLong(), 1);
    EXPECT_EQ(rows.Value(0, 1).toString(), u"it's \"x\""_s);
    EXPECT_EQ(rows.Value(0, 2), QVariant(2.5));
    EXPECT_EQ(rows.Value(1, 0).toLongLong(), 2);
    EXPECT_TRUE(rows.Value(1, 1).isNull());
    EXPECT_TRUE(rows.Value(1, 2).isNull());

    // A failing line stops the write; the lines before it have been done.
    const QString failure = fxtest::FailureText([&] {
        m_cris.DBWrite(m_schema, u"INSERT INTO Parts (id) VALUES (3)\r\nINSERT INTO nowhere VALUES (4)\r\n"
                                 "INSERT INTO Parts (id) VALUES (5)"_s);
    });
    EXPECT_TRUE(failure.startsWith(u"CRIS:DBWrite: CRIS::ADOWrite: "_s + QString::fromLatin1(msg::DatabaseError)))
        << failure.toStdString();
    EXPECT_TRUE(failure.contains(u"INSERT INTO nowhere VALUES (4)"_s)) << failure.toStdString();
    EXPECT_EQ(m_cris.DBRead(m_schema, u"SELECT max(id) FROM Parts"_s).Value(0, 0).toLongLong(), 3);

    EXPECT_EQ(fxtest::FailureText([&] { m_cris.DBWrite(m_schema, u" \r\n"_s); }),
              u"CRIS:DBWrite: "_s + ArgForm(msg::SqlNotDefined));
    EXPECT_EQ(fxtest::FailureText([&] { m_cris.DBRead(m_schema, QString()); }),
              u"CRIS::DBRead: "_s + ArgForm(msg::SqlNotDefined));
    const QString readFailure = fxtest::FailureText([&] { m_cris.DBRead(m_schema, u"SELECT nothing FROM nowhere"_s); });
    EXPECT_TRUE(readFailure.startsWith(u"CRIS::DBRead: "_s + QString::fromLatin1(msg::DatabaseError)))
        << readFailure.toStdString();
}

TEST_P(CRISSqlKinds, tables_and_columns_are_found_whatever_the_case_of_their_names)
{
    WriteParts();
    EXPECT_TRUE(m_cris.DBGetTables(m_schema).contains(u"PARTS"_s, Qt::CaseInsensitive));
    EXPECT_TRUE(m_cris.IsTableExists(m_schema, u"pArTs"_s));
    EXPECT_FALSE(m_cris.IsTableExists(m_schema, u"Part"_s));

    const QList<ColumnDescription> columns = m_cris.DBGetCols(m_schema, u"parts"_s);
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns.at(1).name.toLower(), u"name"_s);
    EXPECT_EQ(columns.at(1).adoType, adotype::VarWChar);
    EXPECT_EQ(columns.at(1).size, 20);
    EXPECT_EQ(columns.at(2).adoType, adotype::Double);
    EXPECT_TRUE(m_cris.IsColumnExists(m_schema, u"PARTS"_s, u"Weight"_s));
    EXPECT_FALSE(m_cris.IsColumnExists(m_schema, u"PARTS"_s, u"weigh"_s));
    EXPECT_FALSE(m_cris.IsColumnExists(m_schema, u"nothing"_s, u"id"_s));
}

TEST_P(CRISSqlKinds, an_import_creates_the_store_table_then_appends_to_it)
{
    WriteParts();
    const QString store = m_box.Root() + u"work.mdb"_s;
    ASSERT_TRUE(CreateMDB(store));
    // A table name the store must take as one name, brackets and all.
    const QString table = u"Imported [parts]"_s;
    m_cris.DBImport2Access(store, table, u"SELECT id, name, weight FROM Parts ORDER BY id"_s, m_schema);
    m_cris.DBImport2Access(store, table, u"SELECT id, name, weight FROM Parts WHERE id = 1"_s, m_schema);
    {
        SqliteDb db = Connect2MDB(store);
        const Recordset rows = MDBRead(db, u"SELECT id, name, weight FROM \"Imported [parts]\" ORDER BY rowid"_s);
        ASSERT_EQ(rows.RecordCount(), 3);
        EXPECT_EQ(rows.Value(0, 1).toString(), u"it's \"x\""_s);
        EXPECT_TRUE(rows.Value(1, 1).isNull());
        EXPECT_EQ(rows.Value(1, 0).toLongLong(), 2);
        EXPECT_EQ(rows.Value(2, 0).toLongLong(), 1);
        EXPECT_EQ(rows.Value(2, 2), QVariant(2.5));
        CloseConnection(db);
    }

    const QString missing = m_box.Root() + u"missing.mdb"_s;
    EXPECT_EQ(fxtest::FailureText([&] { m_cris.DBImport2Access(missing, u"t"_s, u"SELECT 1"_s, m_schema); }),
              u"CRIS::DBImport2Access: "_s + ArgForm(msg::AccessDatabaseNotExists, {missing}));
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_EQ(fxtest::FailureText([&] { m_cris.DBImport2Access(store, u" "_s, u"SELECT 1"_s, m_schema); }),
              u"CRIS::DBImport2Access: "_s + ArgForm(msg::TableToExtractNotDefined));
}

TEST_P(CRISSqlKinds, an_extract_writes_the_text_file_and_its_schema_ini_section_and_a_select_over_it)
{
    WriteParts();
    QString rewritten;
    const QString file = m_cris.Extract2File(u"SELECT id, name FROM Parts ORDER BY id"_s, m_schema, &rewritten);
    const QString name = QFileInfo(file).fileName();
    EXPECT_EQ(QFileInfo(file).absolutePath() + u'/', QDir::fromNativeSeparators(m_cris.GetTempDir()));
    EXPECT_EQ(fxtest::Sandbox::ReadFile(file), QByteArray("1\tit's 'x'\r\n2\t-32768\r\n"));
    EXPECT_EQ(rewritten, u"SELECT * FROM ["_s + name + u"];"_s);
    const QStringList ini = QString::fromLatin1(fxtest::Sandbox::ReadFile(m_cris.GetTempDir() + u"Schema.ini"_s))
                                .split(QRegularExpression(u"\r?\n"_s));
    const qsizetype section = ini.indexOf(u"["_s + name + u"]"_s);
    ASSERT_GE(section, 0) << ini.join(u" | "_s).toStdString();
    EXPECT_EQ(ini.mid(section + 1, 5), QStringList({u"ColNameHeader=False"_s, u"Format=TabDelimited"_s,
                                                     u"CharacterSet=ANSI"_s, u"Col1=id long"_s,
                                                     u"Col2=name char width 20"_s}));

    const QString failure = fxtest::FailureText([&] { m_cris.Extract2File(u"SELECT * FROM nowhere"_s, m_schema, nullptr); });
    EXPECT_TRUE(failure.startsWith(u"CRIS::Extract2File: CRIS::ADOUnloadAndParse: "_s)) << failure.toStdString();
    // A folder RIS could not take is refused for every kind.
    QDir().mkpath(m_box.Root() + u"with.dot"_s);
    m_cris.SetTempDir(m_box.Root() + u"with.dot"_s);
    EXPECT_EQ(fxtest::FailureText([&] { m_cris.Extract2File(u"SELECT id FROM Parts"_s, m_schema, nullptr); }),
              u"CRIS::Extract2File: "_s + ArgForm(msg::CrisTempDirNotCorrect, {m_cris.GetTempDir()}));
}

// The rows of a query as "a|b|NULL" lines, for a comparison that shows what differs.
QStringList RowTexts(CRIS &cris, const QString &schema, const QString &sql)
{
    QStringList lines;
    const Recordset rows = cris.DBRead(schema, sql);
    for (const QVariantList &row : rows.Rows()) {
        QStringList values;
        for (const QVariant &value : row)
            values << (value.isNull() ? u"NULL"_s : value.toString());
        lines << values.join(u'|');
    }
    return lines;
}

TEST_P(CRISSqlKinds, batches_go_in_together_and_a_failure_in_the_last_undoes_the_first)
{
    m_cris.DBWrite(m_schema,
                   u"CREATE TABLE Reviews (no INTEGER NOT NULL, clash INTEGER, kind SMALLINT, note VARCHAR(40))\r\n"
                   "INSERT INTO Reviews VALUES (1, 10, 2, 'old')\r\n"
                   "CREATE UNIQUE INDEX ureviews ON Reviews (no)"_s,
                   true);
    const QString select = u"SELECT no, clash, kind, note FROM Reviews ORDER BY no"_s;
    const QList<StatementBatch> written{
        {u"UPDATE Reviews SET kind = ?, note = ? WHERE no = ?"_s, {{qint64(3), QVariant(), qint64(1)}}},
        {u"INSERT INTO Reviews (no, clash, kind, note) VALUES (?, ?, ?, ?)"_s,
         {{qint64(2), qint64(11), QVariant(), u"it's \"new\""_s}, {qint64(3), qint64(12), qint64(1), u"x"_s}}}};
    EXPECT_EQ(m_cris.DBWriteBatches(m_schema, written), (QList<qint64>{1, 2}));
    const QStringList after{u"1|10|3|NULL"_s, u"2|11|NULL|it's \"new\""_s, u"3|12|1|x"_s};
    EXPECT_EQ(RowTexts(m_cris, m_schema, select), after);

    // The second batch's second row collides with a key: nothing of the first batch stays.
    const QList<StatementBatch> refused{
        {u"UPDATE Reviews SET note = ? WHERE no = ?"_s, {{u"changed"_s, qint64(1)}}},
        {u"INSERT INTO Reviews (no, clash) VALUES (?, ?)"_s, {{qint64(4), qint64(13)}, {qint64(2), qint64(14)}}}};
    const QString failure = fxtest::FailureText([&] { m_cris.DBWriteBatches(m_schema, refused); });
    EXPECT_TRUE(failure.startsWith(u"CRIS::DBWriteBatches: "_s + QString::fromLatin1(msg::DatabaseError))) << failure.toStdString();
    EXPECT_EQ(RowTexts(m_cris, m_schema, select), after);

    // The connection commits each statement again, as another connection sees at once.
    m_cris.DBWrite(m_schema, u"INSERT INTO Reviews (no) VALUES (5)"_s);
    CRIS other;
    if (GetParam() == Kind::SQLite)
        other.SetUseSQLite(m_box.Root() + u"schemas"_s);
    else
        other.SetUsePostgreSQL(m_server->host + u':' + m_server->port, m_server->database, m_server->user, m_server->password);
    EXPECT_EQ(RowTexts(other, m_schema, u"SELECT COUNT(*) FROM Reviews"_s), QStringList{u"4"_s});
    EXPECT_EQ(fxtest::FailureText([&] { m_cris.DBWriteBatches(m_schema, {{u" "_s, {}}}); }),
              u"CRIS::DBWriteBatches: "_s + ArgForm(msg::SqlNotDefined));
}

INSTANTIATE_TEST_SUITE_P(, CRISSqlKinds, ::testing::Values(Kind::SQLite, Kind::PostgreSQL),
                         [](const ::testing::TestParamInfo<Kind> &info) {
                             return info.param == Kind::SQLite ? "SQLite" : "PostgreSQL";
                         });

TEST(CRISLogins, blank_server_and_user_are_refused_before_any_connection_and_keep_the_kind)
{
    fxtest::Sandbox box;
    CRIS cris;
    QDir().mkpath(box.Root() + u"schemas"_s);
    cris.SetUseSQLite(box.Root() + u"schemas"_s);
    const struct
    {
        std::function<void()> call;
        QString expected;
    } cases[] = {
        {[&] { cris.SetUseOra(u" "_s, u"scott"_s, u"tiger"_s); },
         u"CRIS::SetUseOra: "_s + ArgForm(msg::DatabaseServerNotDefined)},
        {[&] { cris.SetUseOra(u"orcl"_s, QString(), u"tiger"_s); },
         u"CRIS::SetUseOra: "_s + ArgForm(msg::DatabaseUserNotDefined)},
        {[&] { cris.SetUseSQL(QString(), u"pds"_s, u"sa"_s, u"pw"_s); },
         u"CRIS::SetUseSQL: "_s + ArgForm(msg::DatabaseServerNotDefined)},
        {[&] { cris.ORAConnTest(u""_s, u"scott"_s, u"tiger"_s); },
         u"CRIS::ORAConnTest: "_s + ArgForm(msg::OracleServerNotDefined)},
        {[&] { cris.SQLConnTest(u"  "_s, u"pds"_s, u"sa"_s, u"pw"_s); },
         u"CRIS::SQLConnTest: "_s + ArgForm(msg::SQLServerNotDefined)},
    };
    for (const auto &c : cases)
        EXPECT_EQ(fxtest::FailureText(c.call), c.expected);
    EXPECT_EQ(cris.GetDBConType(), DBConType::SQLite);
    EXPECT_EQ(cris.GetDBServerName(), box.Root() + u"schemas"_s);
}

TEST(CRISLogins, a_failed_login_names_the_method_but_never_the_password)
{
    fxtest::Sandbox box;
    CRIS cris;
    // Without a reachable server (or driver) the failure comes from elsewhere, but still without it.
    const QString oracle = fxtest::FailureText([&] { cris.ORAConnTest(u"nohost"_s, u"scott"_s, u"Tig3rSecret"_s); });
    EXPECT_TRUE(oracle.startsWith(u"CRIS::ORAConnTest: "_s)) << oracle.toStdString();
    EXPECT_FALSE(oracle.contains(u"Tig3rSecret"_s)) << oracle.toStdString();

    FX_REQUIRE_PG_SERVER(server);
    const QString wrong = u"Wr0ng;Secret"_s;
    const QString failure = fxtest::FailureText([&] {
        cris.SetUsePostgreSQL(server.host + u':' + server.port, server.database, server.user, wrong);
    });
    EXPECT_TRUE(failure.startsWith(u"CRIS::SetUsePostgreSQL: "_s + QString::fromLatin1(msg::DatabaseError)))
        << failure.toStdString();
    EXPECT_FALSE(failure.contains(u"Wr0ng"_s)) << failure.toStdString();
    EXPECT_FALSE(failure.contains(u"Secret"_s)) << failure.toStdString();
}

TEST(CRISBatches, a_ris_schema_takes_no_transaction)
{
    CRIS cris;
    cris.SetUseRIS();
    EXPECT_EQ(fxtest::FailureText([&] { cris.DBWriteBatches(u"pd_proj"_s, {{u"UPDATE t SET a = ?"_s, {{1}}}}); }),
              u"CRIS::DBWriteBatches: "_s + ArgForm(msg::RisSchemaWithoutTransactions));
}

#include "pdssim/edgemanifest.h"
#include "pdssim/schemadefinition.h"
#include "pdssim/schemagenerator.h"
#include "pdssim/schemapostgres.h"

#include "pds/pgtestserver.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include "pds/adotypes.h"
#include "pds/odbc.h"
#include "pds/risdumpwriter.h"
#include "pds/sqlitedb.h"

#include <gtest/gtest.h>

using namespace pdssim;

namespace {

qint64 Count(fx::SqliteDb &db, const QString &sql)
{
    return db.Read(sql).Value(0, 0).toLongLong();
}

SchemaOptions Options(qint64 clashes, quint64 seed, bool edge = false)
{
    SchemaOptions options;
    options.project = QStringLiteral("T1");
    options.clashes = clashes;
    options.seed = seed;
    options.networkAddress = QStringLiteral("simhost");
    options.projectPath = QStringLiteral("d:\\pds\\t1\\");
    options.seedFileSpec = QStringLiteral("t1.dgn");
    options.edge = edge;
    return options;
}

} // namespace

TEST(SchemaGenerator, every_clash_finds_its_components_models_areas_and_disciplines)
{
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("pd_T1.db");
    const qint64 n = 3000;
    EXPECT_TRUE(GenerateSchema(Options(n, 3), file).isEmpty());
    fx::SqliteDb db(file);

    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132")), n);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(DISTINCT unique_clash_id) FROM pdtable_132")), n);
    for (const char *side : {"a", "b"}) {
        // Component of the clash's model, the model of the clash's discipline, its area of that discipline.
        EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c JOIN pdtable_134 p ON p.unique_comp_id = c.comp_%1_unique_id "
                                           "AND p.model_index_no = c.model_index_no_%1 JOIN pdtable_113 m ON m.model_index_no = p.model_index_no "
                                           "AND m.discipline_indx_no = c.discipline_index_%1 JOIN pdtable_112 r ON r.area_index_no = m.area_index_no "
                                           "AND r.discipline_indx_no = m.discipline_indx_no JOIN pdtable_111 d ON d.discipline_indx_no = m.discipline_indx_no")
                                .arg(QLatin1String(side))),
                  n) << side;
    }
    // Both action areas are interference areas with a check run; the action discipline exists or is 0.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c WHERE NOT EXISTS(SELECT 1 FROM pdtable_112 r JOIN pdtable_131 k "
                                       "ON k.area_index_no = r.area_index_no WHERE r.interference_mode = 1 AND r.area_index_no = c.area_index_no) "
                                       "OR NOT EXISTS(SELECT 1 FROM pdtable_112 r WHERE r.interference_mode = 1 AND r.area_index_no = c.area_index_no_b) "
                                       "OR (action_discipline <> 0 AND NOT EXISTS(SELECT 1 FROM pdtable_111 WHERE discipline_indx_no = action_discipline))")),
              0);
    // Every clash has an occurrence, and the ranges of its two components overlap on every axis.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(DISTINCT unique_clash_id) FROM pdtable_133")), n);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_133 WHERE comp_a_range_x_hi < comp_b_range_x_lo OR comp_b_range_x_hi < comp_a_range_x_lo "
                                       "OR comp_a_range_y_hi < comp_b_range_y_lo OR comp_b_range_y_hi < comp_a_range_y_lo "
                                       "OR comp_a_range_z_hi < comp_b_range_z_lo OR comp_b_range_z_hi < comp_a_range_z_lo")),
              0);
    // The newest review agrees with the clash's status and lies after the area's newest check run;
    // an approved clash always has one, and its recent_review_date is that run.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c JOIN pdtable_135 v ON v.unique_clash_id = c.unique_clash_id "
                                       "WHERE v.system_unique_no = (SELECT MAX(system_unique_no) FROM pdtable_135 w WHERE w.unique_clash_id = c.unique_clash_id) "
                                       "AND ((c.if_approval_status = 2) <> (v.action IN (2, 3)) OR (v.approval_method = 2) <> (v.action IN (2, 3)) "
                                       "OR v.review_date <= c.recent_review_date "
                                       "OR c.recent_review_date <> (SELECT MAX(completion_date) FROM pdtable_131 k WHERE k.area_index_no = c.area_index_no))")),
              0);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c WHERE if_approval_status = 2 AND NOT EXISTS"
                                       "(SELECT 1 FROM pdtable_135 v WHERE v.unique_clash_id = c.unique_clash_id)")),
              0);
    EXPECT_GT(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status = 2")), n / 10);
    // Clash types and model states all have a name; every clash is a clash of two models.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 WHERE recent_clash_type NOT BETWEEN 1 AND %1").arg(ClashTypesDefinition().size())), 0);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_113 WHERE model_status NOT BETWEEN 1 AND %1").arg(ModelStatusDefinition().size())), 0);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_134 WHERE comp_table_number = 0 OR comp_row_number <= 0")), 0);

    // The project row as given, unlocked; the clash discipline row names a discipline.
    const fx::Recordset project = db.Read(QStringLiteral("SELECT network_address, path_name, rdb_file_spec, lock_owner, lock_date, lock_status "
                                                         "FROM pdtable_102 WHERE type_of_rdb_data = 99"));
    ASSERT_EQ(project.RecordCount(), 1);
    EXPECT_EQ(project.Value(0, 0).toString(), QStringLiteral("simhost"));
    EXPECT_EQ(project.Value(0, 1).toString(), QStringLiteral("d:\\pds\\t1\\"));
    EXPECT_EQ(project.Value(0, 2).toString(), QStringLiteral("t1.dgn"));
    EXPECT_TRUE(project.Value(0, 3).isNull());
    EXPECT_EQ(project.Value(0, 4).toLongLong() + project.Value(0, 5).toLongLong(), 0);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_102 p JOIN pdtable_111 d ON d.discipline_indx_no = CAST(p.rdb_file_spec AS INT) "
                                       "WHERE type_of_rdb_data = 451")),
              1);
    EXPECT_EQ(db.Read(QStringLiteral("SELECT project_no FROM pdtable_101")).Value(0, 0).toString(), QStringLiteral("T1"));
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_112 WHERE interference_mode = 1 AND area_lock_status <> 0")), 0);
    EXPECT_GT(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_117 s JOIN pdtable_116 p ON p.sub_project_ndx_no = s.sub_project_ndx_no "
                                       "JOIN pdtable_112 r ON r.area_index_no = s.area_index_no AND r.discipline_indx_no = 3")),
              0);

    EXPECT_EQ(fxtest::FailureText([&] { GenerateSchema(Options(9, 1), file); }),
              QStringLiteral("GenerateSchema: Clash count %0% out of range (%1% to %2%)|||9|||10|||1000000"));
}

TEST(SchemaGenerator, a_model_count_given_makes_that_many_models_in_areas_of_some_forty)
{
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("pd_T1.db");
    SchemaOptions options = Options(2000, 5);
    options.models = 5000;
    GenerateSchema(options, file);
    fx::SqliteDb db(file);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_113")), 5000);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(DISTINCT model_no) FROM pdtable_113")), 5000);
    // 22 design areas in each of the six design disciplines, the structural ones in sub-projects.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_112 WHERE discipline_indx_no = 1")), 22);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT MAX(n) FROM (SELECT COUNT(*) AS n FROM pdtable_113 GROUP BY area_index_no)")), 38);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_117")), 22);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132")), 2000);

    options.models = 11;
    EXPECT_EQ(fxtest::FailureText([&] { GenerateSchema(options, file); }),
              QStringLiteral("GenerateSchema: Model count '%0%' out of range (%1% to %2%)|||11|||12|||100000"));
}

TEST(SchemaGenerator, columns_are_declared_with_ris_types_that_survive_a_dump)
{
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("pd_T1.db");
    GenerateSchema(Options(10, 1), file);
    fx::SqliteDb db(file);
    for (const TableDefinition &table : ProjectTables()) {
        const fx::Recordset info = db.Read(QStringLiteral("PRAGMA table_info(%1)").arg(QLatin1String(table.name)));
        ASSERT_EQ(info.RecordCount(), table.columns.size()) << table.name;
        for (int i = 0; i < table.columns.size(); ++i) {
            // SQLite keeps the names it knows itself ("INT") in capitals.
            const QString declared = info.Value(i, QStringLiteral("type")).toString().toLower();
            EXPECT_EQ(info.Value(i, QStringLiteral("name")).toString(), QLatin1String(table.columns.at(i).name));
            EXPECT_EQ(declared, QLatin1String(table.columns.at(i).risType));
            // What the store reads the declaration as gives the same RIS type back in a dump.
            qint64 size = 0;
            const int adoType = fx::AdoTypeOfDeclaredType(declared, &size);
            EXPECT_EQ(fx::risdump::RISTypeOfAdoType(adoType, size), declared) << table.name << " " << table.columns.at(i).name;
        }
        if (!table.uniqueIndex.isEmpty()) {
            EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND name = 'u%1' AND sql LIKE 'CREATE UNIQUE%'")
                                    .arg(QLatin1String(table.name))),
                      1);
        }
    }
    EXPECT_EQ(PostgreSQLTypeOfRISType(QStringLiteral("char(40)")), QStringLiteral("varchar(40)"));
    EXPECT_EQ(PostgreSQLTypeOfRISType(QStringLiteral("double")), QStringLiteral("double precision"));
    EXPECT_EQ(PostgreSQLTypeOfRISType(QStringLiteral("int")), QStringLiteral("integer"));
}

TEST(SchemaGeneratorEdge, every_case_of_the_manifest_is_in_the_rows_it_names_even_on_the_smallest_site)
{
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("pd_T1.db");
    SchemaOptions options = Options(kMinClashes, 5, true);
    options.edgeFatal = true;
    WriteManifest(box.Root() + QStringLiteral("manifest.ini"), GenerateSchema(options, file));
    const QList<EdgeCase> cases = ReadManifest(box.Root() + QStringLiteral("manifest.ini"));
    fx::SqliteDb db(file);
    const auto edge = [&](const char *name) -> const EdgeCase & {
        const EdgeCase *found = FindEdgeCase(cases, QLatin1String(name));
        if (!found)
            throw std::runtime_error(std::string("no case ") + name);
        return *found;
    };
    const auto clash = [&](const char *name) { return edge(name).Key(QStringLiteral("unique_clash_id")); };
    const auto value = [&](const QString &sql) { return db.Read(sql).Value(0, 0); };

    QStringList names;
    for (const EdgeCase &one : cases) {
        EXPECT_NO_THROW(ProjectTable(one.table)) << one.name.toStdString();
        EXPECT_FALSE(names.contains(one.name));
        names << one.name;
    }
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'pdtable_119'")), 0);
    EXPECT_EQ(edge("project_locked").Key(QStringLiteral("lock_owner")), QStringLiteral("FX_jdoe"));
    EXPECT_EQ(value(QStringLiteral("SELECT lock_owner || '/' || lock_date || '/' || lock_status FROM pdtable_102 WHERE type_of_rdb_data = 99")).toString(),
              QStringLiteral("FX_jdoe/%1/1").arg(edge("project_locked").Key(QStringLiteral("lock_date"))));
    EXPECT_EQ(value(QStringLiteral("SELECT '[' || area_lock_owner || ']' || area_lock_status || area_lock_date FROM pdtable_112 WHERE area_index_no = %1")
                        .arg(edge("area_locked_without_owner").Key(QStringLiteral("area_index_no")))).toString(),
              QStringLiteral("[]10"));

    EXPECT_EQ(value(QStringLiteral("SELECT if_approval_status FROM pdtable_132 WHERE unique_clash_id = %1").arg(clash("status_99"))).toInt(), 99);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 WHERE if_approval_status = 99 AND unique_clash_id = %1").arg(clash("duplicate_clash_id"))), 2);
    // Ties: the row that survives the cleaning is the one the manifest names.
    EXPECT_EQ(value(QStringLiteral("SELECT MAX(system_unique_no) || '/' || COUNT(*) FROM pdtable_133 WHERE unique_clash_id = %1 AND unique_sequence_no = "
                                   "(SELECT MAX(unique_sequence_no) FROM pdtable_133 WHERE unique_clash_id = %1)").arg(clash("sequence_tie"))).toString(),
              edge("sequence_tie").Key(QStringLiteral("system_unique_no")) + QStringLiteral("/2"));
    EXPECT_EQ(value(QStringLiteral("SELECT MAX(system_unique_no) || '/' || COUNT(*) FROM pdtable_135 WHERE unique_clash_id = %1 AND review_date = "
                                   "(SELECT MAX(review_date) FROM pdtable_135 WHERE unique_clash_id = %1)").arg(clash("review_date_tie"))).toString(),
              edge("review_date_tie").Key(QStringLiteral("system_unique_no")) + QStringLiteral("/2"));

    // Linkage of tables 3 to 8 as the store computes it, from the row number and the model's partition.
    for (const char *name : {"negative_row_number_minus_one", "negative_row_number"}) {
        EXPECT_EQ(value(QStringLiteral("SELECT '0 ' || comp_table_number || ' ' || ((comp_row_number + 4294967296) - 524288 * partition_no) || ' ' || "
                                       "(partition_no * 8) FROM pdtable_134 p JOIN pdtable_113 m ON m.model_index_no = p.model_index_no "
                                       "JOIN pdtable_132 c ON c.comp_a_unique_id = p.unique_comp_id WHERE comp_row_number < 0 AND unique_comp_id = %1 "
                                       "AND c.unique_clash_id = %2").arg(edge(name).Key(QStringLiteral("unique_comp_id")), clash(name))).toString(),
                  edge(name).Key(QStringLiteral("linkage"))) << name;
    }
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_134 WHERE (comp_table_number = 0 OR comp_row_number = 0) AND unique_comp_id IN (%1, %2)")
                            .arg(edge("zero_row_number").Key(QStringLiteral("unique_comp_id_a")), edge("zero_row_number").Key(QStringLiteral("unique_comp_id_b")))),
              2);
    EXPECT_EQ(value(QStringLiteral("SELECT primary_descript || '-' || secondary_descript FROM pdtable_134 WHERE unique_comp_id = %1")
                        .arg(edge("description_with_separator").Key(QStringLiteral("unique_comp_id")))).toString(), QStringLiteral("A-B-C"));

    // Rows whose references lead nowhere, by design.
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c JOIN pdtable_112 r ON r.area_index_no = c.area_index_no WHERE unique_clash_id = %1")
                            .arg(clash("missing_area_row"))), 0);
    EXPECT_GT(value(QStringLiteral("SELECT recent_clash_type FROM pdtable_132 WHERE unique_clash_id = %1").arg(clash("unlisted_clash_type"))).toInt(),
              ClashTypesDefinition().size());
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_132 c JOIN pdtable_111 d ON d.discipline_indx_no = c.action_discipline WHERE unique_clash_id = %1")
                            .arg(clash("unknown_action_discipline"))), 0);
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_133 WHERE unique_clash_id = %1 AND comp_b_range_x_lo > comp_a_range_x_hi "
                                       "AND comp_b_range_y_lo <= comp_a_range_y_hi").arg(clash("ranges_apart_x"))), 1);

    // Review rows: comments kept to the byte, the review race's times in UTC seconds.
    for (const char *name : {"comment_with_quotes", "comment_with_blanks", "comment_empty"})
        EXPECT_EQ(value(QStringLiteral("SELECT '[' || review_comment || ']' FROM pdtable_135 WHERE system_unique_no = %1")
                            .arg(edge(name).Key(QStringLiteral("system_unique_no")))).toString(),
                  QLatin1Char('[') + edge(name).Key(QStringLiteral("review_comment")) + QLatin1Char(']')) << name;
    EXPECT_EQ(edge("comment_with_quotes").Key(QStringLiteral("review_comment")), QStringLiteral("It's a \"real\" clash, isn't it?"));
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_135 WHERE unique_clash_id = %1").arg(clash("approved_without_review"))), 0);
    EXPECT_EQ(value(QStringLiteral("SELECT review_date FROM pdtable_135 WHERE unique_clash_id = %1").arg(clash("review_date_zero"))).toLongLong(), 0);
    const EdgeCase &race = edge("review_race");
    EXPECT_EQ(race.Key(QStringLiteral("review_date")).toLongLong() - race.Key(QStringLiteral("completion_date")).toLongLong(), 7200);
    EXPECT_EQ(race.Key(QStringLiteral("completion_date")).toLongLong() % 86400, 9 * 3600);
    EXPECT_EQ(value(QStringLiteral("SELECT v.review_date || '/' || k.completion_date FROM pdtable_132 c JOIN pdtable_135 v ON v.unique_clash_id = c.unique_clash_id "
                                   "JOIN pdtable_131 k ON k.area_index_no = c.area_index_no WHERE c.unique_clash_id = %1").arg(clash("review_race"))).toString(),
              race.Key(QStringLiteral("review_date")) + QLatin1Char('/') + race.Key(QStringLiteral("completion_date")));
    const EdgeCase &stale = edge("stale_local_stamp");
    EXPECT_EQ(Count(db, QStringLiteral("SELECT COUNT(*) FROM pdtable_131 WHERE area_index_no = %1 AND completion_date IN (%2, %3)")
                            .arg(stale.Key(QStringLiteral("area_index_no")), stale.Key(QStringLiteral("completion_date")), stale.Key(QStringLiteral("older_completion_date")))),
              2);
}

TEST(SchemaGeneratorPostgres, a_small_site_arrives_on_the_server_with_the_same_rows)
{
    FX_REQUIRE_PG_SERVER(server);
    fxtest::Sandbox box;
    const QString file = box.Root() + QStringLiteral("pd_T1.db");
    const QList<EdgeCase> cases = GenerateSchema(Options(300, 9, true), file);
    fx::OdbcConnection connection(server.ConnectionString());
    fxtest::PgScratchSchema schema(connection, QStringLiteral("pd_"));
    LoadSchemaIntoPostgreSQL(file, server.ConnectionString(), schema.Name());

    fx::SqliteDb db(file);
    for (const TableDefinition &table : ProjectTables()) {
        const QString name = QLatin1String(table.name);
        if (name == QLatin1String("pdtable_119")) {
            EXPECT_FALSE(connection.Tables(schema.Name()).contains(name));
            continue;
        }
        // The same rows: count and a sum over the first column on both sides.
        const QString first = QLatin1String(table.columns.first().name);
        const QString sql = QStringLiteral("SELECT COUNT(*), SUM(LENGTH(CAST(%1 AS TEXT))) FROM %2");
        const fx::Recordset local = db.Read(sql.arg(first, name));
        const fx::Recordset remote = connection.Read(sql.arg(first, schema.Name() + QLatin1Char('.') + name));
        EXPECT_EQ(remote.Value(0, 0).toLongLong(), local.Value(0, 0).toLongLong()) << table.name;
        EXPECT_EQ(remote.Value(0, 1).toLongLong(), local.Value(0, 1).toLongLong()) << table.name;
    }
    const EdgeCase *quotes = FindEdgeCase(cases, QStringLiteral("comment_with_quotes"));
    ASSERT_NE(quotes, nullptr);
    EXPECT_EQ(connection.Read(QStringLiteral("SELECT review_comment FROM %1.pdtable_135 WHERE system_unique_no = %2")
                                  .arg(schema.Name(), quotes->Key(QStringLiteral("system_unique_no")))).Value(0, 0).toString(),
              quotes->Key(QStringLiteral("review_comment")));
    const fx::Recordset ranges = connection.Read(QStringLiteral("SELECT SUM(comp_a_range_x_lo) FROM %1.pdtable_133").arg(schema.Name()));
    EXPECT_DOUBLE_EQ(ranges.Value(0, 0).toDouble(), db.Read(QStringLiteral("SELECT SUM(comp_a_range_x_lo) FROM pdtable_133")).Value(0, 0).toDouble());
}

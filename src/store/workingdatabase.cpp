#include "store/workingdatabase.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/tableimporter.h"
#include "store/messages.h"

#include <QFile>
#include <QThread>

namespace fx {

namespace {

constexpr char kSiteTable[] = "pdtable_119";

} // namespace

QStringList ProjectTableList()
{
    return QStringLiteral("pdtable_131;pdtable_132;pdtable_133;pdtable_134;pdtable_135;pdtable_111;pdtable_112;"
                          "pdtable_113;pdtable_116;pdtable_117;pdtable_119;pdtable_101")
        .split(QLatin1Char(';'));
}

void DBImport2Access(CRIS &cris, const QString &schema, const QString &sql, const QString &database)
{
    Frame("DBImport2Access", [&] {
        LogMessage(msg::ImportingData, {sql, schema});
        // The statements are plain "SELECT * FROM <table>;": the table keeps its name locally.
        const QString table = sql.section(QLatin1Char(' '), 3, 3).remove(QLatin1Char(';'));
        cris.DBImport2Access(database, table, sql, schema);
        LogMessage(msg::DataImported, {});
    });
}

bool IsLocalColumnExists(SqliteDb &db, const QString &table, const QString &column)
{
    SqliteStatement query(db, QStringLiteral("SELECT 1 FROM pragma_table_info(?1) WHERE name = ?2 COLLATE NOCASE"));
    query.Bind(1, table);
    query.Bind(2, column);
    return query.Step();
}

void IndexAllColumns(SqliteDb &db, const QString &table)
{
    Frame("IndexAllColumns", [&] {
        const Recordset columns = db.Read(QStringLiteral("SELECT name FROM pragma_table_info(%1)").arg(DBQuote(table)));
        for (const QVariantList &row : columns.Rows()) {
            const QString column = row.at(0).toString();
            // Index names are the database's, not the table's: CreateIndex qualifies them.
            db.Execute(QStringLiteral("DROP INDEX IF EXISTS ")
                       + BracketName(QStringLiteral("ix_") + table + QLatin1Char('_') + column));
            CreateIndex(db, table, column);
        }
    });
}

void CreateStIndex(SqliteDb &db)
{
    Frame("CreateStIndex", [&] {
        const QList<std::pair<const char *, QStringList>> columns = {
            {"pdtable_111", {QStringLiteral("discipline_indx_no")}},
            {"pdtable_112", {QStringLiteral("discipline_indx_no"), QStringLiteral("area_index_no")}},
            {"pdtable_113",
             {QStringLiteral("discipline_indx_no"), QStringLiteral("area_index_no"), QStringLiteral("model_index_no"),
              QStringLiteral("partition_no"), QStringLiteral("model_no"), QStringLiteral("model_type")}},
            {"pdtable_116", {QStringLiteral("sub_project_ndx_no")}},
            {"pdtable_117", {QStringLiteral("area_index_no"), QStringLiteral("sub_project_ndx_no")}},
            {"pdtable_119", {QStringLiteral("model_index_no"), QStringLiteral("site_id")}},
            {"pdtable_132", {}},
            {"pdtable_133",
             {QStringLiteral("system_unique_no"), QStringLiteral("unique_clash_id"), QStringLiteral("unique_sequence_no")}},
            {"pdtable_134",
             {QStringLiteral("unique_comp_id"), QStringLiteral("comp_table_number"), QStringLiteral("comp_row_number"),
              QStringLiteral("model_index_no")}},
            {"pdtable_135",
             {QStringLiteral("system_unique_no"), QStringLiteral("unique_clash_id"), QStringLiteral("review_date")}},
        };
        for (const auto &[table, names] : columns) {
            const QString name = QString::fromLatin1(table);
            if (names.isEmpty())
                IndexAllColumns(db, name);
            for (const QString &column : names)
                CreateIndex(db, name, column);
        }
        // The planner's figures of the indices: without them it looks a component up by its
        // model number, which thousands share, instead of its own id, and the joins of the
        // working tables take twenty times as long.
        db.Execute(QStringLiteral("ANALYZE;"));
    });
}

void CleanProjectTables(SqliteDb &db)
{
    Frame("CleanProjectTables", [&] {
        const char *statements[] = {
            "DELETE FROM pdtable_132 WHERE (if_approval_status = 99);",
            "DELETE FROM pdtable_133 WHERE (EXISTS (SELECT 1 FROM pdtable_133 AS b WHERE (b.unique_clash_id = "
            "pdtable_133.unique_clash_id AND b.unique_sequence_no > pdtable_133.unique_sequence_no)));",
            "DELETE FROM pdtable_133 WHERE (EXISTS (SELECT 1 FROM pdtable_133 AS pdtable_133_1 WHERE "
            "(pdtable_133_1.unique_clash_id = pdtable_133.unique_clash_id AND pdtable_133_1.system_unique_no > "
            "pdtable_133.system_unique_no)));",
            "DELETE FROM pdtable_134 WHERE (comp_table_number = 0 OR comp_row_number = 0);",
            "DELETE FROM pdtable_135 WHERE (EXISTS (SELECT 1 FROM pdtable_135 AS pdtable_135_1 WHERE "
            "(pdtable_135_1.unique_clash_id = pdtable_135.unique_clash_id AND pdtable_135_1.review_date > "
            "pdtable_135.review_date)));",
            "DELETE FROM pdtable_135 WHERE (EXISTS (SELECT 1 FROM pdtable_135 AS pdtable_135_1 WHERE "
            "(pdtable_135_1.unique_clash_id = pdtable_135.unique_clash_id AND pdtable_135_1.system_unique_no > "
            "pdtable_135.system_unique_no)));",
        };
        for (const char *statement : statements)
            db.Execute(QString::fromLatin1(statement));
    });
}

int SorterThreads()
{
    return std::max(1, QThread::idealThreadCount() - 1);
}

void SetStoreWriteMode(SqliteDb &db, StoreWriteMode mode)
{
    Frame("SetStoreWriteMode", [&] {
        // Helper threads of the sorter, one per further core, sort the runs of a large index build
        // side by side.
        db.Execute(QStringLiteral("PRAGMA threads = %1;").arg(SorterThreads()));
        if (mode == StoreWriteMode::Building)
            db.Execute(QStringLiteral("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;"));
        else
            db.Execute(QStringLiteral("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL;"));
    });
}

void WithJoinCache(SqliteDb &db, const std::function<void()> &work)
{
    Frame("WithJoinCache", [&] {
        const QString own = db.Read(QStringLiteral("PRAGMA cache_size;")).Value(0, 0).toString();
        // 64 MiB: the components and their index at 500,000 clashes, far less than a view's rows.
        db.Execute(QStringLiteral("PRAGMA cache_size = -65536;"));
        try {
            work();
        } catch (...) {
            db.Execute(QStringLiteral("PRAGMA cache_size = ") + own + QLatin1Char(';'));
            throw;
        }
        db.Execute(QStringLiteral("PRAGMA cache_size = ") + own + QLatin1Char(';'));
    });
}

WorkingDatabase::WorkingDatabase(const QString &file)
    : m_db([&] {
          return Frame("WorkingDatabase", [&] {
              QFile::remove(file);
              return SqliteDb(file, SqliteDb::OpenMode::ReadWriteCreate);
          });
      }())
{
}

void WorkingDatabase::ImportProjectTables(CRIS &cris, const QString &project)
{
    Frame("ImportProjectTables", [&] {
        const QString schema = QStringLiteral("pd_") + project;
        for (const QString &table : ProjectTableList()) {
            if (table == QLatin1String(kSiteTable) && !cris.IsTableExists(schema, table))
                continue;
            DBImport2Access(cris, schema, QStringLiteral("SELECT * FROM ") + table + QLatin1Char(';'), m_db.File());
        }
        if (!IsLocalTableExists(m_db, QString::fromLatin1(kSiteTable)))
            m_db.Execute(QStringLiteral("CREATE TABLE pdtable_119 (model_index_no INT, site_id VARCHAR(255));"));
    });
}

} // namespace fx

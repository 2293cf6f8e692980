#pragma once
// CRIS: the one gateway between the program and a project schema, whatever holds it.

#include "pds/recordset.h"
#include "pds/schemaconnection.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace fx {

class SqliteDb;

/// Which database holds the project schema. RIS is reached through its command-line tools,
/// the others through a driver; -1 until a kind is chosen.
enum class DBConType : int { Unset = -1, RIS = 0, Oracle = 1, SQLServer = 2, PostgreSQL = 3, SQLite = 4 };

/// How RISUnload writes rows: fixed-width columns, or free form ("variable data").
enum class RISDumpForm { Fixed, Variable };

/// What rislod does with a table that exists: replace its rows, or create new tables.
enum class RISLoadMode { Clear, New };

/// The gateway to the project schema. One instance for the program (see TheCRIS()).
///
/// Methods raise failures with the source "CRIS::" + method (and "CRIS:DBWrite" with one
/// colon). Kind 0 (RIS) runs the RIS tools and reads their dumps through text files with a
/// Schema.ini; the other kinds use a SchemaConnection.
class CRIS
{
public:
    CRIS();
    CRIS(const CRIS &) = delete;
    CRIS &operator=(const CRIS &) = delete;
    ~CRIS();

    // --- choosing the database (cris.cpp, cris_sql.cpp)
    void SetUseOra(const QString &server, const QString &user, const QString &password);
    void SetUseSQL(const QString &server, const QString &database, const QString &user, const QString &password);
    /// Kind 3: `server` is "host" or "host:port".
    void SetUsePostgreSQL(const QString &server, const QString &database, const QString &user,
                          const QString &password);
    /// Kind 4: every schema is the file `<folder>/<schema>.db`.
    void SetUseSQLite(const QString &folder);
    void SetUseRIS(const QString &risPath = QString());
    DBConType GetDBConType();
    /// Lets go of the schema connection; the next call that needs one opens it anew.
    void CloseConnection();
    QString GetRISPath();
    QString GetTempDir();
    void SetTempDir(const QString &folder = QString());
    void SetRISPath(const QString &path = QString());
    QString GetDBServerName() const { return m_dbServerName; }
    QString GetDBUserName() const { return m_dbUserName; }

    // --- the caller's view, the same for every kind (cris.cpp)
    Recordset DBRead(const QString &schema, const QString &sql);
    void DBWrite(const QString &schema, const QString &sql, bool commit = false);
    QStringList DBGetTables(const QString &schema);
    QList<ColumnDescription> DBGetCols(const QString &schema, const QString &table);
    bool IsTableExists(const QString &schema, const QString &table);
    bool IsColumnExists(const QString &schema, const QString &table, const QString &column);
    /// Runs each batch's statement for its rows, all inside one transaction of the schema: every
    /// change stays, or after any failure none. Gives the rows each batch changed. Kind 0 (RIS)
    /// raises: its tables take changes through rislod.
    QList<qint64> DBWriteBatches(const QString &schema, const QList<StatementBatch> &batches);
    /// Brings the rows of `sql` (a SELECT of one table) into `table` of the local store `database`,
    /// appending when the table exists there, creating it otherwise.
    void DBImport2Access(const QString &database, const QString &table, const QString &sql, const QString &schema);
    /// Turns a query into a text file with its Schema.ini entry; gives the file and, in
    /// `rewrittenSql`, the query over it.
    QString Extract2File(const QString &sql, const QString &schema, QString *rewrittenSql);

    bool ORAConnTest(const QString &server, const QString &user, const QString &password);
    bool SQLConnTest(const QString &server, const QString &database, const QString &user, const QString &password);
    void SetLanguageSettings();
    void RestoreLanguageSettings();

    // --- the RIS tools (cris_ristools.cpp)
    static QString FindRISPath();
    QStringList RISGetSchemas(bool filter = true);
    QString RISGetSchemaFilePath();
    QStringList RISGetTables(const QString &schema);
    QList<ColumnDescription> RISGetCols(const QString &schema, const QString &table);
    /// Loads `tables` ("all" or names separated by ";") of a dump into the schema; with no
    /// schema or "all", the dump's own schema. The tool's log goes to `logFile` when given.
    void RISLoad(const QString &dumpFile, const QString &schema, const QString &tables = QStringLiteral("all"),
                 RISLoadMode mode = RISLoadMode::Clear, int commitInterval = 100,
                 const QString &logFile = QString(), bool indexesAndGrants = true);
    /// Unloads `tables` (names separated by ";", empty for all) with their data into a new
    /// dump file in `targetFolder`, or into `dumpFile` when given; gives the dump's path. With
    /// `indexesAndGrants`, the views, indexes and grants go into the dump too.
    QString RISUnload(const QString &schema, const QString &targetFolder, const QString &tables = QString(),
                      const QString &where = QString(), RISDumpForm form = RISDumpForm::Fixed,
                      bool withData = true, const QString &dumpFile = QString(), bool indexesAndGrants = false);
    void RISClean(const QString &schema);
    /// Creates one schema for each of `schemas` with the user and password at the same place;
    /// `dbType` is "ORACLE" or "MSSQL".
    void RISCreateSchema(const QStringList &schemas, const QString &dbType, const QString &database,
                         const QString &server, const QString &host, const QString &folder,
                         const QStringList &users, const QStringList &passwords);
    void RISDropSchema(const QStringList &schemas);
    bool IsRISSchemaExists(const QString &schema);
    /// Raises the first error block of a tool's output; returns when there is none.
    static void RISGetError(const QString &outputFile);

    // --- RIS dumps (cris_dump.cpp)
    QStringList RISDumpGetSchemas(const QString &dumpFile);
    QStringList RISDumpGetTables(const QString &dumpFile, const QString &schema);
    /// Writes `tables` (names separated by ";") of the local store `database` as a free-form dump
    /// that rislod accepts; `where` filters rows. Gives the dump's path.
    QString RISDumpCreate(const QString &targetFolder, const QString &database, const QString &schema,
                          const QString &tables, const QString &where = QString(),
                          const QString &dumpFile = QString());
    Recordset RISDumpRead(const QString &dumpFile, const QString &schema, const QString &sql);
    void RISDumpImport2Access(const QString &dumpFile, const QString &schema, const QString &database,
                              const QString &table, const QString &sql);
    /// Copies a dump to `target` with each name of `names` replaced by the one at the same
    /// place of `newNames` (a schema or a table renamed).
    void RISTableCopy(const QString &dumpFile, const QString &target, const QStringList &names,
                      const QStringList &newNames);
    /// Writes the table's rows as a text file in the temporary folder with its Schema.ini entry;
    /// gives the text file. With `replaceNull`, the NULL number "-32768" becomes 0.
    QString RISDumpParse(const QString &dumpFile, const QString &schema, const QString &table, bool replaceNull = false);

    // --- the statement builders of the database users (cris_sql.cpp)
    QStringList ORACreateUserStatements(const QString &user, const QString &password, const QString &tablespace,
                                        const QString &tempTablespace) const;
    void ORACreateUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                       const QStringList &users, const QStringList &passwords, const QString &tablespace,
                       const QString &tempTablespace);
    void ORADropUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                     const QString &user);
    bool IsORAUserExists(const QString &server, const QString &adminUser, const QString &adminPassword,
                         const QString &user);
    QStringList SQLCreateUserStatements(const QString &user, const QString &password, const QString &database) const;
    void SQLCreateUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                       const QStringList &users, const QStringList &passwords, const QString &database);
    void SQLDropUser(const QString &server, const QString &adminUser, const QString &adminPassword,
                     const QString &user);
    bool IsSQLUserExists(const QString &server, const QString &adminUser, const QString &adminPassword,
                         const QString &user);

    // --- the lists of the options dialog (cris_serverlists.cpp)
    /// The net service names of the tnsnames.ora found through TNS_ADMIN, else
    /// ORACLE_HOME/network/admin; empty when there is none.
    QStringList GetTNSNames();
    /// The SQL Server aliases registered for the client on this machine.
    QStringList GetRegisteredSQLServers();
    /// The databases of a SQL Server, read through a login to its master database.
    QStringList GetSQLServerDatabases(const QString &server, const QString &user, const QString &password);

private:
    // Kind 0 pieces (cris.cpp, cris_ristools.cpp)
    void RISWrite(const QString &schema, const QString &sql, bool commit);
    void ADOWrite(const QString &schema, const QString &sql, bool commit);
    /// Runs risbatch on `statements` (already ended by "quit;"); gives the tool's output text.
    QString RunRISBatch(const QString &statements, bool checkErrors = true);
    QString ToolPath(const char *tool);
    void ImportTextTable(const QString &textFile, const QString &rewrittenSql, const QString &database,
                         const QString &table);
    Recordset ReadTextTable(const QString &textFile, const QString &rewrittenSql);

    // Kinds 1 to 4 (cris_sql.cpp)
    SchemaConnection &Connection();
    QString ADOUnloadAndParse(const QString &sql, const QString &schema);

    DBConType m_dbConType = DBConType::Unset;
    QString m_tempDir;
    QString m_risPath;
    std::unique_ptr<SchemaConnection> m_connection;
    QString m_dbServerName;
    QString m_dbUserName;
    QString m_sDecimal;
    QString m_sThousand;
    bool m_languageSaved = false;
};

/// The program's one gateway.
CRIS &TheCRIS();

/// Splits a SELECT into the table after FROM and the text after the table: the table runs from
/// after "FROM" to the first blank, else the first ";", else the end.
struct ParsedSQL
{
    QString table;
    QString rest;
};
ParsedSQL ParseSQL(const QString &sql);

struct RISDumpColumn;
/// A dump column as the catalog would describe it: its declared type and the ADO type it maps to.
ColumnDescription DescribeRISColumn(const RISDumpColumn &column);

/// The checks of a read through RIS: a schema, a statement, and nothing but a SELECT.
void CheckRISSelect(const QString &schema, const QString &sql);

/// The net service names defined in a tnsnames.ora text, following its IFILE includes.
QStringList TNSNamesOfFile(const QString &file);

/// The connection string of a SQL Server login to its master database.
QString SQLServerAdminString(const QString &server, const QString &user, const QString &password);

/// The query that lists the databases of a SQL Server, by name.
QString SQLServerDatabasesQuery();

/// A schema, table or user name as RIS takes it, bare in its statements and on the tools'
/// command lines: letters, digits, "_", "#" and "." only, else raises.
QString RISName(const QString &name);

/// The statement risbatch runs to create one schema on an Oracle or SQL Server database.
QString RISCreateSchemaStatement(const QString &schema, const QString &dbType, const QString &database,
                                 const QString &server, const QString &host, const QString &folder,
                                 const QString &user, const QString &password);

} // namespace fx

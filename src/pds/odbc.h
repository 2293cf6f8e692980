#pragma once
// A small RAII wrapper over the ODBC C API: the SQL kinds of the project schema use it.

#include "pds/recordset.h"
#include "pds/schemaconnection.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

namespace fx {

/// Takes the password of a connection string out of a text that may echo it: "Pwd=..." and
/// "Password=..." lose their value, and the bare value (when longer than 3 characters, so as
/// not to blank ordinary words) becomes "*****".
QString BlankPassword(const QString &text, const QString &connectionString);

/// One value of a connection string, in braces when it holds what would end it early.
QString OdbcConnectionValue(const QString &value);

/// The ADO type number of an ODBC SQL type (`unsignedType` for the unsigned integers).
int AdoTypeOfOdbcType(int sqlType, bool unsignedType = false);

class OdbcConnection;

/// A statement handle of a connection; freed when it goes.
class OdbcStatement
{
public:
    explicit OdbcStatement(OdbcConnection &connection);
    OdbcStatement(const OdbcStatement &) = delete;
    OdbcStatement &operator=(const OdbcStatement &) = delete;
    ~OdbcStatement();

    /// Runs `sql`; raises with the driver's diagnostics.
    void Execute(const QString &sql);
    /// Lists the tables of `schema` (all kinds of "TABLE"), as SQLTables does.
    void ExecuteTables(const QString &schema);
    /// Lists the columns of `schema`.`table`, as SQLColumns does.
    void ExecuteColumns(const QString &schema, const QString &table);
    /// Prepares `sql`, a statement with "?" markers, for ExecutePrepared.
    void Prepare(const QString &sql);
    /// Runs the prepared statement with `values` bound to its markers in order: integers, reals
    /// and texts as such, NULL as the marker's own type; gives the rows it changed.
    qint64 ExecutePrepared(const QVariantList &values);

    /// The fields of the current result (none after a statement without rows).
    const QList<RecordsetField> &Fields() const { return m_fields; }
    /// Appends up to `maxRows` rows to `rows`; false once the result is used up.
    bool Fetch(int maxRows, QList<QVariantList> &rows);

private:
    void Check(short rc, const char *call, const QString &sql = QString()) const;
    void Describe();
    /// The SQL type of a marker as the driver describes it; text when it can't tell.
    short MarkerType(unsigned short marker);
    QVariant Value(int column);

    OdbcConnection &m_connection;
    void *m_stmt = nullptr;
    QList<RecordsetField> m_fields;
    QList<short> m_sqlTypes;
    QHash<unsigned short, short> m_markerTypes;
    QString m_sql;
    bool m_done = false;
};

/// An open ODBC connection (with its own environment), in auto-commit as ADO leaves it;
/// disconnected when it goes.
class OdbcConnection
{
public:
    /// Connects with a driver connection string; a failure's text never holds the password.
    explicit OdbcConnection(const QString &connectionString);
    OdbcConnection(const OdbcConnection &) = delete;
    OdbcConnection &operator=(const OdbcConnection &) = delete;
    ~OdbcConnection();

    /// Runs one statement that returns no rows.
    void Execute(const QString &sql);
    /// Runs a query into an in-memory result.
    Recordset Read(const QString &sql);
    /// Switches committing each statement on its own on or off; off starts a transaction.
    void SetAutoCommit(bool on);
    /// Ends the open transaction, keeping its changes or undoing them.
    void EndTransaction(bool commit);
    /// Runs a query; hands its fields once, then its rows in slices of at most `sliceRows`.
    void ReadInSlices(const QString &sql, int sliceRows,
                      const std::function<void(const QList<RecordsetField> &)> &onFields,
                      const std::function<void(const QList<QVariantList> &)> &onSlice);
    /// The names of the tables of `schema`, in the catalog's order.
    QStringList Tables(const QString &schema);
    /// The columns of a table of `schema` in their order; empty when the table is missing.
    QList<ColumnDescription> Columns(const QString &schema, const QString &table);

    void *Handle() const { return m_dbc; }
    /// `text` with the wildcards of catalog patterns escaped for this driver.
    QString EscapePattern(const QString &text) const;

private:
    void *m_env = nullptr;
    void *m_dbc = nullptr;
    bool m_connected = false;
    QString m_patternEscape;
};

} // namespace fx

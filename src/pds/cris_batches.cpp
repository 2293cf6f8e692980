// CRIS: statements with their rows written to a project schema of the SQL kinds in one
// transaction, so that a failure, or a process that dies half-way, leaves the schema as it was.

#include "pds/cris.h"

#include "frame/failure.h"
#include "pds/messages.h"

namespace fx {

namespace {

// The open transaction of a schema connection, undone when it goes without Commit().
class SchemaTransaction
{
public:
    explicit SchemaTransaction(SchemaConnection &connection)
        : m_connection(connection)
    {
        m_connection.Begin();
    }
    SchemaTransaction(const SchemaTransaction &) = delete;
    SchemaTransaction &operator=(const SchemaTransaction &) = delete;
    ~SchemaTransaction()
    {
        if (!m_open)
            return;
        // The failure on its way up tells what went wrong; a failed undo must not replace it.
        try {
            m_connection.Rollback();
        } catch (const std::exception &) {
        }
    }
    void Commit()
    {
        m_connection.Commit();
        m_open = false;
    }

private:
    SchemaConnection &m_connection;
    bool m_open = true;
};

} // namespace

QList<qint64> CRIS::DBWriteBatches(const QString &schema, const QList<StatementBatch> &batches)
{
    return Frame("CRIS::DBWriteBatches", [&] {
        if (GetDBConType() == DBConType::RIS)
            Raise(msg::RisSchemaWithoutTransactions);
        SchemaConnection &connection = Connection();
        connection.UseSchema(schema, true);
        QList<qint64> changed;
        SchemaTransaction transaction(connection);
        for (const StatementBatch &batch : batches) {
            if (batch.sql.trimmed().isEmpty())
                Raise(msg::SqlNotDefined);
            changed << connection.ExecuteBatch(batch.sql, batch.rows);
        }
        transaction.Commit();
        return changed;
    });
}

} // namespace fx

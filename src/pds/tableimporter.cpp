#include "pds/tableimporter.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "pds/adotypes.h"
#include "pds/messages.h"

namespace fx {

bool IsLocalTableExists(SqliteDb &db, const QString &table)
{
    SqliteStatement query(db, QStringLiteral("SELECT 1 FROM sqlite_master WHERE type IN ('table','view') "
                                             "AND name = ?1 COLLATE NOCASE"));
    query.Bind(1, table);
    return query.Step();
}

QString BracketName(const QString &name)
{
    if (!name.contains(QLatin1Char(']')))
        return QLatin1Char('[') + name + QLatin1Char(']');
    // SQLite's brackets have no escape for "]"; its standard double quotes have one.
    QString escaped = name;
    escaped.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

TableImporter::TableImporter(SqliteDb &db, const QString &table, const QList<RecordsetField> &fields)
    : m_db(db)
{
    m_tableExisted = IsLocalTableExists(db, table);
    if (m_tableExisted) {
        m_columnCount = db.Read(QStringLiteral("SELECT * FROM ") + BracketName(table) + QStringLiteral(" WHERE 1 = 0"))
                            .FieldCount();
    } else {
        QStringList columns;
        for (const RecordsetField &field : fields)
            columns << BracketName(field.name) + QLatin1Char(' ') + DeclaredTypeOfAdoType(field.type, field.definedSize);
        db.Execute(QStringLiteral("CREATE TABLE ") + BracketName(table) + QStringLiteral(" (") + columns.join(QStringLiteral(", "))
                   + QLatin1Char(')'));
        m_columnCount = int(fields.size());
    }
    QStringList marks;
    for (int i = 1; i <= m_columnCount; ++i)
        marks << QLatin1Char('?') + QString::number(i);
    m_insert.emplace(db, QStringLiteral("INSERT INTO ") + BracketName(table) + QStringLiteral(" VALUES (")
                             + marks.join(QStringLiteral(", ")) + QLatin1Char(')'));
}

TableImporter::~TableImporter() = default;

void TableImporter::BeginSlice()
{
    m_slice = std::make_unique<SqliteTransaction>(m_db);
    m_inSlice = 0;
}

void TableImporter::AddRow(const QVariantList &row)
{
    if (!m_slice)
        BeginSlice();
    // As INSERT ... SELECT * does: values by position; missing ones are NULL, extra ones fail.
    if (row.size() > m_columnCount)
        Raise(msg::RowWidthMismatch, {QString::number(row.size()), QString::number(m_columnCount)});
    for (int i = 0; i < m_columnCount; ++i)
        m_insert->Bind(i + 1, i < row.size() ? row.at(i) : QVariant());
    m_insert->Step();
    m_insert->Reset();
    ++m_rows;
    if (++m_inSlice >= kSliceRows) {
        m_slice->Commit();
        m_slice.reset();
        DoEventsIfInput();
    }
}

void TableImporter::Finish()
{
    if (m_slice) {
        m_slice->Commit();
        m_slice.reset();
    }
}

} // namespace fx

#include "pds/queryimport.h"

#include "frame/failure.h"
#include "pds/tableimporter.h"

#include <QDateTime>

#include <optional>

namespace fx {

namespace {

QVariant StoreValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("yyyy-MM-dd 00:00:00"));
    case QMetaType::QTime:
        return value.toTime().toString(QStringLiteral("HH:mm:ss"));
    default:
        return value;
    }
}

} // namespace

void ImportQueryInto(SchemaConnection &connection, const QString &sql, SqliteDb &store, const QString &table)
{
    Frame("ImportQueryInto", [&] {
        std::optional<TableImporter> importer;
        connection.ReadInSlices(
            sql, TableImporter::kSliceRows,
            [&](const QList<RecordsetField> &fields) { importer.emplace(store, table, fields); },
            [&](const QList<QVariantList> &rows) {
                QVariantList values;
                for (const QVariantList &row : rows) {
                    values.clear();
                    for (const QVariant &value : row)
                        values.append(StoreValue(value));
                    importer->AddRow(values);
                }
            });
        if (importer)
            importer->Finish();
    });
}

} // namespace fx

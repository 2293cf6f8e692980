#include "pds/queryimport.h"

#include "frame/failure.h"
#include "pds/tableimporter.h"

#include <QDateTime>

#include <optional>

namespace fx {

void ImportQueryInto(SchemaConnection &connection, const QString &sql, SqliteDb &store, const QString &table)
{
    Frame("ImportQueryInto", [&] {
        std::optional<TableImporter> importer;
        connection.ReadInSlices(
            sql, TableImporter::kSliceRows,
            [&](const QList<RecordsetField> &fields) { importer.emplace(store, table, fields); },
            [&](const QList<QVariantList> &rows) {
                for (const QVariantList &row : rows)
                    importer->AddRow(row);
            });
        if (importer)
            importer->Finish();
    });
}

} // namespace fx

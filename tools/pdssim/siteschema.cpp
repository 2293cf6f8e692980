#include "pdssim/siteschema.h"

#include "pdssim/schemapostgres.h"

#include "frame/failure.h"

namespace pdssim {

QList<EdgeCase> BuildSiteSchema(const SiteLayout &layout, const SchemaOptions &options, SchemaKind kind,
                                const QString &connectionString)
{
    return fx::Frame("BuildSiteSchema", [&] {
        const QString folder = kind == SchemaKind::Ris ? layout.RisSchemaDir() : layout.SqliteSchemaDir();
        const QString file = SchemaFile(folder, options.project);
        QList<EdgeCase> cases = GenerateSchema(options, file);
        if (kind == SchemaKind::PostgreSQL)
            LoadSchemaIntoPostgreSQL(file, connectionString, QStringLiteral("pd_") + options.project);
        return cases;
    });
}

} // namespace pdssim

// pdssim site: one whole simulated PDS site, put together from its pieces.

#include "pdssim/commands.h"

#include "frame/failure.h"
#include "pds/odbcschemaconnection.h"
#include "pds/sqlitedb.h"
#include "pds/sqlstatements.h"
#include "pdssim/edgemanifest.h"
#include "pdssim/projectfiles.h"
#include "pdssim/rissite.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitefiles.h"
#include "pdssim/sitemessages.h"
#include "pdssim/siteschema.h"
#include "pdssim/siteserver.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

namespace pdssim {

namespace {

int LockOwnerWidth(const QString &text)
{
    bool ok = false;
    const int width = text.toInt(&ok);
    if (!ok || width < 1 || width > 240)
        fx::Raise(sitemsg::SimLockOwnerWidthOutOfRange, {text});
    return width;
}

int ModelCount(const QString &text)
{
    bool ok = false;
    const int count = text.toInt(&ok);
    if (!ok || count < kMinModels || count > kMaxModels)
        fx::Raise(sitemsg::SimModelCountOutOfRange, {text, QString::number(kMinModels), QString::number(kMaxModels)});
    return count;
}

SiteOptions ParseSiteArguments(QStringList args)
{
    SiteOptions options;
    auto value = [&](const QString &option) {
        if (args.isEmpty())
            fx::Raise(sitemsg::SimOptionWithoutValue, {option});
        return args.takeFirst();
    };
    while (!args.isEmpty()) {
        const QString arg = args.takeFirst();
        if (arg == QLatin1String("--project"))
            options.project = value(arg);
        else if (arg == QLatin1String("--clashes"))
            options.clashes = value(arg).toLongLong();
        else if (arg == QLatin1String("--seed"))
            options.seed = value(arg).toULongLong();
        else if (arg == QLatin1String("--kind"))
            options.kind = value(arg);
        else if (arg == QLatin1String("--edge"))
            options.edge = true;
        else if (arg == QLatin1String("--lock-owner-width"))
            options.lockOwnerWidth = LockOwnerWidth(value(arg));
        else if (arg == QLatin1String("--models"))
            options.models = ModelCount(value(arg));
        else if (arg.startsWith(QLatin1String("--")) || !options.root.isEmpty())
            fx::Raise(sitemsg::SimUnknownArgument, {arg});
        else
            options.root = arg;
    }
    if (options.root.isEmpty() || options.project.isEmpty())
        fx::Raise(sitemsg::SimSiteArgumentsMissing);
    return options;
}

// The models of the generated schema, as pdtable_113 places their files.
QList<SiteModel> SchemaModels(const QString &schemaFile)
{
    fx::SqliteDb db(schemaFile, fx::SqliteDb::OpenMode::ReadOnly);
    const fx::Recordset rows =
        db.Read(QStringLiteral("SELECT model_no, path_name, model_file_spec FROM pdtable_113 ORDER BY model_index_no"));
    QList<SiteModel> models;
    for (const QVariantList &row : rows.Rows())
        models.append({row.at(0).toString().trimmed(), row.at(1).toString().trimmed(), row.at(2).toString().trimmed(), {}});
    return models;
}

} // namespace

void BuildSite(const SiteOptions &options)
{
    fx::Frame("BuildSite", [&] {
        const SiteLayout layout(options.root);
        QDir().mkpath(layout.Root());

        SchemaKind kind = SchemaKind::Sqlite;
        QString connection;
        if (options.kind == QLatin1String("ris"))
            kind = SchemaKind::Ris;
        else if (options.kind.startsWith(QLatin1String("postgres=")))
        {
            kind = SchemaKind::PostgreSQL;
            const PostgresSite server = ParsePostgresKind(options.kind);
            connection = fx::PostgreSQLConnectionString(fx::ConfiguredOdbcDriver(fx::configkey::PostgreSQLDriver),
                                                        server.Server(), server.database, server.user, server.password);
        }
        else if (options.kind != QLatin1String("sqlite"))
            fx::Raise(sitemsg::SimUnknownDatabaseKind, {options.kind});

        const DgnSettings dgn;
        SchemaOptions schema;
        schema.project = options.project;
        schema.clashes = options.clashes;
        schema.seed = options.seed;
        schema.networkAddress = SiteServer();
        schema.projectPath = ServerPath(layout, layout.ProjectDir(options.project));
        schema.seedFileSpec = ProjectSeedFileName(options.project);
        schema.uorPerMaster = qint64(dgn.subPerMaster) * dgn.uorPerSub;
        schema.edge = options.edge;
        schema.lockOwnerWidth = options.lockOwnerWidth;
        schema.models = options.models;
        const QList<EdgeCase> cases = BuildSiteSchema(layout, schema, kind, connection);
        const QString schemaName = QStringLiteral("pd_") + options.project;
        if (kind == SchemaKind::Ris)
            AddRisSchema(layout, schemaName);
        WriteManifest(layout.ManifestFile(), cases);

        WriteSiteFiles(layout, {options.project, options.kind, options.edge, dgn});
        const QString schemaFile =
            SchemaFile(kind == SchemaKind::Ris ? layout.RisSchemaDir() : layout.SqliteSchemaDir(), options.project);
        WriteModelFiles(layout, SchemaModels(schemaFile), dgn);
        WriteRisToolWrappers(layout, options.pdssimExecutable.isEmpty() ? QCoreApplication::applicationFilePath()
                                                                        : options.pdssimExecutable);
    });
}

int RunSite(const QStringList &args)
{
    const SiteOptions options = ParseSiteArguments(args);
    BuildSite(options);
    std::printf("Site of project %s with %lld clashes (%s) in %s\n", qPrintable(options.project),
                static_cast<long long>(options.clashes), qPrintable(options.kind), qPrintable(SiteLayout(options.root).Root()));
    return 0;
}

int RunInstall(const QStringList &args)
{
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: pdssim install SITE_DIR PROGRAM_DIR\n");
        return 2;
    }
    const SiteLayout layout(args.at(0));
    InstallSiteConfig(layout, args.at(1));
    std::printf("Site %s installed into the program folder %s\n", qPrintable(layout.Root()), qPrintable(args.at(1)));
    return 0;
}

} // namespace pdssim

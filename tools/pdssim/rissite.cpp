#include "pdssim/rissite.h"

#include "frame/execa.h"

#include "frame/failure.h"
#include "pdssim/rismessages.h"
#include "pds/localdb.h"
#include "pds/sqlitedb.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace pdssim {

namespace {

constexpr const char *kTools[] = {"risbatch", "risunlod", "rislod", "risclnsr"};

void WriteSchemaFile(const SiteLayout &site, const QStringList &names)
{
    QSaveFile file(site.RisSchemaFile());
    QByteArray text;
    for (const QString &name : names)
        text += name.toUtf8() + '\n';
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        fx::Raise(rismsg::CannotOpenFile, {site.RisSchemaFile()});
}

} // namespace

SiteLayout TakeSite(QStringList &args)
{
    if (args.size() < 2 || args.first() != QLatin1String("--site"))
        fx::Raise(rismsg::Usage, {QStringLiteral("<tool>"), QStringLiteral("...")});
    const SiteLayout site(args.at(1));
    args.remove(0, 2);
    return site;
}

QHash<QChar, QString> TakeOptions(QStringList &args, const QString &letters, const QString &usage)
{
    QHash<QChar, QString> options;
    while (!args.isEmpty() && args.first().size() >= 2 && args.first().startsWith(QLatin1Char('-'))) {
        const QString option = args.takeFirst();
        const QChar letter = option.at(1);
        if (!letters.contains(letter))
            fx::Raise(usage);
        if (option.size() > 2)
            options.insert(letter, option.mid(2));
        else if (!args.isEmpty())
            options.insert(letter, args.takeFirst());
        else
            fx::Raise(usage);
    }
    return options;
}

RisTableRequest ParseTableRequest(const QStringList &words, const QString &usage)
{
    RisTableRequest request;
    qsizetype i = 0;
    auto word = [&](const char *expected) {
        if (i < words.size() && words.at(i).compare(QLatin1String(expected), Qt::CaseInsensitive) == 0) {
            ++i;
            return true;
        }
        return false;
    };
    if (!word("table"))
        fx::Raise(usage);
    if (word("with")) {
        request.variable = word("variable") || word("var");
        if (!word("data"))
            fx::Raise(usage);
        request.withData = true;
    }
    bool all = false;
    for (; i < words.size(); ++i) {
        const QString item = words.at(i);
        const QString lower = item.toLower();
        if (lower == QLatin1String("view") || lower == QLatin1String("index") || lower == QLatin1String("grant"))
            break;
        if (lower == QLatin1String("all"))
            all = true;
        else
            request.items << item;
    }
    for (; i < words.size(); ++i) {
        const QString lower = words.at(i).toLower();
        if (lower == QLatin1String("index"))
            request.indexes = true;
        else if (lower == QLatin1String("grant"))
            request.grants = true;
        else if (lower != QLatin1String("view") && lower != QLatin1String("all"))
            fx::Raise(usage);
    }
    if (all || request.items.isEmpty())
        request.items.clear();
    return request;
}

bool IsToolMissing(const char *tool)
{
    const QStringList missing =
        QString::fromLocal8Bit(qgetenv("PDSSIM_MISSING_TOOLS")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &name : missing) {
        if (name.trimmed() == QLatin1String(tool))
            return true;
    }
    return false;
}

QStringList RisSchemaNames(const SiteLayout &site)
{
    QFile file(site.RisSchemaFile());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QString name = QString::fromUtf8(line).trimmed();
        if (!name.isEmpty())
            names << name;
    }
    return names;
}

QString KnownRisSchema(const SiteLayout &site, const QString &schema)
{
    for (const QString &name : RisSchemaNames(site)) {
        if (name.compare(schema.trimmed(), Qt::CaseInsensitive) == 0)
            return QFile::exists(RisSchemaDatabase(site, name)) ? name : QString();
    }
    return QString();
}

QString RisSchemaDatabase(const SiteLayout &site, const QString &knownSchema)
{
    return site.RisSchemaDir() + knownSchema + QStringLiteral(".db");
}

void AddRisSchema(const SiteLayout &site, const QString &schema)
{
    QDir().mkpath(site.RisSchemaDir());
    const fx::SqliteDb created(RisSchemaDatabase(site, schema), fx::SqliteDb::OpenMode::ReadWriteCreate);
    QStringList names = RisSchemaNames(site);
    if (!names.contains(schema, Qt::CaseInsensitive))
        WriteSchemaFile(site, names << schema);
}

void RemoveRisSchema(const SiteLayout &site, const QString &knownSchema)
{
    QStringList names = RisSchemaNames(site);
    names.removeIf([&](const QString &name) { return name.compare(knownSchema, Qt::CaseInsensitive) == 0; });
    WriteSchemaFile(site, names);
    QFile::remove(RisSchemaDatabase(site, knownSchema));
}

QStringList RisTables(fx::SqliteDb &db)
{
    const fx::Recordset rows = db.Read(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name"));
    QStringList tables;
    for (const QVariantList &row : rows.Rows())
        tables << row.at(0).toString();
    return tables;
}

QString RisTableName(fx::SqliteDb &db, const QString &table)
{
    for (const QString &name : RisTables(db)) {
        if (name.compare(table, Qt::CaseInsensitive) == 0)
            return name;
    }
    return QString();
}

QList<RisColumn> RisTableColumns(fx::SqliteDb &db, const QString &table)
{
    const fx::Recordset rows =
        db.Read(QStringLiteral("SELECT name, type, \"notnull\" FROM pragma_table_info(%1) ORDER BY cid")
                    .arg(fx::DBQuote(table)));
    QList<RisColumn> columns;
    for (const QVariantList &row : rows.Rows())
        columns << RisColumn{row.at(0).toString(), row.at(1).toString().simplified().toLower(), row.at(2).toInt() != 0};
    return columns;
}

QStringList RisIndexStatements(fx::SqliteDb &db, const QString &table)
{
    // Only indexes made by CREATE INDEX: those of constraints have no statement to give again.
    const fx::Recordset indexes = db.Read(
        QStringLiteral("SELECT name, \"unique\" FROM pragma_index_list(%1) WHERE origin = 'c' ORDER BY name")
            .arg(fx::DBQuote(table)));
    QStringList statements;
    for (const QVariantList &index : indexes.Rows()) {
        const fx::Recordset columns =
            db.Read(QStringLiteral("SELECT name FROM pragma_index_info(%1) ORDER BY seqno").arg(fx::DBQuote(index.at(0).toString())));
        QStringList names;
        for (const QVariantList &column : columns.Rows())
            names << column.at(0).toString();
        statements << QStringLiteral("create %1index %2 on %3 (%4)")
                          .arg(index.at(1).toInt() != 0 ? QStringLiteral("unique ") : QString(),
                               index.at(0).toString(), table, names.join(QStringLiteral(", ")));
    }
    return statements;
}

QString SqlName(const QString &name)
{
    QString quoted = name;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

void WriteRisToolWrappers(const SiteLayout &site, const QString &pdssimExecutable)
{
    QDir().mkpath(site.RisBinDir());
    for (const char *tool : kTools) {
        const QString path = site.RisBinDir() + QString::fromLatin1(tool);
        const QString script = QStringLiteral("#!/bin/sh\nexec %1 %2 --site %3 \"$@\"\n")
                                   .arg(fx::ShellQuote(pdssimExecutable), QString::fromLatin1(tool),
                                        fx::ShellQuote(site.Root()));
        QSaveFile file(path);
        const QByteArray text = script.toLocal8Bit();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
            fx::Raise(rismsg::CannotOpenFile, {path});
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                                        | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
    }
}

} // namespace pdssim

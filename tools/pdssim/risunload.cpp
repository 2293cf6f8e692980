// risunlod: writes tables of a schema into a dump, in the fixed or the free form, and prints
// what it unloaded. Errors go as error boxes into the file of -f; the dump is opened first, so
// it exists (maybe empty) whatever fails after.

#include "pdssim/commands.h"

#include "frame/failure.h"
#include "pdssim/riserror.h"
#include "pdssim/rismessages.h"
#include "pdssim/rissite.h"
#include "pdssim/ristypes.h"
#include "pds/risdumpreader.h"
#include "pds/sqlitedb.h"

#include <QFile>

#include <cstdio>
#include <optional>

namespace pdssim {

namespace {

const QString kUsage = RisText(rismsg::Usage, {QStringLiteral("risunlod"),
    QStringLiteral("-m w -o dump -f log -s schema table [with [variable] data] t1 ...|all [view all] [index] [grant]")});

QByteArray Line(const QString &text)
{
    return text.toUtf8() + '\n';
}

// One table into the dump; gives the rows written, or -1 after an error put into `log`.
qint64 UnloadTable(fx::SqliteDb &db, const QString &item, const RisTableRequest &request, QFile &dump, QFile &log)
{
    const qsizetype where = item.indexOf(QLatin1String(" where "), 0, Qt::CaseInsensitive);
    const QString asked = where < 0 ? item.trimmed() : item.left(where).trimmed();
    const QString table = RisTableName(db, asked);
    if (table.isEmpty()) {
        log.write(RisErrorBox({RisErrorKind::UnknownRelation, item, 0, {}, {}}).toUtf8());
        return -1;
    }
    const QList<RisColumn> columns = RisTableColumns(db, table);
    QStringList names, definitions, marks;
    QList<RisType> types;
    for (const RisColumn &column : columns) {
        names << column.name;
        definitions << column.name + QLatin1Char(' ') + column.type + (column.notNull ? QStringLiteral(" not null") : QString());
        marks << QStringLiteral("?");
        types << RisType::Of(column.type);
    }
    const QString select = QStringLiteral("SELECT * FROM ") + SqlName(table)
                           + (where < 0 ? QString() : QStringLiteral(" WHERE ") + item.mid(where + 7));
    std::optional<fx::SqliteStatement> rows;
    if (request.withData) {
        try {
            rows.emplace(db, select);
        } catch (const fx::Failure &) {
            log.write(RisErrorBox(RisErrorOfSqlite(db.Handle(), select)).toUtf8());
            return -1;
        }
    }

    QByteArray out = Line(QStringLiteral("create table %1 (%2)").arg(table, definitions.join(QStringLiteral(", "))));
    qint64 count = 0;
    if (rows) {
        out += Line(QStringLiteral("insert into %1 (%2) values (%3)")
                        .arg(table, names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))));
        if (request.variable) {
            out += Line(QString::fromLatin1(fx::kRISVariable) + QLatin1Char(' ') + names.join(QLatin1Char(' ')));
        } else {
            QString positions;
            int start = 1;
            for (qsizetype i = 0; i < columns.size(); ++i) {
                const int end = start + types.at(i).FixedWidth() - 1;
                positions += QStringLiteral("%1 %2 %3 ").arg(names.at(i)).arg(start).arg(end);
                start = end + 2;
            }
            out += Line(positions);
        }
        while (rows->Step()) {
            for (qsizetype i = 0; i < columns.size(); ++i) {
                const QVariant value = rows->Column(int(i));
                // A NULL is two blanks in the free form: the value's own and one more.
                out += request.variable ? (value.isNull() ? QByteArray(" ") : types.at(i).FreeValue(value))
                                        : types.at(i).FixedField(value);
                out += ' ';
            }
            out += '\n';
            ++count;
            if (out.size() > (1 << 20)) {
                dump.write(out);
                out.clear();
            }
        }
    }
    if (request.indexes) {
        for (const QString &statement : RisIndexStatements(db, table))
            out += Line(statement);
    }
    if (request.grants)
        out += Line(QStringLiteral("grant select, insert, delete, update on %1 to PUBLIC").arg(table));
    out += Line(QString::fromLatin1(fx::kRISEndOfTable));
    dump.write(out);
    return count;
}

} // namespace

int RunRisUnload(const QStringList &arguments)
{
    if (IsToolMissing("risunlod"))
        return 127;
    QStringList args = arguments;
    const SiteLayout site = TakeSite(args);
    const QHash<QChar, QString> options = TakeOptions(args, QStringLiteral("mofs"), kUsage);
    const RisTableRequest request = ParseTableRequest(args, kUsage);
    const QString mode = options.value(QLatin1Char('m'), QStringLiteral("w"));
    QFile dump(options.value(QLatin1Char('o')));
    QFile log(options.value(QLatin1Char('f')));
    if (!dump.open(QIODevice::WriteOnly | (mode == QLatin1String("a") ? QIODevice::Append : QIODevice::Truncate)))
        fx::Raise(rismsg::CannotOpenFile, {dump.fileName()});
    if (!log.open(QIODevice::WriteOnly | QIODevice::Truncate))
        fx::Raise(rismsg::CannotOpenFile, {log.fileName()});

    const QString schema = options.value(QLatin1Char('s')).section(QLatin1Char('.'), 0, 0);
    const QString known = KnownRisSchema(site, schema);
    if (known.isEmpty()) {
        log.write(RisErrorBox({RisErrorKind::UnknownSchema, QStringLiteral("default schema ") + schema, 15, {}, {}}).toUtf8());
        return 1;
    }
    fx::SqliteDb db(RisSchemaDatabase(site, known), fx::SqliteDb::OpenMode::ReadOnly);
    dump.write(Line(QStringLiteral("default schema ") + known));
    std::printf("%s\n", qPrintable(RisText(rismsg::UnloadedSchema, {known})));
    bool failed = false;
    for (const QString &item : request.items.isEmpty() ? RisTables(db) : request.items) {
        const qint64 count = UnloadTable(db, item, request, dump, log);
        failed = failed || count < 0;
        if (count >= 0)
            std::printf("%s\n", qPrintable(RisText(rismsg::UnloadedTable,
                                                   {QString::number(count), item.section(QLatin1Char(' '), 0, 0), dump.fileName()})));
    }
    dump.write(Line(QString::fromLatin1(fx::kRISEndOfSchema)));
    return failed ? 1 : 0;
}

} // namespace pdssim

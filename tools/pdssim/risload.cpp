// rislod: loads the tables of a dump into a schema, reading the dump as Fendrix does.
//
// Each row is inserted on its own, so a row that fails (a value that is no value of its column's
// type, a wrong field count, a NULL in a NOT NULL column, a duplicate in a unique index) is
// rejected alone: its dump line goes to the bad file and the others stay. Rows are committed
// every -c rows and at the end of each table; "clear" empties the table inside the first of
// these transactions, so a load that dies keeps whole intervals only. A table that cannot be
// loaded (unknown, or existing for "new") has its error box in the log and all its rows in the
// bad file, so nothing asked for is dropped without a trace.

#include "pdssim/commands.h"

#include "frame/failure.h"
#include "frame/windows1252.h"
#include "pdssim/riserror.h"
#include "pdssim/rismessages.h"
#include "pdssim/rissite.h"
#include "pdssim/ristypes.h"
#include "pds/risdumpparse.h"
#include "pds/risdumpreader.h"
#include "pds/sqlitedb.h"

#include <QFile>

#include <sqlite3.h>

#include <cstdio>
#include <memory>
#include <optional>

namespace pdssim {

namespace {

QString Usage()
{
    return RisText(rismsg::Usage, {QStringLiteral("rislod"),
        QStringLiteral("-m w -i dump -l log -b bad -c n -s schema [clear|new] table with data t1 ...|all [view all] [index] [grant]")});
}

struct LoadCount
{
    qint64 loaded = 0;
    qint64 rejected = 0;
};

// The "create [unique] index" lines of a dump, by the lower-cased table they are on.
QMultiHash<QString, QString> DumpIndexStatements(const QString &dumpFile)
{
    QMultiHash<QString, QString> statements;
    QFile file(dumpFile);
    if (!file.open(QIODevice::ReadOnly))
        return statements;
    while (!file.atEnd()) {
        const QString line = QString::fromLatin1(file.readLine()).trimmed();
        const QString lower = line.toLower();
        if (!lower.startsWith(QLatin1String("create unique index ")) && !lower.startsWith(QLatin1String("create index ")))
            continue;
        const qsizetype on = lower.indexOf(QLatin1String(" on "));
        if (on > 0)
            statements.insert(lower.mid(on + 4).section(QLatin1Char(' '), 0, 0).section(QLatin1Char('('), 0, 0), line);
    }
    return statements;
}

class TableLoader
{
public:
    TableLoader(fx::SqliteDb &db, QFile &log, QFile &bad, int commitInterval)
        : m_db(db), m_log(log), m_bad(bad), m_commitInterval(qMax(1, commitInterval))
    {
    }

    /// Loads the rows of the table the reader stands at; `table` is its name in the schema
    /// (empty when it could not be made ready: the rows are then all rejected).
    LoadCount Load(fx::RISDumpReader &reader, const fx::RISDumpTable &dumpTable, const QString &table, bool clear)
    {
        LoadCount count;
        std::optional<fx::SqliteStatement> insert;
        QList<RisType> types;
        if (!table.isEmpty()) {
            QStringList names, marks;
            for (const fx::RISDumpColumn &column : dumpTable.columns) {
                names << SqlName(column.name);
                marks << QStringLiteral("?");
                types << RisType::Of(column.type);
            }
            const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                    .arg(SqlName(table), names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
            try {
                insert.emplace(m_db, sql);
            } catch (const fx::Failure &) {
                m_log.write(RisErrorBox(RisErrorOfSqlite(m_db.Handle(), sql)).toUtf8());
            }
        }
        std::optional<fx::SqliteTransaction> transaction;
        if (insert) {
            transaction.emplace(m_db);
            if (clear)
                m_db.Execute(QStringLiteral("DELETE FROM ") + SqlName(table));
        }
        qint64 inInterval = 0;
        QByteArrayView rows;
        while (reader.ReadRows(rows)) {
            for (QByteArrayView rest = rows; !rest.isEmpty();) {
                const qsizetype lf = rest.indexOf('\n');
                const QByteArrayView line = lf < 0 ? rest : rest.first(lf + 1);
                rest = rest.sliced(line.size());
                const QByteArrayView row = fx::ChopCR(line.endsWith('\n') ? line.chopped(1) : line);
                if (row.trimmed().isEmpty())
                    continue;
                const QString reason = insert ? Insert(*insert, dumpTable, types, row) : QStringLiteral("-");
                if (reason.isEmpty()) {
                    ++count.loaded;
                    if (++inInterval == m_commitInterval) {
                        transaction->Commit();
                        transaction.emplace(m_db);
                        inInterval = 0;
                    }
                    continue;
                }
                ++count.rejected;
                m_bad.write(row.toByteArray() + '\n');
                if (insert)
                    m_log.write(RisText(rismsg::RejectedRow, {QString::number(count.loaded + count.rejected),
                                                              dumpTable.name, reason}).toUtf8() + '\n');
            }
        }
        if (transaction)
            transaction->Commit();
        return count;
    }

private:
    // Inserts one row; gives why it was rejected, or nothing.
    QString Insert(fx::SqliteStatement &insert, const fx::RISDumpTable &dumpTable, const QList<RisType> &types,
                   QByteArrayView row)
    {
        const QStringList fields = Fields(dumpTable, row);
        if (fields.size() != types.size()) {
            return fields.isEmpty() ? RisText(rismsg::RowTooLong, {QString::number(RowSpan(dumpTable))})
                                    : RisText(rismsg::FieldCount, {QString::number(fields.size()),
                                                                   QString::number(types.size())});
        }
        insert.Reset();
        for (qsizetype i = 0; i < types.size(); ++i) {
            QVariant value;
            if (!types.at(i).Parse(fields.at(i), value))
                return RisText(rismsg::NotAValue, {fields.at(i).trimmed(), dumpTable.columns.at(i).name, types.at(i).Name()});
            insert.Bind(int(i) + 1, value);
        }
        try {
            insert.Step();
        } catch (const fx::Failure &) {
            const RisError error = RisErrorOfSqlite(m_db.Handle(), QString());
            return RisErrorName(error.kind) + QStringLiteral(": ")
                   + QString::fromUtf8(sqlite3_errmsg(m_db.Handle()));
        }
        return QString();
    }

    static qsizetype RowSpan(const fx::RISDumpTable &table)
    {
        qsizetype span = 0;
        for (const fx::RISDumpColumn &column : table.columns)
            span += column.span;
        return span;
    }

    // The fields of a row through the reader's own row reading; empty for a fixed row too long.
    static QStringList Fields(const fx::RISDumpTable &table, QByteArrayView row)
    {
        QStringList fields;
        if (!table.fixed) {
            QByteArray delimited;
            fx::AppendFreeRowDelimited(row, int(table.columns.size()), false, delimited);
            delimited.chop(1);
            for (const QByteArray &field : delimited.split('\x01'))
                fields << fx::FromWindows1252(field);
            return fields;
        }
        QByteArrayView trimmed = row;
        while (trimmed.endsWith(' '))
            trimmed.chop(1);
        if (trimmed.size() > RowSpan(table))
            return fields;
        qsizetype offset = 0;
        for (const fx::RISDumpColumn &column : table.columns) {
            const qsizetype width = column.span - 1;
            fields << (offset < row.size() ? fx::FromWindows1252(row.sliced(offset, qMin(width, row.size() - offset)).toByteArray())
                                           : QString());
            offset += column.span;
        }
        return fields;
    }

    fx::SqliteDb &m_db;
    QFile &m_log;
    QFile &m_bad;
    int m_commitInterval;
};

// Makes the table ready for its rows; gives its name in the schema, or nothing after an error
// put into the log.
QString PrepareTable(fx::SqliteDb &db, const fx::RISDumpTable &table, bool create, const QStringList &indexes, QFile &log)
{
    const QString existing = RisTableName(db, table.name);
    QString statement;
    if (create) {
        QStringList definitions;
        for (const fx::RISDumpColumn &column : table.columns)
            definitions << column.name + QLatin1Char(' ') + column.type;
        statement = QStringLiteral("create table %1 (%2)").arg(table.name, definitions.join(QStringLiteral(", ")));
        if (!existing.isEmpty()) {
            log.write(RisErrorBox({RisErrorKind::TableExists, statement, 13, {}, {}}).toUtf8());
            return QString();
        }
        try {
            db.Execute(statement);
        } catch (const fx::Failure &) {
            log.write(RisErrorBox(RisErrorOfSqlite(db.Handle(), statement)).toUtf8());
            return QString();
        }
    } else if (existing.isEmpty()) {
        log.write(RisErrorBox({RisErrorKind::UnknownRelation, QStringLiteral("insert into ") + table.name, 12, {}, {}}).toUtf8());
        return QString();
    }
    // Indexes come before the rows, so that a duplicate is rejected as a row.
    for (const QString &index : indexes) {
        try {
            db.Execute(index);
        } catch (const fx::Failure &) {
            log.write(RisErrorBox(RisErrorOfSqlite(db.Handle(), index)).toUtf8());
        }
    }
    return existing.isEmpty() ? table.name : existing;
}

} // namespace

int RunRisLoad(const QStringList &arguments)
{
    if (IsToolMissing("rislod"))
        return 127;
    QStringList args = arguments;
    const SiteLayout site = TakeSite(args);
    const QHash<QChar, QString> options = TakeOptions(args, QStringLiteral("milbcs"), Usage());
    bool clear = true;
    if (!args.isEmpty() && (args.first().compare(QLatin1String("clear"), Qt::CaseInsensitive) == 0
                            || args.first().compare(QLatin1String("new"), Qt::CaseInsensitive) == 0))
        clear = args.takeFirst().compare(QLatin1String("clear"), Qt::CaseInsensitive) == 0;
    const RisTableRequest request = ParseTableRequest(args, Usage());

    QFile log(options.value(QLatin1Char('l')));
    QFile bad(options.value(QLatin1Char('b')));
    if (!log.open(QIODevice::WriteOnly | QIODevice::Truncate))
        fx::Raise(rismsg::CannotOpenFile, {log.fileName()});
    if (!bad.open(QIODevice::WriteOnly | QIODevice::Truncate))
        fx::Raise(rismsg::CannotOpenFile, {bad.fileName()});
    const QString dumpFile = options.value(QLatin1Char('i'));
    const QString schema = options.value(QLatin1Char('s')).section(QLatin1Char('.'), 0, 0);
    const QString known = KnownRisSchema(site, schema);
    QFile dump(dumpFile);
    if (known.isEmpty() || !dump.open(QIODevice::ReadOnly)) {
        log.write(known.isEmpty() ? RisErrorBox({RisErrorKind::UnknownSchema, QStringLiteral("default schema ") + schema, 15, {}, {}}).toUtf8()
                                  : RisErrorBox({RisErrorKind::CannotOpenFile, {}, -1, {}, dumpFile}).toUtf8());
        return 1;
    }

    // The dump's own schema is read; its tables go into the schema of -s.
    const QStringList dumpSchemas = fx::risdump::RISDumpGetSchemas(dumpFile);
    const QString source = dumpSchemas.isEmpty() ? QString() : dumpSchemas.first();
    QStringList wanted;
    for (const QString &item : request.items)
        wanted << item.trimmed().toLower();
    fx::SqliteDb db(RisSchemaDatabase(site, known));
    const QMultiHash<QString, QString> indexes = request.indexes ? DumpIndexStatements(dumpFile) : QMultiHash<QString, QString>();
    LoadCount total;
    bool failed = false;
    {
        fx::RISDumpReader schemaReader(dump);
        failed = source.isEmpty() || !schemaReader.FindSchema(source);
    }
    const bool all = wanted.isEmpty();
    for (const QString &name : failed ? QStringList() : fx::risdump::RISDumpGetTables(dumpFile, source)) {
        if (!all && !wanted.contains(name.toLower()))
            continue;
        wanted.removeAll(name.toLower());
        // A reader of its own for each table, found from the dump's start as Fendrix finds one:
        // a reader that has read a table's rows does not go on to the next table.
        QFile tableDump(dumpFile);
        if (!tableDump.open(QIODevice::ReadOnly))
            fx::Raise(rismsg::CannotOpenFile, {dumpFile});
        fx::RISDumpReader reader(tableDump);
        if (!reader.FindSchema(source) || !reader.FindTable(name)) {
            log.write(RisErrorBox({RisErrorKind::DumpIncomplete, {}, -1, {}, name}).toUtf8());
            failed = true;
            continue;
        }
        const fx::RISDumpTable table = reader.ReadTableHeader();
        const QString target = PrepareTable(db, table, !clear, indexes.values(name.toLower()), log);
        const LoadCount count = TableLoader(db, log, bad, options.value(QLatin1Char('c')).toInt()).Load(reader, table, target, clear);
        failed = failed || target.isEmpty();
        if (!reader.EndOfTableFound()) {
            log.write(RisErrorBox({RisErrorKind::DumpIncomplete, {}, -1, {}, table.name}).toUtf8());
            failed = true;
        }
        log.write(RisText(rismsg::LoadedTable, {table.name, QString::number(count.loaded), QString::number(count.rejected)}).toUtf8() + '\n');
        total.loaded += count.loaded;
        total.rejected += count.rejected;
    }
    for (const QString &missing : std::as_const(wanted)) {
        log.write(RisErrorBox({RisErrorKind::UnknownRelation, QStringLiteral("table ") + missing, 6, {}, {}}).toUtf8());
        failed = true;
    }
    const QString summary = RisText(rismsg::LoadedSchema, {known}) + QLatin1Char('\n')
                            + RisText(rismsg::RowsLoaded, {QString::number(total.loaded), QString::number(total.rejected)});
    std::printf("%s\n", qPrintable(summary));
    log.write(summary.toUtf8() + '\n');
    return failed || total.rejected > 0 ? 1 : 0;
}

} // namespace pdssim

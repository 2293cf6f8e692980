#include "pds/risdumpparse.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/paths.h"
#include "pds/messages.h"
#include "pds/risdumpreader.h"
#include "pds/scratchfiles.h"

#include <QFile>
#include <QRegularExpression>

namespace fx::risdump {

namespace {

void OpenDump(QFile &file, const char *notFound)
{
    if (!IsFileExists(file.fileName()) || !file.open(QIODevice::ReadOnly))
        Raise(notFound, {file.fileName()});
}

} // namespace

TextFileColumn SchemaIniColumn(const RISDumpColumn &column)
{
    const QString &type = column.type;
    TextFileColumn result{column.name, QString(), 0};
    if (type.contains(QLatin1String("char"))) {
        result.type = QStringLiteral("char");
        static const QRegularExpression kSize(QStringLiteral("^.*\\((\\d+).*\\).*$"));
        const QRegularExpressionMatch size = kSize.match(type);
        if (size.hasMatch())
            result.width = qMin(size.captured(1).toLongLong(), qint64(kMaxTextCharWidth));
    } else if (type.contains(QLatin1String("smallint"))) {
        result.type = QStringLiteral("short");
    } else if (type.contains(QLatin1String("int"))) {
        result.type = QStringLiteral("long");
    } else if (type.contains(QLatin1String("decimal")) || type.contains(QLatin1String("real"))
               || type.contains(QLatin1String("double"))) {
        result.type = QStringLiteral("double");
    } else if (type.contains(QLatin1String("timestamp"))) {
        result.type = QStringLiteral("datetime");
    } else if (type.contains(QLatin1String("ris_text")) || type.contains(QLatin1String("ris_blob"))) {
        // Long text has no width limit in the text driver.
        result.type = QStringLiteral("memo");
    }
    return result;
}

QStringList RISDumpGetSchemas(const QString &dumpFile)
{
    return Frame("CRIS::RISDumpGetSchemas", [&] {
        QFile file(dumpFile);
        OpenDump(file, msg::RISDumpFileColonNotFound);
        RISDumpReader reader(file);
        QStringList schemas;
        QByteArrayView line;
        while (reader.ReadLine(line)) {
            const QByteArray schema = RISDumpReader::SchemaOfLine(line);
            if (!schema.isEmpty())
                schemas << QString::fromLatin1(schema);
        }
        return schemas;
    });
}

QStringList RISDumpGetTables(const QString &dumpFile, const QString &schema)
{
    return Frame("CRIS::RISDumpGetTables", [&] {
        QFile file(dumpFile);
        OpenDump(file, msg::RISDumpFileNotFound);
        RISDumpReader reader(file);
        if (!reader.FindSchema(schema))
            Raise(msg::SchemaNameNotInDumpFile, {dumpFile});
        QStringList tables;
        QByteArrayView line;
        while (reader.ReadLine(line) && RISDumpReader::SchemaOfLine(line).isEmpty()) {
            const QByteArray table = RISDumpReader::TableOfLine(line);
            if (!table.isEmpty())
                tables << QString::fromLatin1(table);
        }
        return tables;
    });
}

QList<RISDumpColumn> RISDumpGetColumns(const QString &dumpFile, const QString &schema, const QString &table)
{
    return Frame("CRIS::RISDumpGetColumns", [&] {
        QFile dump(dumpFile);
        OpenDump(dump, msg::RISDumpFileNotFound);
        RISDumpReader reader(dump);
        if (!reader.FindSchema(schema))
            Raise(msg::SchemaNotInDumpFile, {schema, dumpFile});
        if (!reader.FindTable(table))
            Raise(msg::TableNotInDumpFile, {table, schema, dumpFile});
        return reader.ReadTableHeader().columns;
    });
}

QString RISDumpParse(const QString &tempDir, const QString &dumpFile, const QString &schema, const QString &table,
                     bool replaceNull, qsizetype blockSize)
{
    return Frame("CRIS::RISDumpParse", [&] {
        if (schema.trimmed().isEmpty())
            Raise(msg::SchemaNotDefined);
        if (table.trimmed().isEmpty())
            Raise(msg::TableNameNotDefined);
        QFile dump(dumpFile);
        OpenDump(dump, msg::RISDumpFileNotFound);

        RISDumpReader reader(dump, blockSize);
        if (!reader.FindSchema(schema))
            Raise(msg::SchemaNotInDumpFile, {schema, dumpFile});
        if (!reader.FindTable(table))
            Raise(msg::TableNotInDumpFile, {table, schema, dumpFile});
        const RISDumpTable definition = reader.ReadTableHeader();

        TextFileScratch target(AddBackslash(tempDir) + RandomScratchName() + QStringLiteral(".txt"));
        QFile text(target.Path());
        if (!text.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
            Raise(msg::FileWriteFailed, {target.Path()});
        QByteArray buffer;
        QByteArrayView rows;
        while (reader.ReadRows(rows)) {
            const QByteArrayView out = RowsAsText(definition, rows, replaceNull, buffer);
            if (text.write(out.data(), out.size()) != out.size())
                Raise(msg::FileWriteFailed, {target.Path()});
            DoEventsIfInput();
        }
        text.close();
        if (!reader.EndOfTableFound())
            Raise(msg::EndOfTableNotFound);

        TextFileFormat format;
        format.layout = definition.fixed ? TextFileFormat::Layout::FixedLength : TextFileFormat::Layout::Delimited;
        format.delimiter = '\x01';
        for (const RISDumpColumn &column : definition.columns) {
            TextFileColumn entry = SchemaIniColumn(column);
            if (entry.type.isEmpty())
                Raise(msg::ColumnTypeNotFound, {column.name});
            // A fixed-length width places the field in the row: its span, separator included,
            // as far as the text driver takes it (the rows were cut to match).
            if (definition.fixed)
                entry.width = FixedTextWidth(column);
            format.columns << entry;
        }
        WriteSchemaIni(target.Path(), format);
        return target.Keep();
    });
}

} // namespace fx::risdump

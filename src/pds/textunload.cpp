#include "pds/textunload.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/paths.h"
#include "frame/windows1252.h"
#include "pds/adotypes.h"
#include "pds/messages.h"
#include "pds/schemaini.h"
#include "pds/scratchfiles.h"
#include "pds/tableimporter.h"
#include "pds/sqlitedb.h"

#include <QDateTime>
#include <QFile>

namespace fx {

namespace {

QString FieldText(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("-32768");
    switch (value.typeId()) {
    case QMetaType::Double: case QMetaType::Float:
        return QString::number(value.toDouble(), 'g', 15);
    case QMetaType::QDateTime:
        return StoreDateText(value);
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("yyyy-MM-dd"));
    case QMetaType::QTime:
        return value.toTime().toString(QStringLiteral("HH:mm:ss"));
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toHex());
    default: {
        QString text = value.toString();
        text.replace(QLatin1Char('"'), QLatin1Char('\''));
        // A separator inside a value would shift the fields or split the row.
        for (QChar &c : text) {
            if (c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n'))
                c = QLatin1Char(' ');
        }
        return text;
    }
    }
}

} // namespace

QString SchemaIniColumnType(int adoType, qint64 definedSize)
{
    switch (adoType) {
    case adotype::SmallInt: case adotype::TinyInt: case adotype::UnsignedTinyInt: case adotype::UnsignedSmallInt:
        return QStringLiteral("short");
    case adotype::Integer: case adotype::UnsignedInt: case adotype::BigInt: case adotype::UnsignedBigInt:
    case adotype::Numeric:
        return QStringLiteral("long");
    case adotype::Single: case adotype::Double: case adotype::Decimal: case adotype::VarNumeric:
        return QStringLiteral("double");
    case adotype::Guid:
        return QStringLiteral("char width 38");
    default:
        return QStringLiteral("char width ") + QString::number(definedSize > 255 ? 240 : definedSize);
    }
}

QString UnloadQueryToTextFile(SchemaConnection &connection, const QString &sql, const QString &folder)
{
    return Frame("UnloadQueryToTextFile", [&] {
        QString path;
        do
            path = AddBackslash(folder) + RandomScratchName() + QStringLiteral(".txt");
        while (IsFileExists(path));
        TextFileScratch guard(path);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            Raise(msg::FileWriteFailed, {path});

        QList<RecordsetField> fields;
        QString text;
        connection.ReadInSlices(
            sql, TableImporter::kSliceRows, [&](const QList<RecordsetField> &described) { fields = described; },
            [&](const QList<QVariantList> &rows) {
                text.clear();
                for (const QVariantList &row : rows) {
                    for (qsizetype i = 0; i < row.size(); ++i) {
                        if (i > 0)
                            text += QLatin1Char('\t');
                        text += FieldText(row.at(i));
                    }
                    text += QStringLiteral("\r\n");
                }
                const QByteArray bytes = ToWindows1252(text);
                if (file.write(bytes) != bytes.size())
                    Raise(msg::FileWriteFailed, {path});
                DoEventsIfInput();
            });
        if (!file.flush())
            Raise(msg::FileWriteFailed, {path});
        file.close();

        TextFileFormat format;
        format.delimiter = '\t';
        for (const RecordsetField &field : fields)
            format.columns.append({field.name, SchemaIniColumnType(field.type, field.definedSize)});
        WriteSchemaIni(path, format);
        return guard.Keep();
    });
}

} // namespace fx

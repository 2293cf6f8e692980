#include "pds/risdumpwriter.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/paths.h"
#include "frame/textfiles.h"
#include "frame/windows1252.h"
#include "pds/adotypes.h"
#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/risdumpreader.h"
#include "pds/sqlitedb.h"
#include "pds/tableimporter.h"
#include "pds/scratchfiles.h"

#include <QDateTime>
#include <QFile>

namespace fx::risdump {

namespace {

#ifdef Q_OS_WIN
constexpr char kLineEnd[] = "\r\n";
#else
constexpr char kLineEnd[] = "\n";
#endif
// rislod's widest char column.
constexpr qint64 kMaxCharSize = 240;
constexpr qsizetype kFlushBytes = qsizetype(1) << 20;

enum class ValueKind { Integer, Real, Timestamp, Text };

ValueKind KindOf(const QString &risType)
{
    if (risType == QLatin1String("smallint") || risType == QLatin1String("int"))
        return ValueKind::Integer;
    if (risType == QLatin1String("double"))
        return ValueKind::Real;
    if (risType == QLatin1String("timestamp"))
        return ValueKind::Timestamp;
    return ValueKind::Text;
}

// One value as rislod reads it, followed by its blank; a NULL is two blanks.
void AppendValue(QByteArray &out, ValueKind kind, const QVariant &value)
{
    if (value.isNull()) {
        out += "  ";
        return;
    }
    switch (kind) {
    case ValueKind::Integer:
        out += QByteArray::number(value.toLongLong());
        break;
    case ValueKind::Real:
        out += QByteArray::number(value.toDouble(), 'g', 15);
        break;
    case ValueKind::Timestamp: {
        QDateTime time = value.toDateTime();
        if (!time.isValid())
            time = QDateTime::fromString(value.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (!time.isValid()) {
            out += "  ";
            return;
        }
        out += time.toString(QStringLiteral("yyyy-MM-dd:HH:mm:ss")).toLatin1();
        break;
    }
    case ValueKind::Text: {
        // A row is one line: line breaks in a text become blanks.
        QByteArray text = ToWindows1252(value.toString());
        text.replace('\'', "''").replace('\r', ' ').replace('\n', ' ');
        out += '\'';
        out += text;
        out += '\'';
        break;
    }
    }
    out += ' ';
}

void WriteOrRaise(QFile &file, QByteArray &buffer)
{
    if (file.write(buffer) != buffer.size())
        Raise(msg::FileWriteFailed, {file.fileName()});
    buffer.clear();
}

void WriteTable(SqliteDb &db, const QString &table, const QString &where, QFile &file, QByteArray &out)
{
    SqliteStatement fieldsQuery(db, QStringLiteral("SELECT * FROM ") + BracketName(table) + QStringLiteral(" WHERE(1 = 0);"));
    QStringList names, definitions, marks, items;
    QList<ValueKind> kinds;
    for (int i = 0; i < fieldsQuery.ColumnCount(); ++i) {
        qint64 size = 0;
        const int type = AdoTypeOfDeclaredType(fieldsQuery.ColumnDeclaredType(i), &size);
        const QString risType = RISTypeOfAdoType(type, size);
        names << fieldsQuery.ColumnName(i);
        definitions << names.last() + QLatin1Char(' ') + risType;
        marks << QStringLiteral("?");
        items << BracketName(names.last());
        kinds << KindOf(risType);
    }
    const QString joined = names.join(QStringLiteral(", "));
    out += ToWindows1252(QStringLiteral("create table ") + table + QStringLiteral(" (") + definitions.join(QStringLiteral(", "))
                         + QLatin1Char(')'));
    out += kLineEnd;
    out += ToWindows1252(QStringLiteral("insert into ") + table + QStringLiteral(" (") + joined + QStringLiteral(") values (")
                         + marks.join(QStringLiteral(", ")) + QLatin1Char(')'));
    out += kLineEnd;
    out += ToWindows1252(QLatin1String(kRISVariable) + QLatin1Char(' ') + names.join(QLatin1Char(' ')));
    out += kLineEnd;

    QString select = QStringLiteral("SELECT ") + items.join(QStringLiteral(", ")) + QStringLiteral(" FROM ") + BracketName(table);
    if (!where.trimmed().isEmpty())
        select += QStringLiteral(" WHERE ") + where;
    SqliteStatement rows(db, select);
    qint64 count = 0;
    while (rows.Step()) {
        for (int i = 0; i < kinds.size(); ++i)
            AppendValue(out, kinds.at(i), rows.Column(i));
        out += kLineEnd;
        if (out.size() >= kFlushBytes)
            WriteOrRaise(file, out);
        if (++count % TableImporter::kSliceRows == 0)
            DoEventsIfInput();
    }
    out += kRISEndOfTable;
    out += kLineEnd;
    // The index is on every column, as the insert line lists them.
    out += ToWindows1252(QStringLiteral("create unique index u") + table + QStringLiteral(" on ") + table + QStringLiteral(" (")
                         + joined + QLatin1Char(')'));
    out += kLineEnd;
    out += ToWindows1252(QStringLiteral("grant select, insert, delete, update on ") + table + QStringLiteral(" to PUBLIC"));
    out += kLineEnd;
}

} // namespace

QString RISTypeOfAdoType(int adoType, qint64 definedSize)
{
    switch (adoType) {
    case adotype::SmallInt: case adotype::TinyInt: case adotype::UnsignedTinyInt: case adotype::Boolean:
        return QStringLiteral("smallint");
    case adotype::Integer: case adotype::UnsignedSmallInt: case adotype::UnsignedInt: case adotype::BigInt:
    case adotype::UnsignedBigInt:
        return QStringLiteral("int");
    case adotype::Single: case adotype::Double: case adotype::Currency: case adotype::Decimal: case adotype::Numeric:
    case adotype::VarNumeric:
        return QStringLiteral("double");
    case adotype::Date: case adotype::DBDate: case adotype::DBTime: case adotype::DBTimeStamp:
        return QStringLiteral("timestamp");
    default:
        return QStringLiteral("char(%1)").arg(definedSize > 0 && definedSize < kMaxCharSize ? definedSize : kMaxCharSize);
    }
}

QString RISDumpCreate(const QString &targetFolder, const QString &database, const QString &schema, const QString &tables,
                      const QString &where, const QString &dumpFile)
{
    return Frame("RISDumpCreate", [&] {
        if (!IsFileExists(targetFolder, true))
            Raise(msg::DirectoryNotExistsColon, {targetFolder});
        if (!IsFileExists(database))
            Raise(msg::AccessDatabaseColonNotExists, {database});
        if (schema.trimmed().isEmpty())
            Raise(msg::SchemaNotDefined);
        SqliteDb db(database, SqliteDb::OpenMode::ReadOnly);

        QString path = dumpFile;
        if (path.isEmpty())
            path = RandomScratchName() + QStringLiteral(".dmp");
        if (GetFolderOfPath(path).isEmpty())
            path = AddBackslash(targetFolder) + path;
        TextFileScratch scratch(path);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            Raise(msg::FileWriteFailed, {path});

        QByteArray out = ToWindows1252(QStringLiteral("default schema ") + RISName(schema));
        out += kLineEnd;
        for (const QString &table : tables.split(QLatin1Char(';'))) {
            if (table.trimmed().isEmpty())
                Raise(msg::TableNameNotDefined);
            WriteTable(db, RISName(table), where, file, out);
        }
        out += kRISEndOfSchema;
        out += kLineEnd;
        WriteOrRaise(file, out);
        file.close();
        return scratch.Keep();
    });
}

void RISTableCopy(const QString &dumpFile, const QString &target, const QStringList &names, const QStringList &newNames)
{
    Frame("CRIS::RISTableCopy", [&] {
        if (names.isEmpty()) {
            CopyFileA(dumpFile, target);
            return;
        }
        QString source = dumpFile;
        for (qsizetype i = 0; i < names.size() && i < newNames.size(); ++i) {
            ReplaceInFile(source, target, names.at(i), newNames.at(i));
            source = target;
        }
    });
}

} // namespace fx::risdump

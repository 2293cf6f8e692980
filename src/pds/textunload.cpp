#include "pds/textunload.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/inifile.h"
#include "frame/paths.h"
#include "frame/windows1252.h"
#include "pds/adotypes.h"
#include "pds/messages.h"
#include "pds/scratchfiles.h"

#include <QDateTime>
#include <QFile>

namespace fx {

namespace {

constexpr int kSliceRows = 10000;

QString FieldText(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("-32768");
    switch (value.typeId()) {
    case QMetaType::Double: case QMetaType::Float:
        return QString::number(value.toDouble(), 'g', 15);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
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

// Removes the text file and its Schema.ini section unless the unload got to the end.
class UnloadGuard
{
public:
    explicit UnloadGuard(QString textFile)
        : m_textFile(std::move(textFile))
    {
    }
    UnloadGuard(const UnloadGuard &) = delete;
    UnloadGuard &operator=(const UnloadGuard &) = delete;
    ~UnloadGuard()
    {
        if (m_kept)
            return;
        DeleteFileA(m_textFile, false);
        const QString schemaIni = GetFolderOfPath(m_textFile) + QStringLiteral("Schema.ini");
        if (IsFileExists(schemaIni))
            IniFile::Write(schemaIni, GetFileNameOfPath(m_textFile), std::nullopt, std::nullopt);
    }
    void Keep() { m_kept = true; }

private:
    QString m_textFile;
    bool m_kept = false;
};

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
        UnloadGuard guard(path);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            Raise(msg::FileWriteFailed, {path});

        QList<RecordsetField> fields;
        QString text;
        connection.ReadInSlices(
            sql, kSliceRows, [&](const QList<RecordsetField> &described) { fields = described; },
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

        const QString name = GetFileNameOfPath(path);
        std::vector<IniEdit> edits{{name, QStringLiteral("ColNameHeader"), QStringLiteral("False")},
                                   {name, QStringLiteral("Format"), QStringLiteral("TabDelimited")},
                                   {name, QStringLiteral("CharacterSet"), QStringLiteral("ANSI")}};
        for (qsizetype i = 0; i < fields.size(); ++i)
            edits.push_back({name, QStringLiteral("Col") + QString::number(i + 1),
                             fields.at(i).name + QLatin1Char(' ')
                                 + SchemaIniColumnType(fields.at(i).type, fields.at(i).definedSize)});
        const QString schemaIni = AddBackslash(folder) + QStringLiteral("Schema.ini");
        if (!IniFile::Write(schemaIni, edits))
            Raise(msg::FileWriteFailed, {schemaIni});
        guard.Keep();
        return path;
    });
}

} // namespace fx

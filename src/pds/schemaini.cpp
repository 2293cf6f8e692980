#include "pds/schemaini.h"

#include "frame/fileops.h"

#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/paths.h"
#include "pds/messages.h"

#include <vector>

namespace fx {

namespace {

constexpr char kSchemaIni[] = "Schema.ini";

// The text driver's type names and the one this reader works with.
QString NormalType(const QString &type)
{
    static const QList<std::pair<QString, QString>> kTypes = {
        {QStringLiteral("char"), QStringLiteral("char")},         {QStringLiteral("text"), QStringLiteral("char")},
        {QStringLiteral("short"), QStringLiteral("short")},       {QStringLiteral("byte"), QStringLiteral("short")},
        {QStringLiteral("bit"), QStringLiteral("short")},         {QStringLiteral("long"), QStringLiteral("long")},
        {QStringLiteral("integer"), QStringLiteral("long")},      {QStringLiteral("double"), QStringLiteral("double")},
        {QStringLiteral("single"), QStringLiteral("double")},     {QStringLiteral("float"), QStringLiteral("double")},
        {QStringLiteral("currency"), QStringLiteral("double")},   {QStringLiteral("datetime"), QStringLiteral("datetime")},
        {QStringLiteral("date"), QStringLiteral("datetime")},     {QStringLiteral("memo"), QStringLiteral("memo")},
        {QStringLiteral("longchar"), QStringLiteral("memo")},
    };
    for (const auto &[name, normal] : kTypes) {
        if (type.compare(name, Qt::CaseInsensitive) == 0)
            return normal;
    }
    return QString();
}

} // namespace

QString SchemaIniPath(const QString &textFile)
{
    return GetFolderOfPath(textFile) + QLatin1String(kSchemaIni);
}

void WriteSchemaIni(const QString &textFile, const TextFileFormat &format)
{
    const QString section = GetFileNameOfPath(textFile);
    QString layout = QStringLiteral("FixedLength");
    if (format.layout == TextFileFormat::Layout::Delimited) {
        layout = format.delimiter == '\t' ? QStringLiteral("TabDelimited")
                                          : QStringLiteral("Delimited(") + QLatin1Char(format.delimiter) + QLatin1Char(')');
    }
    std::vector<IniEdit> edits = {
        {section, std::nullopt, std::nullopt},
        {section, QStringLiteral("ColNameHeader"), format.colNameHeader ? QStringLiteral("True") : QStringLiteral("False")},
        {section, QStringLiteral("Format"), layout},
        {section, QStringLiteral("CharacterSet"), format.characterSet},
    };
    for (qsizetype i = 0; i < format.columns.size(); ++i) {
        const TextFileColumn &column = format.columns.at(i);
        QString text = column.name + QLatin1Char(' ') + column.type;
        if (column.width > 0)
            text += QStringLiteral(" width ") + QString::number(column.width);
        edits.push_back({section, QStringLiteral("Col") + QString::number(i + 1), text});
    }
    if (!IniFile::Write(SchemaIniPath(textFile), edits))
        Raise(msg::FileWriteFailed, {SchemaIniPath(textFile)});
}

TextFileFormat ReadSchemaIni(const QString &textFile)
{
    const QString iniPath = SchemaIniPath(textFile);
    const QString section = GetFileNameOfPath(textFile);
    const auto ini = IniFile::Snapshot(iniPath);
    if (!ini->HasSection(section))
        Raise(msg::SchemaIniSectionNotFound, {section, iniPath});

    TextFileFormat format;
    format.colNameHeader = ini->Value(section, QStringLiteral("ColNameHeader"))
                               .value_or(QString())
                               .compare(QLatin1String("True"), Qt::CaseInsensitive)
                           == 0;
    format.characterSet = ini->Value(section, QStringLiteral("CharacterSet")).value_or(QStringLiteral("ANSI"));
    const QString layout = ini->Value(section, QStringLiteral("Format")).value_or(QStringLiteral("CSVDelimited"));
    if (layout.compare(QLatin1String("FixedLength"), Qt::CaseInsensitive) == 0) {
        format.layout = TextFileFormat::Layout::FixedLength;
    } else if (layout.compare(QLatin1String("TabDelimited"), Qt::CaseInsensitive) == 0) {
        format.delimiter = '\t';
    } else if (layout.compare(QLatin1String("CSVDelimited"), Qt::CaseInsensitive) == 0) {
        format.delimiter = ',';
    } else if (layout.startsWith(QLatin1String("Delimited("), Qt::CaseInsensitive) && layout.size() == 12
               && layout.at(11) == QLatin1Char(')') && layout.at(10).unicode() < 0x80) {
        format.delimiter = char(layout.at(10).unicode());
    } else {
        Raise(msg::TextFileFormatNotSupported, {layout, textFile});
    }

    for (int n = 1;; ++n) {
        const std::optional<QString> line = ini->Value(section, QStringLiteral("Col") + QString::number(n));
        if (!line)
            break;
        TextFileColumn column;
        QString rest = *line;
        if (rest.startsWith(QLatin1Char('"'))) {
            const qsizetype close = rest.indexOf(QLatin1Char('"'), 1);
            column.name = rest.mid(1, close < 0 ? -1 : close - 1);
            rest = close < 0 ? QString() : rest.mid(close + 1);
        } else {
            column.name = rest.section(QLatin1Char(' '), 0, 0);
            rest = rest.section(QLatin1Char(' '), 1);
        }
        const QStringList words = rest.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        column.type = NormalType(words.value(0));
        if (column.type.isEmpty())
            Raise(msg::TextFileColumnTypeNotSupported, {words.value(0), column.name, iniPath});
        for (qsizetype i = 1; i + 1 < words.size(); ++i) {
            if (words.at(i).compare(QLatin1String("width"), Qt::CaseInsensitive) == 0)
                column.width = words.at(i + 1).toLongLong();
        }
        format.columns.append(column);
    }
    return format;
}

void RemoveSchemaIniSection(const QString &textFile)
{
    const QString schemaIni = SchemaIniPath(textFile);
    IniFile::Write(schemaIni, GetFileNameOfPath(textFile), std::nullopt, std::nullopt);
    // The last text file gone, the Schema.ini has nothing more to describe.
    if (IniFile::SectionNames(schemaIni).isEmpty())
        DeleteFileA(schemaIni, false);
}

} // namespace fx

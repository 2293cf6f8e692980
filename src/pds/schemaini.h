#pragma once
// The Schema.ini entry of a text file: how its rows are laid out and what its columns hold.

#include <QList>
#include <QString>

namespace fx {

/// One column of a text file: a type of the text driver ("char", "short", "long", "double",
/// "datetime", "memo") and a width (text size, or in fixed length the characters it takes).
struct TextFileColumn
{
    QString name;
    QString type;
    qsizetype width = 0; ///< 0: none given
};

/// A text file's section of Schema.ini.
struct TextFileFormat
{
    enum class Layout { Delimited, FixedLength };
    Layout layout = Layout::Delimited;
    char delimiter = ',';
    bool colNameHeader = false;
    QString characterSet = QStringLiteral("ANSI");
    QList<TextFileColumn> columns;
};

/// The Schema.ini beside `textFile`.
QString SchemaIniPath(const QString &textFile);

/// Writes the section of `textFile` (named by its file name) into the Schema.ini beside it:
/// ColNameHeader, Format, CharacterSet, then "ColN=name type[ width w]".
void WriteSchemaIni(const QString &textFile, const TextFileFormat &format);

/// Reads the section of `textFile` from the Schema.ini beside it; raises when there is none or
/// it names a format or type this reader does not know.
TextFileFormat ReadSchemaIni(const QString &textFile);

/// Removes the section of `textFile` from the Schema.ini beside it.
void RemoveSchemaIniSection(const QString &textFile);

} // namespace fx

#include "pds/textfilequery.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/paths.h"
#include "pds/adotypes.h"
#include "pds/messages.h"
#include "pds/sqlitedb.h"
#include "pds/tableimporter.h"
#include "pds/textfilereader.h"

#include <QDateTime>
#include <QRegularExpression>

namespace fx {

namespace {

// The text file's rows live in a private temporary database attached under this name.
constexpr char kTextSchema[] = "textfile";

struct TextTableSql
{
    QString alias;
    QString sql; ///< the statement with the file replaced by the loaded table
};

// "<file> AS [alias]" becomes "textfile.[alias] AS [alias]"; the file may be written with its
// folder, with "#" for its dot, or in brackets.
TextTableSql ResolveTextFile(const QString &textFile, const QString &rewrittenSql)
{
    const QString base = QRegularExpression::escape(GetBaseNameOfPath(GetFileNameOfPath(textFile)));
    const QRegularExpression reference(QStringLiteral("(\\S*") + base + QStringLiteral("\\S*)\\s+AS\\s+\\[([^\\]]+)\\]"),
                                       QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = reference.match(rewrittenSql);
    if (!match.hasMatch())
        Raise(msg::TextFileNotInStatement, {GetFileNameOfPath(textFile), rewrittenSql});
    TextTableSql result;
    result.alias = match.captured(2);
    result.sql = rewrittenSql;
    result.sql.replace(match.capturedStart(1), match.capturedLength(1),
                       QLatin1String(kTextSchema) + QLatin1Char('.') + BracketName(result.alias));
    return result;
}

// Loads the text file into textfile.[alias] of `db`.
void LoadTextFile(SqliteDb &db, const QString &textFile, const QString &alias)
{
    TextFileReader reader(textFile);
    db.Execute(QStringLiteral("ATTACH DATABASE '' AS ") + QLatin1String(kTextSchema));
    const QString target = QLatin1String(kTextSchema) + QLatin1Char('.') + BracketName(alias);
    QStringList columns, marks;
    for (const RecordsetField &field : reader.Fields()) {
        columns << BracketName(field.name) + QLatin1Char(' ') + DeclaredTypeOfAdoType(field.type, field.definedSize);
        marks << QLatin1Char('?') + QString::number(marks.size() + 1);
    }
    db.Execute(QStringLiteral("CREATE TABLE ") + target + QStringLiteral(" (") + columns.join(QStringLiteral(", "))
               + QLatin1Char(')'));
    SqliteStatement insert(db, QStringLiteral("INSERT INTO ") + target + QStringLiteral(" VALUES (")
                                   + marks.join(QStringLiteral(", ")) + QLatin1Char(')'));
    SqliteTransaction transaction(db);
    QVariantList row;
    qint64 count = 0;
    while (reader.Next(row)) {
        for (int i = 0; i < row.size(); ++i)
            insert.Bind(i + 1, row.at(i));
        insert.Step();
        insert.Reset();
        if (++count % TableImporter::kSliceRows == 0)
            DoEventsIfInput();
    }
    transaction.Commit();
}

} // namespace

QRegularExpressionMatch MatchFromClause(const QString &sql)
{
    // A name such as a_from or from_date holds the letters but is not the word.
    static const QRegularExpression from(QStringLiteral("\\bFROM\\s+"), QRegularExpression::CaseInsensitiveOption);
    return from.match(sql);
}

QString TextFileSelect(const QString &sql, const QString &table, const QString &textFile)
{
    const QString file = GetFileNameOfPath(textFile);
    const QString alias = file + QStringLiteral(" AS [") + table + QLatin1Char(']');
    const QRegularExpressionMatch from = MatchFromClause(sql);
    if (from.hasMatch() && !table.isEmpty()) {
        const qsizetype at = from.capturedEnd();
        if (sql.mid(at, table.size()).compare(table, Qt::CaseInsensitive) == 0)
            return sql.left(at) + alias + sql.mid(at + table.size());
    }
    return QStringLiteral("SELECT * FROM ") + alias + QLatin1Char(';');
}

Recordset ReadTextFileQuery(const QString &textFile, const QString &rewrittenSql)
{
    const TextTableSql resolved = ResolveTextFile(textFile, rewrittenSql);
    SqliteDb db(QString(), SqliteDb::OpenMode::ReadWriteCreate);
    LoadTextFile(db, textFile, resolved.alias);
    SqliteStatement query(db, resolved.sql);
    return ReadAll(query);
}

void ImportTextFileQuery(const QString &textFile, const QString &rewrittenSql, const QString &database,
                         const QString &table)
{
    const TextTableSql resolved = ResolveTextFile(textFile, rewrittenSql);
    SqliteDb db(database, SqliteDb::OpenMode::ReadWrite);
    LoadTextFile(db, textFile, resolved.alias);
    SqliteStatement query(db, resolved.sql);
    QList<RecordsetField> fields;
    for (int i = 0; i < query.ColumnCount(); ++i) {
        RecordsetField field{query.ColumnName(i), 0, 0};
        field.type = AdoTypeOfDeclaredType(query.ColumnDeclaredType(i), &field.definedSize);
        fields << field;
    }
    TableImporter importer(db, table, fields);
    QVariantList row;
    while (query.Step()) {
        row.clear();
        for (int i = 0; i < fields.size(); ++i)
            row << query.Column(i);
        importer.AddRow(row);
    }
    importer.Finish();
}

} // namespace fx

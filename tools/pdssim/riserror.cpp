#include "pdssim/riserror.h"

#include "pdssim/rismessages.h"

#include <QRegularExpression>

#include <sqlite3.h>

namespace pdssim {

namespace {

constexpr int kBoxWidth = 79;
constexpr int kTextWidth = kBoxWidth - 8; // "*   " before, "   *" after

struct ErrorEntry
{
    RisErrorKind kind;
    const char *name;
    quint32 code;
    const char *message;
};

// The stand-ins' catalogue. Only RIS_E_UNKNOWN_RELATION's code is the one the real tool prints;
// the others keep to its range.
constexpr ErrorEntry kErrors[] = {
    {RisErrorKind::UnknownSchema, "RIS_E_UNKNOWN_SCHEMA", 0x8a94a152, rismsg::UnknownSchema},
    {RisErrorKind::UnknownRelation, "RIS_E_UNKNOWN_RELATION", 0x8a94a13a, rismsg::UnknownRelation},
    {RisErrorKind::UnknownColumn, "RIS_E_UNKNOWN_COLUMN", 0x8a94a142, rismsg::UnknownColumn},
    {RisErrorKind::Syntax, "RIS_E_SYNTAX_ERROR", 0x8a94a0aa, rismsg::SyntaxError},
    {RisErrorKind::CreateIndex, "RIS_E_CREATE_INDEX", 0x8a94a001, rismsg::CreateIndex},
    {RisErrorKind::TableExists, "RIS_E_RELATION_EXISTS", 0x8a94a0b2, rismsg::TableExists},
    {RisErrorKind::SchemaExists, "RIS_E_SCHEMA_EXISTS", 0x8a94a15a, rismsg::SchemaExists},
    {RisErrorKind::NoDefaultSchema, "RIS_E_NO_DEFAULT_SCHEMA", 0x8a94a162, rismsg::NoDefaultSchema},
    {RisErrorKind::DuplicateValue, "RIS_E_DUPLICATE_VALUE", 0x8a94a1c2, rismsg::DuplicateValue},
    {RisErrorKind::NullValue, "RIS_E_NULL_VALUE", 0x8a94a1ca, rismsg::NullValue},
    {RisErrorKind::TypeMismatch, "RIS_E_TYPE_MISMATCH", 0x8a94a1d2, rismsg::TypeMismatch},
    {RisErrorKind::Database, "RIS_E_DATABASE_ERROR", 0x8a94a202, rismsg::DatabaseError},
    {RisErrorKind::CannotOpenFile, "RIS_E_CANT_OPEN_FILE", 0x8a94a212, rismsg::CannotOpenFile},
    {RisErrorKind::DumpIncomplete, "RIS_E_DUMP_INCOMPLETE", 0x8a94a21a, rismsg::DumpIncomplete},
};

const ErrorEntry &EntryOf(RisErrorKind kind)
{
    for (const ErrorEntry &entry : kErrors) {
        if (entry.kind == kind)
            return entry;
    }
    return kErrors[std::size(kErrors) - 1];
}

QString FramedLine(const QString &text)
{
    return QStringLiteral("*   ") + text.leftJustified(kTextWidth, QLatin1Char(' '), true) + QStringLiteral("   *\n");
}

// Wraps at blanks where it can, else hard at the width.
QStringList Wrapped(const QString &text)
{
    QStringList lines;
    QString rest = text;
    while (rest.size() > kTextWidth) {
        qsizetype cut = rest.lastIndexOf(QLatin1Char(' '), kTextWidth);
        if (cut <= 0)
            cut = kTextWidth;
        lines << rest.left(cut);
        rest = rest.mid(cut).trimmed();
    }
    lines << rest;
    return lines;
}

// Where `word` stands in `statement` as a whole word, without regard to case; -1 if nowhere.
qsizetype WordPosition(const QString &statement, const QString &word)
{
    if (word.isEmpty())
        return -1;
    const QRegularExpression pattern(QStringLiteral("(?<![A-Za-z0-9_])") + QRegularExpression::escape(word)
                                         + QStringLiteral("(?![A-Za-z0-9_])"),
                                     QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(statement);
    return match.hasMatch() ? match.capturedStart() : -1;
}

QString Shown(const QString &statement)
{
    return statement.simplified();
}

} // namespace

QString RisText(const char *message, const QStringList &args)
{
    QString text = QString::fromUtf8(message);
    for (qsizetype i = 0; i < args.size(); ++i)
        text.replace(QLatin1Char('%') + QString::number(i) + QLatin1Char('%'), args.at(i));
    return text;
}

QString RisErrorName(RisErrorKind kind)
{
    return QString::fromLatin1(EntryOf(kind).name);
}

QString RisErrorBox(const RisError &error)
{
    const ErrorEntry &entry = EntryOf(error.kind);
    const QString stars(kBoxWidth, QLatin1Char('*'));
    QString box = stars + QLatin1Char('\n');
    box += FramedLine(QStringLiteral("RIS Error: %1 (0x%2)")
                          .arg(QString::fromLatin1(entry.name))
                          .arg(entry.code, 8, 16, QLatin1Char('0')));
    const QString statement = Shown(error.statement);
    if (!statement.isEmpty()) {
        box += FramedLine(QString());
        for (qsizetype start = 0; start < statement.size(); start += kTextWidth) {
            box += FramedLine(statement.mid(start, kTextWidth));
            if (error.caret >= start && error.caret < start + kTextWidth)
                box += FramedLine(QString(error.caret - start, QLatin1Char(' ')) + QLatin1Char('^'));
        }
    }
    for (const QString &line : Wrapped(RisText(entry.message, {error.argument})))
        box += FramedLine(line);
    for (const QString &detail : error.detail) {
        for (const QString &line : Wrapped(detail))
            box += FramedLine(line);
    }
    return box + stars + QLatin1Char('\n');
}

RisError RisErrorOfSqlite(sqlite3 *db, const QString &statement)
{
    const QString message = QString::fromUtf8(sqlite3_errmsg(db));
    const int code = sqlite3_extended_errcode(db);
    const QString shown = Shown(statement);
    RisError error{RisErrorKind::Database, statement, -1, {}, {}};
    // The place of the error is the word SQLite names, found again in the statement as shown.
    static const QRegularExpression named(QStringLiteral("^(no such table|no such column|table|index|near)"
                                                         ":? \"?([^\" :]+)\"?"));
    const QRegularExpressionMatch match = named.match(message);
    const QString what = match.hasMatch() ? match.captured(1) : QString();
    QString word = match.hasMatch() ? match.captured(2) : QString();
    if (word.contains(QLatin1Char('.')))
        word = word.section(QLatin1Char('.'), -1);
    if (what == QLatin1String("no such table"))
        error.kind = RisErrorKind::UnknownRelation;
    else if (what == QLatin1String("no such column"))
        error.kind = RisErrorKind::UnknownColumn;
    else if (what == QLatin1String("near"))
        error.kind = RisErrorKind::Syntax;
    else if (what == QLatin1String("index") && message.endsWith(QLatin1String("already exists")))
        error.kind = RisErrorKind::CreateIndex;
    else if (what == QLatin1String("table") && message.endsWith(QLatin1String("already exists")))
        error.kind = RisErrorKind::TableExists;
    else if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY)
        error.kind = RisErrorKind::DuplicateValue;
    else if (code == SQLITE_CONSTRAINT_NOTNULL)
        error.kind = RisErrorKind::NullValue;
    if (error.kind == RisErrorKind::Database || error.kind == RisErrorKind::DuplicateValue
        || error.kind == RisErrorKind::NullValue)
        error.detail << QStringLiteral("SQLite Error %1: %2").arg(code).arg(message);
    error.caret = WordPosition(shown, word);
    return error;
}

} // namespace pdssim

#pragma once
// The error box the RIS tools print: 79 columns framed by stars, the RIS error name and code,
// the statement with a caret under the place of the error, and the message.

#include <QString>
#include <QStringList>

struct sqlite3;

namespace pdssim {

/// The errors the stand-ins report, each with its RIS name, code and message.
enum class RisErrorKind {
    UnknownSchema,
    UnknownRelation,
    UnknownColumn,
    Syntax,
    CreateIndex,
    TableExists,
    SchemaExists,
    NoDefaultSchema,
    DuplicateValue,
    NullValue,
    TypeMismatch,
    Database,
    CannotOpenFile,
    DumpIncomplete,
};

/// One error: the statement it came from (may be empty), the place in it as the box shows the
/// statement (-1 for none) and lines to add below the message (the database's own text).
struct RisError
{
    RisErrorKind kind = RisErrorKind::Database;
    QString statement;
    qsizetype caret = -1;
    QStringList detail;
    QString argument; ///< %0% of the message, where it has one
};

/// "RIS_E_UNKNOWN_RELATION" and the like.
QString RisErrorName(RisErrorKind kind);

/// The whole box, every line 79 characters and ended by a line feed. The statement's blanks,
/// tabs and line ends are shown as single blanks; long lines are wrapped within the frame.
QString RisErrorBox(const RisError &error);

/// The error of the last failed SQLite call on `db` while running `statement`.
RisError RisErrorOfSqlite(sqlite3 *db, const QString &statement);

/// `message` with %0%, %1%, ... replaced by `args`.
QString RisText(const char *message, const QStringList &args = {});

} // namespace pdssim

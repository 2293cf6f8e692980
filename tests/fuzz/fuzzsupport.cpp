#include "fuzzsupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <list>

namespace fuzz {

namespace {

struct Guard
{
    QStringList tables;
    QStringList functions;
    QStringList pragmas;
};

const char *ActionName(int action)
{
    switch (action) {
    case SQLITE_ATTACH: return "ATTACH";
    case SQLITE_DETACH: return "DETACH";
    case SQLITE_PRAGMA: return "PRAGMA";
    case SQLITE_INSERT: return "INSERT";
    case SQLITE_UPDATE: return "UPDATE";
    case SQLITE_DELETE: return "DELETE";
    case SQLITE_TRANSACTION: return "a transaction";
    default: return "a statement that is no read";
    }
}

QString Text(const char *text)
{
    return text ? QString::fromUtf8(text) : QString();
}

int Authorize(void *user, int action, const char *a, const char *b, const char *database, const char *)
{
    const Guard &guard = *static_cast<const Guard *>(user);
    switch (action) {
    case SQLITE_SELECT:
        return SQLITE_OK;
    case SQLITE_READ:
        // Another database's table would need an ATTACH first, which is refused below.
        if (guard.tables.contains(Text(a), Qt::CaseInsensitive))
            return SQLITE_OK;
        Broken(QStringLiteral("read of %1.%2.%3").arg(Text(database), Text(a), Text(b)));
    case SQLITE_FUNCTION:
        if (guard.functions.contains(Text(b).toLower()))
            return SQLITE_OK;
        Broken(QStringLiteral("call of the function %1").arg(Text(b)));
    case SQLITE_PRAGMA:
        // The caller names only pragmas that have no form that sets anything.
        if (guard.pragmas.contains(Text(a).toLower()))
            return SQLITE_OK;
        Broken(QStringLiteral("PRAGMA %1 (%2)").arg(Text(a), Text(b)));
    default:
        Broken(QStringLiteral("%1 (%2, %3)").arg(QLatin1String(ActionName(action)), Text(a), Text(b)));
    }
}

} // namespace

void Broken(const QString &what)
{
    std::fprintf(stderr, "\n*** broken: %s\n", what.toUtf8().constData());
    std::fflush(stderr);
    std::abort();
}

QString Folder()
{
    static const QString folder = [] {
        static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/fendrix-fuzz-XXXXXX"));
        Expect(dir.isValid(), QStringLiteral("no temporary folder"));
        const QString path = dir.path() + QLatin1Char('/');
        qputenv("TEMP", QFile::encodeName(path));
        return path;
    }();
    return folder;
}

QString WriteFile(const QString &name, const char *data, std::size_t size)
{
    const QString path = Folder() + name;
    QFile file(path);
    Expect(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(data, qint64(size)) == qint64(size),
           QStringLiteral("can't write ") + path);
    return path;
}

void AllowOnlyReading(sqlite3 *db, const QStringList &tables, const QStringList &functions, const QStringList &pragmas)
{
    // Kept for the process: the connection may outlive any owner but this.
    static std::list<Guard> guards;
    sqlite3_set_authorizer(db, Authorize, &guards.emplace_back(Guard{tables, functions, pragmas}));
}

bool IsOneCondition(sqlite3 *db, const QString &table, const QString &condition)
{
    const QByteArray sql = QStringLiteral("SELECT 1 FROM [%1] WHERE (%2);").arg(table, condition).toUtf8();
    sqlite3_stmt *statement = nullptr;
    const char *tail = nullptr;
    const int rc = sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &statement, &tail);
    sqlite3_finalize(statement);
    if (rc != SQLITE_OK)
        return false;
    const QByteArray rest = QByteArray(tail, sql.constData() + sql.size() - tail).trimmed();
    Expect(rest.isEmpty(), QStringLiteral("a second statement after the condition: ") + QString::fromUtf8(rest));
    return true;
}

QStringList SplitInput(const uint8_t *data, std::size_t size, char separator, int maxParts)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    QStringList parts = text.split(QLatin1Char(separator));
    if (parts.size() > maxParts) {
        const QString rest = parts.mid(maxParts - 1).join(QLatin1Char(separator));
        parts.resize(maxParts - 1);
        parts << rest;
    }
    return parts;
}

} // namespace fuzz

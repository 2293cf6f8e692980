// risbatch: runs the statements of its input against the site's schema databases and writes a
// transcript: each statement as read, then what it gave (rows, a count or an error box).
//
// RIS SQL is run by SQLite as it stands. Every statement commits on its own (RIS's autocommit),
// so COMMIT has nothing left to do; after an error the following statements still run, as the
// tool does in batch.

#include "pdssim/commands.h"

#include "frame/failure.h"
#include "frame/windows1252.h"
#include "pdssim/riserror.h"
#include "pdssim/rismessages.h"
#include "pdssim/rissite.h"
#include "pdssim/ristypes.h"
#include "pds/sqlitedb.h"

#include <QFile>
#include <QRegularExpression>

#include <sqlite3.h>

#include <cstdio>
#include <memory>

namespace pdssim {

namespace {

// The statements of an input: split at ";" outside quotes, up to "quit".
QStringList SplitStatements(const QString &input)
{
    QStringList statements;
    QString current;
    QChar quote;
    for (const QChar ch : input) {
        if (!quote.isNull()) {
            if (ch == quote)
                quote = QChar();
        } else if (ch == QLatin1Char('\'') || ch == QLatin1Char('"')) {
            quote = ch;
        } else if (ch == QLatin1Char(';')) {
            const QString statement = current.trimmed();
            current.clear();
            if (statement.isEmpty())
                continue;
            if (statement.compare(QLatin1String("quit"), Qt::CaseInsensitive) == 0
                || statement.compare(QLatin1String("exit"), Qt::CaseInsensitive) == 0)
                break;
            statements << statement;
            continue;
        }
        current += ch;
    }
    return statements;
}

class RisBatch
{
public:
    explicit RisBatch(const SiteLayout &site)
        : m_site(site)
    {
    }

    /// Runs one statement and gives its part of the transcript; counts the errors.
    QString Run(const QString &statement)
    {
        QString out = statement.simplified() + QStringLiteral(";\n");
        const QString words = statement.simplified();
        static const QRegularExpression defaultSchema(QStringLiteral("^default schema ([^ .]+)"),
                                                      QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression createSchema(QStringLiteral("^create (?:secure )?schema ([^ .]+)"),
                                                     QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression dropSchema(QStringLiteral("^drop schema ([^ .]+)( force)?$"),
                                                   QRegularExpression::CaseInsensitiveOption);
        const QString lower = words.toLower();
        QRegularExpressionMatch match;
        if ((match = defaultSchema.match(words)).hasMatch())
            return out + UseSchema(statement, match.captured(1));
        if (lower == QLatin1String("show schema names")) {
            for (const QString &name : RisSchemaNames(m_site))
                out += RisText(rismsg::SchemaName, {name}) + QLatin1Char('\n');
            return out;
        }
        if (lower == QLatin1String("show schema file location"))
            return out + RisText(rismsg::SchemaFileName, {m_site.RisSchemaFile()}) + QLatin1Char('\n');
        if (lower == QLatin1String("commit") || lower == QLatin1String("commit work"))
            return out;
        if ((match = createSchema.match(words)).hasMatch()) {
            if (!KnownRisSchema(m_site, match.captured(1)).isEmpty())
                return out + Error({RisErrorKind::SchemaExists, statement, match.capturedStart(1), {}, {}});
            AddRisSchema(m_site, match.captured(1));
            return out;
        }
        if ((match = dropSchema.match(words)).hasMatch()) {
            const QString known = KnownRisSchema(m_site, match.captured(1));
            if (known.isEmpty())
                return out + Error({RisErrorKind::UnknownSchema, statement, match.capturedStart(1), {}, {}});
            if (known.compare(m_schema, Qt::CaseInsensitive) == 0) {
                m_db.reset();
                m_schema.clear();
            }
            RemoveRisSchema(m_site, known);
            return out;
        }
        return out + Execute(statement);
    }

    int Errors() const { return m_errors; }

private:
    QString Error(const RisError &error)
    {
        ++m_errors;
        return RisErrorBox(error);
    }

    QString UseSchema(const QString &statement, const QString &schema)
    {
        const QString known = KnownRisSchema(m_site, schema);
        if (known.isEmpty())
            return Error({RisErrorKind::UnknownSchema, statement, statement.simplified().indexOf(schema), {}, {}});
        m_db = std::make_unique<fx::SqliteDb>(RisSchemaDatabase(m_site, known));
        m_schema = known;
        return QString();
    }

    QString Execute(const QString &statement)
    {
        if (!m_db)
            return Error({RisErrorKind::NoDefaultSchema, statement, -1, {}, {}});
        sqlite3 *db = m_db->Handle();
        const QByteArray sql = statement.toUtf8();
        sqlite3_stmt *raw = nullptr;
        if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &raw, nullptr) != SQLITE_OK)
            return Error(RisErrorOfSqlite(db, statement));
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> prepared(raw, sqlite3_finalize);
        const int columns = sqlite3_column_count(raw);
        QString out;
        if (columns > 0) {
            QStringList names;
            for (int i = 0; i < columns; ++i)
                names << QString::fromUtf8(sqlite3_column_name(raw, i));
            out += names.join(QLatin1Char(' ')) + QLatin1Char('\n');
        }
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(raw)) == SQLITE_ROW) {
            QStringList values;
            for (int i = 0; i < columns; ++i)
                values << ValueText(raw, i);
            out += values.join(QLatin1Char(' ')) + QLatin1Char('\n');
        }
        if (code != SQLITE_DONE)
            return out + Error(RisErrorOfSqlite(db, statement));
        if (columns == 0 && sqlite3_stmt_readonly(raw) == 0 && sqlite3_changes(db) > 0)
            out += RisText(rismsg::RowsProcessed, {QString::number(sqlite3_changes(db))}) + QLatin1Char('\n');
        return out;
    }

    static QString ValueText(sqlite3_stmt *statement, int column)
    {
        const char *declared = sqlite3_column_decltype(statement, column);
        const RisType type = RisType::Of(declared ? QString::fromUtf8(declared) : QStringLiteral("char(240)"));
        QVariant value;
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return QStringLiteral("NULL");
        case SQLITE_INTEGER:
            value = qint64(sqlite3_column_int64(statement, column));
            break;
        case SQLITE_FLOAT:
            value = sqlite3_column_double(statement, column);
            break;
        default:
            value = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)));
        }
        return fx::FromWindows1252(type.FreeValue(value));
    }

    SiteLayout m_site;
    std::unique_ptr<fx::SqliteDb> m_db;
    QString m_schema;
    int m_errors = 0;
};

QByteArray ReadInput(const QString &path)
{
    QFile file;
    const bool open = path.isEmpty() ? file.open(stdin, QIODevice::ReadOnly) : (file.setFileName(path), file.open(QIODevice::ReadOnly));
    if (!open)
        fx::Raise(rismsg::CannotOpenFile, {path});
    return file.readAll();
}

} // namespace

int RunRisBatch(const QStringList &arguments)
{
    if (IsToolMissing("risbatch"))
        return 127;
    QStringList args = arguments;
    const SiteLayout site = TakeSite(args);
    QString inputPath, outputPath;
    for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("-i"))
            inputPath = args.at(i + 1);
        else if (args.at(i) == QLatin1String("-o"))
            outputPath = args.at(i + 1);
        else
            fx::Raise(rismsg::Usage, {QStringLiteral("risbatch"), QStringLiteral("[-i infile] [-o outfile]")});
    }
    QFile output;
    const bool open = outputPath.isEmpty() ? output.open(stdout, QIODevice::WriteOnly)
                                           : (output.setFileName(outputPath), output.open(QIODevice::WriteOnly | QIODevice::Truncate));
    if (!open)
        fx::Raise(rismsg::CannotOpenFile, {outputPath});
    RisBatch batch(site);
    for (const QString &statement : SplitStatements(fx::FromWindows1252(ReadInput(inputPath)))) {
        output.write(fx::ToWindows1252(batch.Run(statement)));
        output.flush();
    }
    return batch.Errors() == 0 ? 0 : 1;
}

} // namespace pdssim

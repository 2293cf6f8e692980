// The RIS command-line tools: every run is a scratch input, a scratch output, the tool, a wait
// for its files and a check of what it wrote.

#include "pds/cris.h"

#include "frame/execa.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/filewait.h"
#include "frame/log.h"
#include "frame/paths.h"
#include "frame/registry.h"
#include "frame/tempdir.h"
#include "frame/windows1252.h"
#include "pds/adotypes.h"
#include "pds/messages.h"
#include "pds/risdumpparse.h"
#include "pds/risdumpreader.h"
#include "pds/scratchfiles.h"

#include <QFile>
#include <QRegularExpression>

namespace fx {

namespace {

const QString kRisKey = QStringLiteral("Software\\Intergraph\\RIS");

// The words after the table list that bring views, indexes and grants along.
constexpr char kIndexesAndGrants[] = " view all index  grant ";

void WriteToolInput(const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(ToWindows1252(text)) < 0)
        Raise(msg::FileWriteFailed, {path});
}

QString ReadToolText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return FromWindows1252(file.readAll());
}

// Runs a tool to its end, then insists that at least one of `files` came; the tool's absence
// shows as files that never come. Gives the files that did.
QStringList RunTool(const QString &commandLine, const QStringList &files, const char *notFound,
                    const QString &risPath)
{
    qint64 pid = 0;
    ExecA(commandLine, QString(), 0, &pid, true);
    QStringList arrived;
    for (const QString &file : files) {
        if (IsFileExists(file)) {
            IsFileExistsA(file);
            arrived << file;
        }
    }
    if (arrived.isEmpty())
        Raise(notFound, {risPath});
    return arrived;
}

// Where rislod puts the rows it rejects: beside the log, named after it, so the file that the
// failure names is still there to read. Without a log, in TEMP under a name of its own.
QString KeptBadFile()
{
    const QString log = GetLogFile();
    if (log.trimmed().isEmpty())
        return AddBackslash(GetTempEnvDir()) + QStringLiteral("rislod_") + RandomScratchName() + QStringLiteral(".bad");
    return GetFolderOfPath(log) + GetBaseNameOfPath(log) + QStringLiteral("_rislod.bad");
}

// A tool's table list: "all", or the names given with ";" between them, with blanks between.
QString ToolTableList(const QString &tables)
{
    QStringList names;
    for (const QString &name : tables.split(QLatin1Char(';'))) {
        if (!name.trimmed().isEmpty())
            names << RISName(name);
    }
    return names.isEmpty() ? QStringLiteral("all") : names.join(QLatin1Char(' '));
}

// The command line is read by /bin/sh: within double quotes it still reads these four.
QString ShellDoubleQuoted(const QString &text)
{
    QString escaped;
    for (const QChar ch : text) {
        if (ch == QLatin1Char('"') || ch == QLatin1Char('$') || ch == QLatin1Char('`') || ch == QLatin1Char('\\'))
            escaped += QLatin1Char('\\');
        escaped += ch;
    }
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

// A value put bare into a risbatch statement must not end it; `shown` is what the failure tells.
QString RISStatementValue(const QString &value, const QString &shown)
{
    if (value.contains(QLatin1Char(';')) || value.contains(QLatin1Char('\r')) || value.contains(QLatin1Char('\n')))
        Raise(msg::InvalidDatabaseName, {shown});
    return value;
}

} // namespace

QString RISName(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_#.]*$"));
    const QString trimmed = name.trimmed();
    if (!plain.match(trimmed).hasMatch())
        Raise(msg::InvalidDatabaseName, {name});
    return trimmed;
}

namespace {

// The schema named by a dump's header line, lower-cased; empty if it has none.
QString DumpSchema(CRIS &cris, const QString &dumpFile)
{
    const QStringList schemas = cris.RISDumpGetSchemas(dumpFile);
    return schemas.isEmpty() ? QString() : schemas.first().toLower();
}

// The text after `label` on the first line that holds it, without the ":" or "=" that follows.
QString ValueAfterLabel(const QString &output, const QString &label)
{
    for (const QString &line : output.split(QLatin1Char('\n'))) {
        const qsizetype at = line.indexOf(label, 0, Qt::CaseInsensitive);
        if (at < 0)
            continue;
        QString value = line.mid(at + label.size()).trimmed();
        while (value.startsWith(QLatin1Char(':')) || value.startsWith(QLatin1Char('=')))
            value = value.mid(1).trimmed();
        return value;
    }
    return QString();
}

} // namespace

ColumnDescription DescribeRISColumn(const RISDumpColumn &column)
{
    ColumnDescription description{column.name, column.type, adotype::VarChar, 0};
    static const QRegularExpression sized(QStringLiteral("\\((\\d+)"));
    const QRegularExpressionMatch size = sized.match(column.type);
    // Searched in this order, as the dump types are: "char" before "int" finds "char(8)".
    if (column.type.contains(QLatin1String("char")))
        description.size = size.hasMatch() ? size.captured(1).toLongLong() : 1;
    else if (column.type.contains(QLatin1String("smallint")))
        description.adoType = adotype::SmallInt;
    else if (column.type.contains(QLatin1String("int")))
        description.adoType = adotype::Integer;
    else if (column.type.contains(QLatin1String("decimal")))
        description.adoType = adotype::Numeric;
    else if (column.type.contains(QLatin1String("real")))
        description.adoType = adotype::Single;
    else if (column.type.contains(QLatin1String("double")))
        description.adoType = adotype::Double;
    else if (column.type.contains(QLatin1String("timestamp")))
        description.adoType = adotype::DBTimeStamp;
    else
        description.adoType = adotype::LongVarChar;
    return description;
}

QString CRIS::FindRISPath()
{
    return Frame("CRIS::FindRISPath", [&] {
        if (!RegKeyExists(RegRoot::LocalMachine, kRisKey))
            return QString();
        const QString suffix = QString::fromLatin1(kToolSuffix);
        for (const QString &subKey : RegGetSubKeys(RegRoot::LocalMachine, kRisKey)) {
            if (subKey.trimmed().isEmpty())
                continue;
            const QString key = kRisKey + QLatin1Char('\\') + subKey;
            if (!RegGetValues(RegRoot::LocalMachine, key).contains(QStringLiteral("PathName"), Qt::CaseInsensitive))
                continue;
            const QString folder =
                AddBackslash(AddBackslash(RegGetValue(RegRoot::LocalMachine, key, QStringLiteral("PathName")).text)
                             + QStringLiteral("BIN"));
            if (IsFileExists(folder + QStringLiteral("risunlod") + suffix)
                && IsFileExists(folder + QStringLiteral("risbatch") + suffix))
                return folder;
        }
        return QString();
    });
}

QString CRIS::RunRISBatch(const QString &statements, bool checkErrors)
{
    return Frame("CRIS::RunRISBatch", [&] {
        const QString temp = GetTempDir();
        const ScratchFile input(temp + RandomScratchName() + QStringLiteral(".inp"));
        const ScratchFile output(temp + RandomScratchName() + QStringLiteral(".out"));
        WriteToolInput(input.Path(), statements);
        DeleteFileA(output.Path());
        const QString command = QuotePath(ToolPath("risbatch")) + QStringLiteral(" -i ") + QuotePath(input.Path())
                                + QStringLiteral(" -o ") + QuotePath(output.Path());
        RunTool(command, {output.Path()}, msg::RisbatchNotFound, GetRISPath());
        if (GetFileSize(input.Path()) == 0 || GetFileSize(output.Path()) == 0)
            Raise(msg::RisbatchNotFound, {GetRISPath()});
        if (checkErrors)
            RISGetError(output.Path());
        return ReadToolText(output.Path());
    });
}

void CRIS::RISWrite(const QString &schema, const QString &sql, bool commit)
{
    Frame("CRIS::RISWrite", [&] {
        QString input;
        if (!schema.isEmpty())
            input += QStringLiteral("default schema ") + RISName(schema) + QStringLiteral(";\r\n");
        input += sql;
        if (!sql.endsWith(QLatin1Char(';')))
            input += QLatin1Char(';');
        if (commit)
            input += QStringLiteral("commit;\r\n");
        input += QStringLiteral("\r\nquit;");
        RunRISBatch(input);
    });
}

QStringList CRIS::RISGetSchemas(bool filter)
{
    return Frame("CRIS::RISGetSchemas", [&] {
        const QString output = RunRISBatch(QStringLiteral("show schema names;\r\nquit;"));
        const QString label = QStringLiteral("Schema name:");
        QStringList schemas;
        for (const QString &line : output.split(QLatin1Char('\n'))) {
            const qsizetype at = line.indexOf(label, 0, Qt::CaseInsensitive);
            if (at < 0)
                continue;
            const QString name = line.mid(at + label.size()).trimmed();
            const QString lower = name.toLower();
            // Project schemas of PDS are "pd_" names; "k_" marks the ones that are not.
            if (filter && (!lower.startsWith(QLatin1String("pd_")) || lower.contains(QLatin1String("k_"))))
                continue;
            if (!name.isEmpty())
                schemas << name;
        }
        return schemas;
    });
}

QString CRIS::RISGetSchemaFilePath()
{
    return Frame("CRIS::RISGetSchemaFilePath", [&] {
        return ValueAfterLabel(RunRISBatch(QStringLiteral("show schema file location;\r\nquit;")),
                               QStringLiteral("SCHEMA FILE NAME"));
    });
}

bool CRIS::IsRISSchemaExists(const QString &schema)
{
    return Frame("CRIS::IsRISSchemaExists", [&] {
        return RISGetSchemas(false).contains(schema, Qt::CaseInsensitive);
    });
}

QStringList CRIS::RISGetTables(const QString &schema)
{
    return Frame("CRIS::RISGetTables", [&] {
        const ScratchFile dump(RISUnload(schema, GetTempDir(), QString(), QString(), RISDumpForm::Fixed, false));
        return RISDumpGetTables(dump.Path(), schema);
    });
}

QList<ColumnDescription> CRIS::RISGetCols(const QString &schema, const QString &table)
{
    return Frame("CRIS::RISGetCols", [&] {
        if (table.trimmed().isEmpty())
            Raise(msg::TableNameNotDefined);
        const ScratchFile dump(RISUnload(schema, GetTempDir(), table, QString(), RISDumpForm::Fixed, false));
        QList<ColumnDescription> columns;
        for (const RISDumpColumn &column : risdump::RISDumpGetColumns(dump.Path(), schema, table))
            columns << DescribeRISColumn(column);
        return columns;
    });
}

QString CRIS::RISUnload(const QString &schema, const QString &targetFolder, const QString &tables,
                        const QString &where, RISDumpForm form, bool withData, const QString &dumpFile,
                        bool indexesAndGrants)
{
    return Frame("CRIS::RISUnload", [&] {
        if (schema.trimmed().isEmpty())
            Raise(msg::SchemaNotDefined);
        if (!IsFileExists(targetFolder, true))
            Raise(msg::DirectoryNotExistsColon, {targetFolder});
        QString tableList = ToolTableList(tables);
        // The tool takes the condition as part of the table item; quoted, it stays one argument.
        if (!where.trimmed().isEmpty())
            tableList = ShellDoubleQuoted(tableList + QStringLiteral(" where ") + where);
        const QString dump = dumpFile.isEmpty()
                                 ? AddBackslash(targetFolder) + RandomScratchName() + QStringLiteral(".dmp")
                                 : dumpFile;
        const ScratchFile log(GetTempDir() + RandomScratchName() + QStringLiteral(".log"));
        DeleteFileA(dump);
        QString command = QuotePath(ToolPath("risunlod")) + QStringLiteral(" -m w -o ") + QuotePath(dump)
                          + QStringLiteral(" -f ") + QuotePath(log.Path()) + QStringLiteral(" -s ") + RISName(schema)
                          + QStringLiteral(" table ");
        if (withData)
            command += form == RISDumpForm::Variable ? QStringLiteral("with variable data ") : QStringLiteral("with data ");
        command += tableList;
        if (indexesAndGrants)
            command += kIndexesAndGrants;
        const QStringList arrived = RunTool(command, {dump}, msg::RisunlodNotFound, GetRISPath());
        if (IsFileExists(log.Path()))
            RISGetError(log.Path());
        if (DumpSchema(*this, arrived.first()).isEmpty()) {
            DeleteFileA(dump, false);
            Raise(msg::IncorrectRISDumpFormat);
        }
        return dump;
    });
}

void CRIS::RISLoad(const QString &dumpFile, const QString &schema, const QString &tables, RISLoadMode mode,
                   int commitInterval, const QString &logFile, bool indexesAndGrants)
{
    Frame("CRIS::RISLoad", [&] {
        if (!IsFileExists(dumpFile))
            Raise(msg::RisDumpNotExists, {dumpFile});
        const QString tableList = ToolTableList(tables);
        QString target = schema;
        if (tableList == QLatin1String("all") || target.trimmed().isEmpty()) {
            target = DumpSchema(*this, dumpFile);
            if (target.isEmpty())
                Raise(msg::SchemaNameNotFound);
        }
        const ScratchFile ownLog(logFile.isEmpty() ? GetTempDir() + RandomScratchName() + QStringLiteral(".log")
                                                   : QString());
        const QString log = logFile.isEmpty() ? ownLog.Path() : logFile;
        // A bad file of an earlier load would end the wait for this one at once.
        const QString bad = KeptBadFile();
        DeleteFileA(log);
        DeleteFileA(bad);
        const QString command = QuotePath(ToolPath("rislod")) + QStringLiteral(" -m w -i ") + QuotePath(dumpFile)
                                + QStringLiteral(" -l ") + QuotePath(log) + QStringLiteral(" -b ")
                                + QuotePath(bad) + QStringLiteral(" -c ") + QString::number(commitInterval)
                                + QStringLiteral(" -s ") + RISName(target)
                                + (mode == RISLoadMode::Clear ? QStringLiteral(" clear") : QStringLiteral(" new"))
                                + QStringLiteral(" table with data ") + tableList
                                + (indexesAndGrants ? QString::fromLatin1(kIndexesAndGrants) : QString());
        RunTool(command, {log, bad}, msg::RislodNotFound, GetRISPath());
        if (IsFileExists(bad) && GetFileSize(bad) > 0) {
            WriteLogLine(Banner(QString::fromLatin1(msg::BeginOfBadFile)));
            AppendFileToLog(bad);
            WriteLogLine(Banner(QString::fromLatin1(msg::EndOfBadFile)));
            Raise(msg::RisLoadRowsRejected, {dumpFile, bad});
        }
        DeleteFileA(bad, false);
    });
}

void CRIS::RISClean(const QString &schema)
{
    Frame("CRIS::RISClean", [&] {
        if (schema.trimmed().isEmpty())
            Raise(msg::SchemaNotDefined);
        const ScratchFile output(GetTempDir() + RandomScratchName() + QStringLiteral(".out"));
        const QString command = QuotePath(ToolPath("risclnsr")) + QLatin1Char(' ') + RISName(schema);
        ExecA(command, output.Path(), 0, nullptr, true);
        if (!IsFileExists(output.Path()) || GetFileSize(output.Path()) == 0)
            Raise(msg::RisclnsrNotFound, {GetRISPath()});
        if (!ReadToolText(output.Path()).toLower().contains(QLatin1String("success")))
            Raise(msg::RisCleanFailed);
    });
}

void CRIS::RISGetError(const QString &outputFile)
{
    Frame("CRIS::RISGetError", [&] {
        const QString text = ReadToolText(outputFile);
        if (!text.contains(QLatin1String("**********")))
            return;
        QString plain = text;
        plain.remove(QLatin1Char('\r'));
        auto isBanner = [](const QString &line) {
            const QString trimmed = line.trimmed();
            return trimmed.size() >= 10 && trimmed.count(QLatin1Char('*')) == trimmed.size();
        };
        QStringList blocks;
        QStringList block;
        bool inBlock = false;
        auto closeBlock = [&] {
            if (inBlock && !block.isEmpty())
                blocks << block.join(QStringLiteral("\r\n"));
            block.clear();
        };
        for (const QString &line : plain.split(QLatin1Char('\n'))) {
            if (isBanner(line)) {
                closeBlock();
                inBlock = true;
                continue;
            }
            if (!inBlock || !line.startsWith(QLatin1Char('*')))
                continue;
            // The box's frame goes; what stands inside keeps its columns (the caret line points).
            QString inner = line.mid(1);
            if (inner.endsWith(QLatin1Char('*')))
                inner.chop(1);
            if (inner.startsWith(QLatin1String("   ")))
                inner = inner.mid(3);
            while (inner.endsWith(QLatin1Char(' ')))
                inner.chop(1);
            if (block.isEmpty() && !inner.contains(QLatin1String("RIS Error:")))
                continue;
            if (!inner.isEmpty())
                block << inner;
        }
        closeBlock();
        for (const QString &message : blocks) {
            // An index that exists already is no loss.
            if (message.toUpper().contains(QLatin1String("RIS_E_CREATE_INDEX")))
                continue;
            Raise(msg::ToolMessage, {message});
        }
    });
}

void CRIS::RISCreateSchema(const QStringList &schemas, const QString &dbType, const QString &database,
                           const QString &server, const QString &host, const QString &folder,
                           const QStringList &users, const QStringList &passwords)
{
    Frame("CRIS::RISCreateSchema", [&] {
        const QString type = dbType.toUpper();
        if (type != QLatin1String("ORACLE") && type != QLatin1String("MSSQL"))
            Raise(msg::DbTypeIncorrect);
        if (schemas.size() != users.size() || schemas.size() != passwords.size())
            Raise(msg::SchemaCountMismatch);
        QString statements;
        for (qsizetype i = 0; i < schemas.size(); ++i)
            statements += RISCreateSchemaStatement(schemas.at(i), type, database, server, host, folder, users.at(i),
                                                   passwords.at(i))
                          + QStringLiteral(";\r\n");
        RunRISBatch(statements + QStringLiteral("quit;"));
    });
}

QString RISCreateSchemaStatement(const QString &schema, const QString &dbType, const QString &database,
                                 const QString &server, const QString &host, const QString &folder,
                                 const QString &user, const QString &password)
{
    const QString name = RISName(schema);
    const QString login = RISName(user);
    QString statement = QStringLiteral("CREATE SCHEMA ") + name + QStringLiteral(" ON DATABASE (") + dbType;
    if (dbType == QLatin1String("MSSQL"))
        statement += QStringLiteral(", DBNAME ") + RISStatementValue(database, database);
    statement += QStringLiteral(", OSUSER ") + login + QStringLiteral(", DIR ") + RISStatementValue(folder, folder)
                 + QStringLiteral(", OSTYPE NT, option (dsquery=") + RISStatementValue(server, server)
                 + QStringLiteral("), REMOTE (TCP ") + RISStatementValue(host, host) + QStringLiteral(")) USER ") + login;
    if (!password.isEmpty())
        statement += QLatin1Char('.') + RISStatementValue(password, QStringLiteral("*****"));
    return statement;
}

void CRIS::RISDropSchema(const QStringList &schemas)
{
    Frame("CRIS::RISDropSchema", [&] {
        QString statements;
        for (const QString &schema : schemas)
            statements += QStringLiteral("DROP SCHEMA ") + RISName(schema) + QStringLiteral(" FORCE;\r\n");
        RunRISBatch(statements + QStringLiteral("quit;"));
    });
}

} // namespace fx

#include "pds/cris.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/paths.h"
#include "frame/registry.h"
#include "frame/tempdir.h"
#include "frame/messages.h"
#include "pds/messages.h"
#include "pds/queryimport.h"
#include "pds/scratchfiles.h"
#include "pds/sqlitedb.h"
#include "pds/textfilequery.h"

namespace fx {

namespace {

const QString kInternationalKey = QStringLiteral("Control Panel\\International");

// Sets the number separators for the length of one piece of text-file work.
class LanguageSettingsScope
{
public:
    explicit LanguageSettingsScope(CRIS &cris)
        : m_cris(cris)
    {
        m_cris.SetLanguageSettings();
    }
    ~LanguageSettingsScope()
    {
        try {
            m_cris.RestoreLanguageSettings();
        } catch (const Failure &) {
            // A restore that fails must not hide the failure of the work itself.
        }
    }

private:
    CRIS &m_cris;
};

} // namespace

CRIS &TheCRIS()
{
    static CRIS instance;
    return instance;
}

CRIS::CRIS() = default;

CRIS::~CRIS()
{
    CloseConnection();
    if (!m_tempDir.isEmpty())
        DeleteFolderA(m_tempDir, false);
}

void CRIS::SetUseRIS(const QString &risPath)
{
    Frame("CRIS::SetUseRIS", [&] {
        CloseConnection();
        m_dbConType = DBConType::RIS;
        // Without a path the registry is asked again: another project may name another client.
        if (risPath.isEmpty())
            m_risPath.clear();
        else
            SetRISPath(risPath);
    });
}

DBConType CRIS::GetDBConType()
{
    return Frame("CRIS::GetDBConType", [&] {
        if (m_dbConType == DBConType::Unset)
            SetUseRIS();
        return m_dbConType;
    });
}

QString CRIS::GetRISPath()
{
    return Frame("CRIS::GetRISPath", [&] {
        if (m_risPath.isEmpty())
            SetRISPath();
        return m_risPath;
    });
}

QString CRIS::GetTempDir()
{
    return Frame("CRIS::GetTempDir", [&] {
        // A folder removed under us (TEMP cleaned, a test's sandbox gone) is made anew.
        if (m_tempDir.isEmpty() || !IsFileExists(m_tempDir, true))
            SetTempDir();
        return m_tempDir;
    });
}

void CRIS::SetTempDir(const QString &folder)
{
    Frame("CRIS::SetTempDir", [&] {
        QString base = folder;
        if (base.trimmed().isEmpty() || !IsFileExists(base, true))
            base = GetTempEnvDir();
        if (!IsFileExists(base, true))
            Raise(msg::CrisTempDirMissing);
        const QString privateDir = AddBackslash(AddBackslash(base) + RandomScratchName());
        CreateFolderA(privateDir);
        if (!IsFolderWritable(privateDir))
            Raise(msg::DirectoryWriteDenied, {privateDir});
        if (!m_tempDir.isEmpty())
            DeleteFolderA(m_tempDir, false);
        m_tempDir = privateDir;
    });
}

QString CRIS::ToolPath(const char *tool)
{
    return AddBackslash(GetRISPath()) + QString::fromLatin1(tool) + QString::fromLatin1(kToolSuffix);
}

void CRIS::SetRISPath(const QString &path)
{
    Frame("CRIS::SetRISPath", [&] {
        if (!path.isEmpty()) {
            const QString folder = AddBackslash(path);
            const QString suffix = QString::fromLatin1(kToolSuffix);
            if (!IsFileExists(folder + QStringLiteral("risbatch") + suffix))
                Raise(msg::RisbatchClientNotFound, {path});
            if (!IsFileExists(folder + QStringLiteral("risunlod") + suffix))
                Raise(msg::RisunlodClientNotFound, {path});
            m_risPath = folder;
            return;
        }
        const QString found = FindRISPath();
        if (found.isEmpty())
            Raise(msg::RisClientNotInstalled);
        m_risPath = found;
    });
}

void CheckRISSelect(const QString &schema, const QString &sql)
{
    if (schema.trimmed().isEmpty())
        Raise(msg::SchemaNotDefined);
    if (sql.trimmed().isEmpty())
        Raise(msg::SqlNotDefined);
    // InStr of "SELECT" must be 1: leading blanks make a statement that RIS refuses.
    if (sql.toUpper().indexOf(QLatin1String("SELECT")) != 0)
        Raise(msg::OnlySelectQueries, {sql});
}

ParsedSQL ParseSQL(const QString &sql)
{
    return Frame("CRIS::ParseSQL", [&] {
        if (sql.trimmed().isEmpty())
            Raise(msg::SqlNotDefined);
        const QRegularExpressionMatch match = MatchFromClause(sql);
        if (!match.hasMatch())
            Raise(msg::TableNameNotDefined);
        const qsizetype start = match.capturedEnd();
        qsizetype end = sql.indexOf(QLatin1Char(' '), start);
        if (end < 0)
            end = sql.indexOf(QLatin1Char(';'), start);
        if (end < 0)
            end = sql.size();
        ParsedSQL parsed{sql.mid(start, end - start).trimmed(), sql.mid(end)};
        if (parsed.table.isEmpty())
            Raise(msg::TableNameNotDefined);
        return parsed;
    });
}

QString CRIS::Extract2File(const QString &sql, const QString &schema, QString *rewrittenSql)
{
    return Frame("CRIS::Extract2File", [&] {
        if (sql.trimmed().isEmpty())
            Raise(msg::SqlNotDefined);
        const QString tempDir = GetTempDir();
        if (tempDir.contains(QLatin1Char(' ')) || tempDir.contains(QLatin1Char('.')) || tempDir.contains(QLatin1Char('~')))
            Raise(msg::CrisTempDirNotCorrect, {tempDir});
        if (GetDBConType() != DBConType::RIS) {
            const QString textFile = ADOUnloadAndParse(sql, schema);
            if (rewrittenSql)
                *rewrittenSql = QStringLiteral("SELECT * FROM [") + GetFileNameOfPath(textFile) + QStringLiteral("];");
            return textFile;
        }
        const ParsedSQL parsed = ParseSQL(sql);
        const ScratchFile dump(RISUnload(schema, tempDir, parsed.table));
        const QString textFile = RISDumpParse(dump.Path(), schema, parsed.table);
        if (rewrittenSql)
            *rewrittenSql = TextFileSelect(sql, parsed.table, textFile);
        return textFile;
    });
}

Recordset CRIS::DBRead(const QString &schema, const QString &sql)
{
    return Frame("CRIS::DBRead", [&] {
        const DBConType kind = GetDBConType();
        if (kind != DBConType::RIS) {
            if (sql.trimmed().isEmpty())
                Raise(msg::SqlNotDefined);
            SchemaConnection &connection = Connection();
            connection.UseSchema(schema, false);
            return connection.Read(sql);
        }
        CheckRISSelect(schema, sql);
        QString rewritten;
        const TextFileScratch text(Extract2File(sql, schema, &rewritten));
        const LanguageSettingsScope numbers(*this);
        return ReadTextTable(text.Path(), rewritten);
    });
}

void CRIS::DBWrite(const QString &schema, const QString &sql, bool commit)
{
    // The single colon is how this source has always been spelled in the log.
    Frame("CRIS:DBWrite", [&] {
        const DBConType kind = GetDBConType();
        if (kind == DBConType::RIS && schema.trimmed().isEmpty())
            Raise(msg::SchemaNotDefined);
        if (sql.trimmed().isEmpty())
            Raise(msg::SqlNotDefined);
        if (kind == DBConType::RIS)
            RISWrite(schema, sql, commit);
        else
            ADOWrite(schema, sql, commit);
    });
}

void CRIS::ADOWrite(const QString &schema, const QString &sql, bool commit)
{
    Frame("CRIS::ADOWrite", [&] {
        SchemaConnection &connection = Connection();
        connection.UseSchema(schema, true);
        for (const QString &line : sql.split(QStringLiteral("\r\n"))) {
            if (!line.trimmed().isEmpty())
                connection.Execute(line);
        }
        if (commit)
            connection.Execute(QStringLiteral("commit"));
    });
}

QStringList CRIS::DBGetTables(const QString &schema)
{
    return Frame("CRIS::DBGetTables", [&] {
        if (GetDBConType() == DBConType::RIS)
            return RISGetTables(schema);
        return Connection().Tables(schema);
    });
}

QList<ColumnDescription> CRIS::DBGetCols(const QString &schema, const QString &table)
{
    return Frame("CRIS::DBGetCols", [&] {
        if (GetDBConType() == DBConType::RIS)
            return RISGetCols(schema, table);
        return Connection().Columns(schema, table);
    });
}

bool CRIS::IsTableExists(const QString &schema, const QString &table)
{
    return Frame("CRIS::IsTableExists", [&] {
        return DBGetTables(schema).contains(table, Qt::CaseInsensitive);
    });
}

bool CRIS::IsColumnExists(const QString &schema, const QString &table, const QString &column)
{
    return Frame("CRIS::IsColumnExists", [&] {
        for (const ColumnDescription &description : DBGetCols(schema, table)) {
            if (description.name.compare(column, Qt::CaseInsensitive) == 0)
                return true;
        }
        return false;
    });
}

void CRIS::DBImport2Access(const QString &database, const QString &table, const QString &sql, const QString &schema)
{
    Frame("CRIS::DBImport2Access", [&] {
        if (!IsFileExists(database))
            Raise(msg::AccessDatabaseNotExists, {database});
        if (table.trimmed().isEmpty())
            Raise(msg::TableToExtractNotDefined);
        if (GetDBConType() != DBConType::RIS) {
            SqliteDb store(database);
            SchemaConnection &connection = Connection();
            connection.UseSchema(schema, false);
            ImportQueryInto(connection, sql, store, table);
            return;
        }
        QString rewritten;
        const TextFileScratch text(Extract2File(sql, schema, &rewritten));
        const LanguageSettingsScope numbers(*this);
        ImportTextTable(text.Path(), rewritten, database, table);
    });
}

void CRIS::SetLanguageSettings()
{
    Frame("CRIS::SetLanguageSettings", [&] {
        if (!RegKeyExists(RegRoot::CurrentUser, kInternationalKey))
            return;
        const QStringList names = RegGetValues(RegRoot::CurrentUser, kInternationalKey);
        auto read = [&](const char *name) {
            const QString value = QString::fromLatin1(name);
            return names.contains(value, Qt::CaseInsensitive)
                       ? RegGetValue(RegRoot::CurrentUser, kInternationalKey, value).text
                       : QString();
        };
        if (!m_languageSaved) {
            m_sDecimal = read("sDecimal");
            m_sThousand = read("sThousand");
            m_languageSaved = true;
        }
        if (!m_sDecimal.isEmpty() && m_sDecimal != QLatin1String("."))
            RegSetValue(RegRoot::CurrentUser, kInternationalKey, QStringLiteral("sDecimal"), QStringLiteral("."));
        if (!m_sThousand.isEmpty() && m_sThousand != QLatin1String(","))
            RegSetValue(RegRoot::CurrentUser, kInternationalKey, QStringLiteral("sThousand"), QStringLiteral(","));
    });
}

void CRIS::RestoreLanguageSettings()
{
    Frame("CRIS::RestoreLanguageSettings", [&] {
        if (!m_sDecimal.isEmpty() && m_sDecimal != QLatin1String("."))
            RegSetValue(RegRoot::CurrentUser, kInternationalKey, QStringLiteral("sDecimal"), m_sDecimal);
        if (!m_sThousand.isEmpty() && m_sThousand != QLatin1String(","))
            RegSetValue(RegRoot::CurrentUser, kInternationalKey, QStringLiteral("sThousand"), m_sThousand);
    });
}

} // namespace fx

#include "pds/projectschema.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "frame/unc.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"

#include <QHash>

#include <mutex>
#include <optional>

namespace fx {

namespace {
const QString kSeparator = QStringLiteral("|||");

// The project row as the cache keeps it: server, network folder, seed file name.
struct ProjectRow
{
    QString server;
    QString folder;
    QString seedFile;
};

// Process-wide store of project rows: "k_" + project gives the fields joined by "|||".
class ProjectCache
{
public:
    std::optional<QString> Find(const QString &key)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_values.constFind(key);
        return it == m_values.cend() ? std::nullopt : std::optional<QString>(*it);
    }
    void Insert(const QString &key, const QString &value)
    {
        std::lock_guard lock(m_mutex);
        m_values.insert(key, value);
    }
    void Clear()
    {
        std::lock_guard lock(m_mutex);
        m_values.clear();
    }

private:
    std::mutex m_mutex;
    QHash<QString, QString> m_values;
};

ProjectCache &Cache()
{
    static ProjectCache cache;
    return cache;
}

// RIS knows its schemas by name; the other kinds by the tables a schema holds.
bool IsProjectSchemaExists(CRIS &cris, const QString &schema)
{
    if (cris.GetDBConType() == DBConType::RIS)
        return cris.IsRISSchemaExists(schema);
    return cris.IsTableExists(schema, QStringLiteral("pdtable_102"));
}

QString Text(const Recordset &rows, const char *field)
{
    if (rows.RecordCount() == 0)
        return QString();
    return GetDBvalue(rows, 0, QString::fromLatin1(field), QString()).toString().trimmed();
}

ProjectRow GetProjectRow(CRIS &cris, const QString &project)
{
    const QString key = QStringLiteral("k_") + project;
    if (const std::optional<QString> cached = Cache().Find(key)) {
        const QStringList fields = cached->split(kSeparator);
        return {fields.value(0), fields.value(1), fields.value(2)};
    }
    const QString schema = GetProjectSchema(project);
    if (!IsProjectSchemaExists(cris, schema))
        Raise(msg::ProjectSchemaNotExists);
    const Recordset rows = cris.DBRead(
        schema, QStringLiteral("SELECT network_address, path_name, rdb_file_spec FROM pdtable_102 WHERE type_of_rdb_data=99;"));
    ProjectRow row{Text(rows, "network_address"), Text(rows, "path_name"), Text(rows, "rdb_file_spec")};
    // A blank folder stays blank, for the caller's own message.
    if (!row.folder.isEmpty())
        row.folder = AddBackslash(LocalPath2UNC(row.server, row.folder));
    Cache().Insert(key, QStringList{row.server, row.folder, row.seedFile}.join(kSeparator));
    return row;
}

QString ProjectDirectory(CRIS &cris, const QString &project)
{
    CheckProjectNumber(project);
    const ProjectRow row = GetProjectRow(cris, project);
    if (row.folder.isEmpty())
        Raise(msg::ProjectDirectoryNotDefined);
    if (!IsFileExists(row.folder, true))
        Raise(msg::ProjectDirectoryNotExists, {row.folder});
    return row.folder;
}
} // namespace

QString GetProjectSchema(const QString &project)
{
    return Frame("GetProjectSchema", [&] {
        CheckProjectNumber(project);
        return QStringLiteral("pd_") + project.trimmed();
    });
}

void CheckProjectNumber(const QString &project)
{
    if (project.trimmed().isEmpty())
        Raise(msg::ProjectNumberNotDefined);
}

QString GetProjectDirectory(CRIS &cris, const QString &project)
{
    return Frame("GetProjectDirectory", [&] { return ProjectDirectory(cris, project); });
}

QString GetProjectDirectory(const QString &project)
{
    return GetProjectDirectory(TheCRIS(), project);
}

QString GetProjectDGNFile(CRIS &cris, const QString &project)
{
    return Frame("GetProjectDGNFile", [&] {
        CheckProjectNumber(project);
        const ProjectRow row = GetProjectRow(cris, project);
        if (row.folder.isEmpty() || row.seedFile.isEmpty())
            Raise(msg::ProjectSeedFileNotDefined);
        const QString file = row.folder + row.seedFile;
        if (!IsFileExists(file))
            Raise(msg::ProjectSeedFileNotExists, {file});
        return file;
    });
}

QString GetProjectDGNFile(const QString &project)
{
    return GetProjectDGNFile(TheCRIS(), project);
}

QString GetModelSeedFile(const QString &folder)
{
    return Frame("GetModelSeedFile", [&] {
        const QString file = AddBackslash(folder) + QStringLiteral("mdlsdz.dgn");
        if (!IsFileExists(file))
            Raise(msg::ModelSeedFileNotExists, {file});
        return file;
    });
}

DGNSettings GetModelDGNSettings(CRIS &cris, const QString &project)
{
    return Frame("GetModelDGNSettings", [&] {
        const QString file = GetModelSeedFile(ProjectDirectory(cris, project));
        LogMessage(msg::ReadingDesignFileSettings, {file});
        const DGNSettings settings = ReadDGNSettings(file);
        LogMessage(msg::DesignMasterUnits, {settings.masterUnits});
        LogMessage(msg::DesignSubUnits, {settings.subUnits});
        LogMessage(msg::DesignSubPerMast, {QString::number(settings.subPerMaster)});
        LogMessage(msg::DesignUorPerSub, {QString::number(settings.uorPerSub)});
        return settings;
    });
}

DGNSettings GetModelDGNSettings(const QString &project)
{
    return GetModelDGNSettings(TheCRIS(), project);
}

int GetClashDisciplineNo(CRIS &cris, const QString &project)
{
    return Frame("GetClashDisciplineNo", [&] {
        const Recordset rows = cris.DBRead(GetProjectSchema(project),
                                           QStringLiteral("SELECT rdb_file_spec FROM pdtable_102 WHERE (type_of_rdb_data = 451);"));
        bool isNumber = false;
        const int number = Text(rows, "rdb_file_spec").toInt(&isNumber);
        if (!isNumber)
            Raise(msg::ClashDisciplineNotDefined);
        return number;
    });
}

int GetClashDisciplineNo(const QString &project)
{
    return GetClashDisciplineNo(TheCRIS(), project);
}

void ClearProjectCache()
{
    Cache().Clear();
}

} // namespace fx

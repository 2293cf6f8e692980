#include "store/clashstore.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/messagebox.h"
#include "frame/paths.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/messages.h"
#include "pds/projectdatabase.h"
#include "pds/projectschema.h"
#include "store/clashfile.h"
#include "store/messages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUuid>

#include <cmath>

namespace fx {

namespace {

constexpr char kDefaultMaxDBSize[] = "2147483648";

// The KB figure of a size as the single-precision arithmetic of the original showed it.
QString KiloBytes(double bytes)
{
    return QString::number(std::round(bytes / 1000.0), 'f', 0);
}

bool IsSchemaReachable(CRIS &cris, const QString &schema)
{
    try {
        if (cris.GetDBConType() == DBConType::RIS)
            return cris.IsRISSchemaExists(schema);
        // The other kinds know no schema list: the project row's table stands for the schema.
        return cris.IsTableExists(schema, QStringLiteral("pdtable_102"));
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

QString NewWorkFileName(const char *prefix, const char *extension)
{
    return AddBackslash(Process().WorkDir)
           + QStringLiteral("%1%2_%3%4")
                 .arg(QLatin1String(prefix))
                 .arg(QCoreApplication::applicationPid())
                 .arg(QUuid::createUuid().toString(QUuid::Id128), QLatin1String(extension));
}

ClashStoreState &ClashStore()
{
    static ClashStoreState state;
    return state;
}

QString GetProjectName()
{
    const QString &name = ClashStore().ProjectDefinition.name;
    return name.isEmpty() ? QString::fromLatin1(msg::NoProject) : name;
}

const ProjFile &GetProjectProjFile()
{
    return ClashStore().ProjectDefinition.projFile;
}

QString GetClashFile()
{
    return ClashStore().ClashFile;
}

QString GetWorkDB()
{
    return ClashStore().WorkDB;
}

bool IsSchemaAvailable()
{
    return ClashStore().SchemaAvailable;
}

bool IsReadOnly()
{
    return ClashStore().ReadOnly;
}

bool GetClashesChanged()
{
    return ClashStore().ClashesChanged;
}

void SetClashesChanged(bool changed)
{
    ClashStore().ClashesChanged = changed;
}

SqliteDb &ClashConnection()
{
    return Frame("ClashConnection", [&]() -> SqliteDb & {
        if (!ClashStore().ClashConnection || !ClashStore().ClashConnection->IsOpen())
            Raise(msg::NoProjectOpen);
        return *ClashStore().ClashConnection;
    });
}

bool IsClashFileName(const QString &file)
{
    return QFileInfo(file.trimmed()).suffix().compare(QLatin1String("fxdb"), Qt::CaseInsensitive) == 0;
}

void SetProjectDefinition(const QString &file, const QString &project)
{
    Frame("SetProjectDefinition", [&] {
        ClashStoreState &state = ClashStore();
        ProjectDefinitionRecord definition;
        QString clashFile;
        if (IsClashFileName(file)) {
            if (file.trimmed().isEmpty())
                Raise(msg::ClashFileNotDefined);
            if (!IsValidMDB(file))
                Raise(msg::InvalidClashFile, {file});
            // The file names its project; the caller's is not asked.
            definition.name = GetProjectNumber4MDB(file).trimmed();
            clashFile = file;
            definition.projFile = GetProjFile4MDB(file);
        } else {
            if (file.trimmed().isEmpty())
                Raise(msg::ControlFileNotDefined);
            if (!IsFileExists(file))
                Raise(msg::ControlFileNotExists, {file});
            definition.projFile = GetProjFile(file, true);
            definition.name = project.trimmed();
        }
        if (definition.name.isEmpty())
            Raise(msg::ProjectNumberNotDefined);

        state.ProjectDefinition = definition;
        state.ClashFile = clashFile;
        state.WorkDB = NewWorkFileName("fx", ".fxdb");
        DeleteFileA(state.WorkDB, false);

        bool available = false;
        try {
            UseProjectDatabase(TheCRIS(), GetProjectDatabase(GetUserConfigFile(), definition.name));
            available = IsSchemaReachable(TheCRIS(), GetProjectSchema(definition.name));
        } catch (const std::exception &) {
            available = false;
        }
        state.SchemaAvailable = available;
        if (clashFile.isEmpty() && !available)
            Raise(msg::PdsProjectSchemaNotExists, {definition.name});
        state.ReadOnly = false;
    });
}

void ClearProjectDefinition()
{
    ClashStoreState &state = ClashStore();
    state.ProjectDefinition = {};
    state.ClashFile.clear();
    state.WorkDB.clear();
    state.SchemaAvailable = false;
    state.ReadOnly = false;
}

void FreeClashes()
{
    ClashStoreState &state = ClashStore();
    // Dropping the connection closes it; SQLite keeps no lock file to wait for.
    state.ClashConnection.reset();
    if (!state.WorkDB.isEmpty()) {
        DeleteFileA(state.WorkDB, false);
        for (const char *suffix : {"-journal", "-wal", "-shm"})
            DeleteFileA(state.WorkDB + QLatin1String(suffix), false);
    }
    ClearProjectDefinition();
}

qint64 MaxDBSize()
{
    bool ok = false;
    const qint64 size = GetIniValue(ProgramDir() + QStringLiteral("Fendrix.ini"), QStringLiteral("Settings"),
                                    QStringLiteral("MaxDBSize"), QString::fromLatin1(kDefaultMaxDBSize))
                            .trimmed()
                            .toLongLong(&ok);
    return ok && size > 0 ? size : QString::fromLatin1(kDefaultMaxDBSize).toLongLong();
}

void CheckIfMaxDBSizeIsReached(const QString &database, bool warn)
{
    Frame("CheckIfMaxDBSizeIsReached", [&] {
        const QString file = database.isEmpty() ? ClashStore().WorkDB : database;
        const qint64 limit = MaxDBSize();
        const qint64 size = GetFileSize(file, false);
        if (size > limit)
            Raise(msg::MaxDBSizeReached, {file, KiloBytes(double(limit))});
        const double warnAt = double(limit) * 0.8;
        if (warn && double(size) > warnAt)
            ShowMessage(ArgForm(msg::MaxDBSizeNear, {QStringLiteral("80"), KiloBytes(warnAt), file, QStringLiteral("\n")}),
                        MbIconCritical);
    });
}

} // namespace fx

#include "frame/configkeys.h"

#include "frame/programinfo.h"
#include "frame/recentitem.h"
#include "frame/settings.h"

namespace fx {

QString ReadConfigKey(const QString &file, const ConfigKey &key)
{
    return GetIniValue(file, QString::fromUtf8(key.section), QString::fromUtf8(key.key),
                       QString::fromUtf8(key.defaultValue));
}

void WriteConfigKey(const QString &file, const ConfigKey &key, const QString &value)
{
    SetIniValue(file, QString::fromUtf8(key.section), QString::fromUtf8(key.key), value);
}

namespace {
QString Read(const ConfigKey &key)
{
    return ReadConfigKey(GetConfigFile(), key);
}

void Write(const ConfigKey &key, const QString &value)
{
    WriteConfigKey(GetConfigFile(), key, value);
}

const ConfigKey &UserConfigFileKey(ExecutionModeKind mode)
{
    return mode == ExecutionModeKind::Approve ? configkey::ApproveUserConfigFile : configkey::CheckUserConfigFile;
}

const ConfigKey &OldUserConfigFileKey(ExecutionModeKind mode)
{
    return mode == ExecutionModeKind::Approve ? configkey::ApproveUserConfigFileOld
                                              : configkey::CheckUserConfigFileOld;
}
} // namespace

QString ConfigLanguage()
{
    return Read(configkey::Language);
}

void SetConfigLanguage(const QString &language)
{
    Write(configkey::Language, language);
}

bool ConfigAutoLoad()
{
    return Read(configkey::AutoLoad) != QLatin1String("0");
}

void SetConfigAutoLoad(bool on)
{
    Write(configkey::AutoLoad, on ? QStringLiteral("1") : QStringLiteral("0"));
}

QString ConfigUserConfigFile(ExecutionModeKind mode)
{
    const QString value = Read(UserConfigFileKey(mode));
    return value.isEmpty() ? Read(OldUserConfigFileKey(mode)) : value;
}

void SetConfigUserConfigFile(ExecutionModeKind mode, const QString &path)
{
    Write(UserConfigFileKey(mode), path);
    const ConfigKey &old = OldUserConfigFileKey(mode);
    SetIniValue(GetConfigFile(), QString::fromUtf8(old.section), QString::fromUtf8(old.key), std::nullopt);
}

QString ConfigControlFile()
{
    return GetIniValue(GetConfigFile(), ApplicationTitle(), QString::fromUtf8(configkey::ControlFile));
}

void SetConfigControlFile(const QString &path)
{
    SetIniValue(GetConfigFile(), ApplicationTitle(), QString::fromUtf8(configkey::ControlFile), path);
}

QString ConfigProject(const QString &controlFile)
{
    return GetIniValue(GetConfigFile(), controlFile, QString::fromUtf8(configkey::Project));
}

void SetConfigProject(const QString &controlFile, const QString &project)
{
    SetIniValue(GetConfigFile(), controlFile, QString::fromUtf8(configkey::Project), project);
}

void InitializeRecentProjects(CRecentItem &list)
{
    list.Initialize(GetConfigFile(), QString::fromUtf8(configkey::RecentProjectsSection),
                    configkey::RecentProjectsMax, false);
}

} // namespace fx

#pragma once
// The keys of Config.ini that the frame reads and writes, each declared once with its default,
// and the typed accessors that every caller goes through.

#include "frame/processstate.h"

#include <QString>

namespace fx {

class CRecentItem;

/// A key of a fixed section and its default.
struct ConfigKey
{
    const char *section;
    const char *key;
    const char *defaultValue;
};

/// The key's value in `file`, or its default.
QString ReadConfigKey(const QString &file, const ConfigKey &key);
/// Writes the key's value into `file`.
void WriteConfigKey(const QString &file, const ConfigKey &key, const QString &value);

namespace configkey {
inline constexpr ConfigKey Language{"Language", "Language", "English"};
inline constexpr ConfigKey AutoLoad{"Settings", "AutoLoad", "0"};
// The user config file last used, by execution mode: one key a mode in one section.
inline constexpr ConfigKey ApproveUserConfigFile{"UserConfigFile", "Approve", ""};
inline constexpr ConfigKey CheckUserConfigFile{"UserConfigFile", "Check", ""};
// The same as older settings files hold it: a section a mode. Read when the above is missing,
// and removed when the above is written, so an old value never comes back.
inline constexpr ConfigKey ApproveUserConfigFileOld{"Approve", "UserConfigFile", ""};
inline constexpr ConfigKey CheckUserConfigFileOld{"Check", "UserConfigFile", ""};
/// In the section named after the application's title.
inline constexpr char ControlFile[] = "ControlFile";
/// In the section named after the control file's path.
inline constexpr char Project[] = "Project";
inline constexpr char RecentProjectsSection[] = "RecentProjects";
inline constexpr qint16 RecentProjectsMax = 10;
} // namespace configkey

/// The chosen language ("English" until one is chosen).
QString ConfigLanguage();
void SetConfigLanguage(const QString &language);

/// Whether the last project loads by itself at start; anything but "0" is on.
bool ConfigAutoLoad();
void SetConfigAutoLoad(bool on);

/// The user config file last used in an execution mode (Approve, or Check for any other);
/// settings files of the section-a-mode form read the same.
QString ConfigUserConfigFile(ExecutionModeKind mode);
void SetConfigUserConfigFile(ExecutionModeKind mode, const QString &path);

/// The control file last loaded.
QString ConfigControlFile();
void SetConfigControlFile(const QString &path);

/// The project last chosen from a control file.
QString ConfigProject(const QString &controlFile);
void SetConfigProject(const QString &controlFile, const QString &project);

/// Sets up the recent-projects list of Config.ini.
void InitializeRecentProjects(CRecentItem &list);

} // namespace fx

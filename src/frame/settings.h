#pragma once
// Settings files (.ini) read and written with the Windows private-profile behaviour.

#include <QString>
#include <QStringList>

#include <optional>

namespace fx {

/// Reads one value (value mode) or, with `valueMode` false, the key names of `section` joined
/// by ";". The default comes back when the key is missing or its value is empty. The buffer
/// holds 32,768 characters, or 1,048,576 with `bigBuffer`. Never fails.
QString GetIniValue(const QString &file, const QString &section, const QString &key,
                    const QString &defaultValue = QString(), bool valueMode = true, bool bigBuffer = false);

/// Writes key=value into section. A null value (nullopt) removes the key, a null key the
/// whole section. A failure to write is swallowed, as the private-profile call does.
void SetIniValue(const QString &file, const QString &section, const std::optional<QString> &key,
                 const std::optional<QString> &value);

/// The key names of a section and, unless `namesOnly`, their values, index for index.
void GetIniSection2Array(const QString &file, const QString &section, QStringList &names, QStringList &values,
                         bool namesOnly = false);

/// The per-user configuration folder, with a trailing separator, created if missing.
QString GetConfigDir();

/// The main user config file: GetConfigDir() + "Config.ini".
QString GetConfigFile();

/// Stores the user config file; a blank path stores GetConfigDir() + user name + ".ini".
void SetUserConfigFile(const QString &path);

/// The stored user config file, settling the default on first use.
QString GetUserConfigFile();

/// The logged-on user's name (the effective user on POSIX).
QString GetLogonUserName();

} // namespace fx

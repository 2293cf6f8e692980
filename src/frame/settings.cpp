#include "frame/settings.h"

#include "frame/failure.h"
#include "frame/folders.h"
#include "frame/inifile.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <mutex>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace fx {

namespace {
constexpr qsizetype kValueBuffer = qsizetype(1) << 15;
constexpr qsizetype kListingBuffer = qsizetype(1) << 20;

// What the private-profile read leaves in a buffer of `size` characters: the characters it
// reports as copied. Without a key it lists the section's key names, each followed by NUL;
// a listing too long for the buffer is cut to size - 2 characters, as the Windows call does.
QString GetPrivateProfileString(const QString &file, const QString &section, const std::optional<QString> &key,
                                const QString &defaultValue, qsizetype size)
{
    const auto doc = IniFile::Snapshot(file);
    if (key) {
        const QString value = doc->Value(section, *key).value_or(defaultValue);
        return value.left(size - 1);
    }
    QString listing;
    for (const QString &name : doc->KeyNames(section)) {
        listing += name;
        listing += QChar(0);
    }
    if (listing.size() + 1 > size)
        return listing.left(size - 2);
    return listing;
}

struct UserConfigFileState
{
    std::mutex mutex;
    QString path;
};

UserConfigFileState &StoredUserConfigFile()
{
    static UserConfigFileState state;
    return state;
}

QString NonBlankEnv(const char *name)
{
    return qEnvironmentVariable(name).trimmed();
}
} // namespace

QString GetIniValue(const QString &file, const QString &section, const QString &key, const QString &defaultValue,
                    bool valueMode, bool bigBuffer)
{
    try {
        const qsizetype size = bigBuffer ? kListingBuffer : kValueBuffer;
        const QString buffer =
            GetPrivateProfileString(file, section, valueMode ? std::optional<QString>(key) : std::nullopt,
                                    defaultValue, size);
        // Nothing copied: the key is missing with an empty default, or its value is empty.
        if (buffer.isEmpty())
            return defaultValue;
        QString result = (valueMode ? buffer : buffer.left(buffer.size() - 1)).trimmed();
        result.replace(QChar(0), valueMode ? QString() : QStringLiteral(";"));
        return result;
    } catch (...) {
        // Reading settings is promised never to fail.
        return QString();
    }
}

void SetIniValue(const QString &file, const QString &section, const std::optional<QString> &key,
                 const std::optional<QString> &value)
{
    IniFile::Write(file, section, key, value);
}

void GetIniSection2Array(const QString &file, const QString &section, QStringList &names, QStringList &values,
                         bool namesOnly)
{
    names.clear();
    values.clear();
    const QString listing = GetIniValue(file, section, QString(), QString(), false, true);
    if (listing.isEmpty())
        return;
    names = listing.split(QLatin1Char(';'));
    if (namesOnly)
        return;
    for (const QString &name : std::as_const(names))
        values.append(GetIniValue(file, section, name));
}

QString GetConfigDir()
{
    return Frame("GetConfigDir", [] {
        QString base = NonBlankEnv("APPDATA");
        if (base.isEmpty())
            base = NonBlankEnv("USERPROFILE");
        if (base.isEmpty())
            base = NonBlankEnv("XDG_CONFIG_HOME");
        if (base.isEmpty() && !NonBlankEnv("HOME").isEmpty())
            base = NonBlankEnv("HOME") + QDir::separator() + QStringLiteral(".config");
        if (base.isEmpty())
            Raise(msg::ConfigDirMissing, {base});
        const QString dir = AddBackslash(base) + QStringLiteral("Norvane") + QDir::separator() + ApplicationTitle() +
                            QDir::separator();
        if (!QFileInfo(dir).isDir())
            CreateFolderA(dir);
        return dir;
    });
}

QString GetConfigFile()
{
    return Frame("GetConfigFile", [] { return GetConfigDir() + QStringLiteral("Config.ini"); });
}

void SetUserConfigFile(const QString &path)
{
    Frame("SetUserConfigFile", [&] {
        QString stored = path;
        if (path.trimmed().isEmpty()) {
            stored = GetConfigDir() + GetLogonUserName() + QStringLiteral(".ini");
        } else {
            const QString folder = GetFolderOfPath(path);
            if (folder.isEmpty() || !QFileInfo(folder).isDir())
                Raise(msg::ConfigDirMissing, {folder});
        }
        UserConfigFileState &state = StoredUserConfigFile();
        std::lock_guard lock(state.mutex);
        state.path = stored;
    });
}

QString GetUserConfigFile()
{
    return Frame("GetUserConfigFile", [] {
        UserConfigFileState &state = StoredUserConfigFile();
        {
            std::lock_guard lock(state.mutex);
            if (!state.path.isEmpty())
                return state.path;
        }
        SetUserConfigFile(QString());
        std::lock_guard lock(state.mutex);
        return state.path;
    });
}

QString GetLogonUserName()
{
    return Frame("GetLogonUserName", [] {
        const long hint = ::sysconf(_SC_GETPW_R_SIZE_MAX);
        std::vector<char> buffer(size_t(hint > 0 ? hint : 16384));
        struct passwd entry{};
        struct passwd *found = nullptr;
        int rc = 0;
        while ((rc = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE &&
               buffer.size() < (size_t(1) << 20))
            buffer.resize(buffer.size() * 2);
        if (rc != 0 || !found || !found->pw_name || !*found->pw_name)
            Raise(msg::LoggedOnUserFailed);
        return QString::fromLocal8Bit(found->pw_name);
    });
}

} // namespace fx

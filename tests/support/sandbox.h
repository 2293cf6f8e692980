#pragma once
// A private world for one test: its own TEMP, configuration folder and program folder.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <map>
#include <optional>

namespace fxtest {

/// Sets or clears environment variables and restores them when it goes.
class EnvGuard
{
public:
    EnvGuard() = default;
    EnvGuard(const EnvGuard &) = delete;
    EnvGuard &operator=(const EnvGuard &) = delete;
    ~EnvGuard();
    void Set(const char *name, const QString &value);
    void Unset(const char *name);

private:
    void Remember(const char *name);
    std::map<QByteArray, std::optional<QByteArray>> m_saved;
};

/// A temporary root with temp/, config/ (APPDATA) and program/ (holding a Fendrix.ini);
/// TEMP and APPDATA point into it and the program folder is overridden, all until it goes.
class Sandbox
{
public:
    Sandbox();
    ~Sandbox();

    QString Root() const;        ///< with a trailing separator
    QString Temp() const;        ///< TEMP, with a trailing separator
    QString AppData() const;     ///< APPDATA, with a trailing separator
    QString ProgramDir() const;  ///< the program's folder, with a trailing separator
    EnvGuard &Env() { return m_env; }

    /// Writes `content` to a file below the root and returns its full path.
    QString WriteFile(const QString &relativePath, const QByteArray &content) const;
    /// The whole content of a file.
    static QByteArray ReadFile(const QString &path);

private:
    QTemporaryDir m_dir;
    EnvGuard m_env;
};

} // namespace fxtest

#include "support/sandbox.h"

#include "frame/programinfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>

namespace fxtest {

EnvGuard::~EnvGuard()
{
    for (const auto &[name, value] : m_saved) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

void EnvGuard::Remember(const char *name)
{
    if (m_saved.count(name))
        return;
    m_saved[name] = qEnvironmentVariableIsSet(name) ? std::optional<QByteArray>(qgetenv(name)) : std::nullopt;
}

void EnvGuard::Set(const char *name, const QString &value)
{
    Remember(name);
    qputenv(name, value.toLocal8Bit());
}

void EnvGuard::Unset(const char *name)
{
    Remember(name);
    qunsetenv(name);
}

Sandbox::Sandbox()
{
    QDir root(m_dir.path());
    root.mkpath(QStringLiteral("temp"));
    root.mkpath(QStringLiteral("config"));
    root.mkpath(QStringLiteral("program"));
    WriteFile(QStringLiteral("program/Fendrix.ini"), "[Settings]\n");
    m_env.Set("TEMP", Temp());
    m_env.Set("APPDATA", AppData());
    fx::SetProgramDirOverride(ProgramDir());
}

Sandbox::~Sandbox()
{
    fx::SetProgramDirOverride(QString());
}

QString Sandbox::Root() const
{
    return QDir::toNativeSeparators(m_dir.path()) + QDir::separator();
}

QString Sandbox::Temp() const
{
    return Root() + QStringLiteral("temp") + QDir::separator();
}

QString Sandbox::AppData() const
{
    return Root() + QStringLiteral("config") + QDir::separator();
}

QString Sandbox::ProgramDir() const
{
    return Root() + QStringLiteral("program") + QDir::separator();
}

QString Sandbox::WriteFile(const QString &relativePath, const QByteArray &content) const
{
    const QString path = Root() + relativePath;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        std::abort();
    file.write(content);
    return path;
}

QByteArray Sandbox::ReadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

} // namespace fxtest

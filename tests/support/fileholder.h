#pragma once
// Another process that keeps a file open, as a tool still writing its result does.

#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

namespace fxtest {

/// A shell that opens `path` (for appending, or only for reading) and sleeps holding it until
/// released or gone; the test fails if it could not. Release waits, so the file is free after.
class FileHolder
{
public:
    FileHolder(const QString &path, bool write)
    {
        const QLatin1String open(write ? "exec 3>>\"$1\"" : "exec 3<\"$1\"");
        m_shell.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), open + QLatin1String(" && echo ready && exec sleep 120"), QStringLiteral("sh"), path});
        if (!m_shell.waitForReadyRead(30000) || !m_shell.readAll().startsWith("ready")) // a guard only: it answers at once
            ADD_FAILURE() << "no other process holds " << path.toStdString();
    }
    ~FileHolder() { Release(); }
    void Release() { m_shell.kill(); m_shell.waitForFinished(30000); }

private:
    QProcess m_shell;
};

} // namespace fxtest

#include "support/fileholder.h"

namespace fxtest {

FileHolder::FileHolder(const QString &path, Mode mode)
{
    const QString open = mode == Mode::Write ? QStringLiteral("exec 3>>\"$1\"") : QStringLiteral("exec 3<\"$1\"");
    m_process.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), open + QStringLiteral(" && echo ready && exec sleep 120"), QStringLiteral("sh"), path});
    // A generous guard only: the shell answers at once.
    if (m_process.waitForReadyRead(30000))
        m_holding = m_process.readAll().startsWith("ready");
}

FileHolder::~FileHolder()
{
    Release();
}

void FileHolder::Release()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(30000);
    }
    m_holding = false;
}

} // namespace fxtest

#pragma once
// Another process that keeps a file open, as a tool still writing its result does.

#include <QProcess>
#include <QString>

namespace fxtest {

/// Starts a shell that opens `path` (for appending, or only for reading) and sleeps holding it;
/// returns once the file is open. The process is killed when the holder goes.
class FileHolder
{
public:
    enum class Mode { Write, Read };

    FileHolder(const QString &path, Mode mode);
    FileHolder(const FileHolder &) = delete;
    FileHolder &operator=(const FileHolder &) = delete;
    ~FileHolder();

    /// True once the shell reported the file open.
    bool IsHolding() const { return m_holding; }
    /// Ends the process and waits for it, so the file is free afterwards.
    void Release();

private:
    QProcess m_process;
    bool m_holding = false;
};

} // namespace fxtest

#pragma once
// Scratch files of the gateway: random names, and files that go when their owner goes.

#include <QString>

namespace fx {

/// The tools' file names end so on this platform.
#ifdef Q_OS_WIN
inline constexpr char kToolSuffix[] = ".exe";
#else
inline constexpr char kToolSuffix[] = "";
#endif

/// A random name of eight lower-case letters and digits: no blank, dot or tilde, which RIS refuses.
QString RandomScratchName();

/// A file deleted (errors ignored) when this goes.
class ScratchFile
{
public:
    explicit ScratchFile(QString path = QString());
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;
    ~ScratchFile();
    const QString &Path() const { return m_path; }

private:
    QString m_path;
};

/// A text file with its section in the Schema.ini beside it; both go when this goes.
class ScratchTextTable
{
public:
    explicit ScratchTextTable(QString textFile);
    ScratchTextTable(const ScratchTextTable &) = delete;
    ScratchTextTable &operator=(const ScratchTextTable &) = delete;
    ~ScratchTextTable();
    const QString &Path() const { return m_path; }

private:
    QString m_path;
};

} // namespace fx

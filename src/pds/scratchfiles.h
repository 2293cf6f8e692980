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

/// A text file in a temporary folder and its Schema.ini section: both are removed when it goes,
/// unless Keep() was called.
class TextFileScratch
{
public:
    explicit TextFileScratch(QString textFile = QString());
    TextFileScratch(const TextFileScratch &) = delete;
    TextFileScratch &operator=(const TextFileScratch &) = delete;
    ~TextFileScratch();

    const QString &Path() const { return m_path; }
    /// Leaves the file and its section in place; gives the file.
    QString Keep();

private:
    QString m_path;
};

} // namespace fx

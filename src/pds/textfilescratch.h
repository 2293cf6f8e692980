#pragma once
// Temporary text files of the text-file route, gone again on every way out.

#include <QString>

namespace fx {

/// A random file base name of eight letters and digits, without extension.
QString RandomBaseName();

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

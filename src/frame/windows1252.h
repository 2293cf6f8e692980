#pragma once
// The Windows-1252 code page: the single-byte text of files and tools written on Windows.

#include <QByteArray>
#include <QString>

namespace fx {

/// Decodes Windows-1252. The five bytes the code page leaves undefined become the control
/// characters of the same number, so every byte string decodes and encodes back unchanged.
QString FromWindows1252(const QByteArray &bytes);

/// Encodes to Windows-1252; a character the code page cannot hold becomes "?".
QByteArray ToWindows1252(const QString &text);

} // namespace fx

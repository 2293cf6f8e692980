#pragma once
// The usage text of the command line.

#include <QString>
#include <QStringList>

namespace fx {

/// The usage text as a console script of "@echo" lines.
QStringList BuildUsageScript(const QString &title, const QString &commandLine, bool incorrect,
                             const QString &exeName);

/// What a console shows when it runs such a script: "@echo " dropped, "@echo." an empty
/// line, "@echo ON" and "@pause" left out.
QStringList RenderEchoScript(const QStringList &script);

/// Writes the usage text to standard output.
void ShowUsage(const QString &title, const QString &commandLine, bool incorrect);

} // namespace fx

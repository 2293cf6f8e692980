#pragma once
// Reading the program's log in a test.

#include "frame/fileops.h"
#include "frame/log.h"
#include "frame/translation.h"

#include <QString>

namespace fxtest {

/// How often the current log holds `text` (in argument form) as the whole text of a line.
inline int LogLineCount(const QString &text)
{
    const QString line = QStringLiteral("  ") + fx::FillMessageArgs(text);
    int count = 0;
    for (const QString &logLine : fx::ReadFile2Array(fx::GetLogFile(), false))
        count += logLine.endsWith(line) ? 1 : 0;
    return count;
}

} // namespace fxtest

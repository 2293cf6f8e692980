#pragma once
// Running a tool through a one-line shell script, its output appended to a file.

#include <QString>

namespace fx {

/// Runs `commandLine` by a script of one line, `commandLine >> outputFile 2>&1`, in a process
/// of its own that outlives nothing of ours (no pipes, reaped by the system). The process id
/// goes to `pid` if given. With `wait`, returns once the process is gone, letting events run
/// meanwhile. `windowStyle` has no meaning on POSIX and is kept for callers' sake.
/// An empty `outputFile` leaves the tool's output unredirected (to nowhere).
void ExecA(const QString &commandLine, const QString &outputFile, int windowStyle = 0, qint64 *pid = nullptr,
           bool wait = false);

/// The text in single quotes for /bin/sh, every character kept literal (a quote inside is
/// closed, escaped and reopened).
QString ShellQuote(const QString &text);

/// True while a process with this id runs; a process that has ended but is not yet reaped is gone.
bool IsProcessRunning(qint64 pid);

} // namespace fx

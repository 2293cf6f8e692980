#pragma once
// The process's log: one text file under TEMP, each line stamped to the hundredth of a second.

#include <QString>
#include <QStringList>

namespace fx {

/// Opens the log, or moves the running start-up log to a new name (see log.cpp).
void InitLog(const QString &description, const QString &logName, const QString &logFile);

/// The current log file; empty until InitLog ran, and then nothing is written.
QString GetLogFile();

/// One stamped line into the log file only. Never fails.
void WriteLogLine(const QString &text);

/// Copies a text file into the log between two banners. Never fails.
void AppendFileToLog(const QString &path);

/// A banner line of 120 columns around `text`.
QString Banner(const QString &text);

/// The header written at the top of a new log.
QStringList LogHeader(const QString &description);

/// One environment entry "NAME=VALUE" as the header lists it.
QString EnvironmentLine(const QString &entry);

/// The line end of the log and of files the program writes for people to read.
QString TextLineEnd();

} // namespace fx

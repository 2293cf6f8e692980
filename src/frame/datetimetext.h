#pragma once
// Dates and times as the log and the event list show them.

#include <QDateTime>
#include <QString>

namespace fx {

/// The locale's short date and its time with seconds (the "general date" of the log header).
QString GeneralDateText(const QDateTime &when);

/// The log line's stamp: "yyyy-mm-dd hh:mm:ss" and "." and the hundredths of the second.
QString LogStamp(const QDateTime &when);

} // namespace fx

#pragma once
// The date forms of the program: the project schema keeps times as seconds since 1 January
// 1970 UTC, the local store as local dates ('YYYY-MM-DD HH:MM:SS').
//
// Every conversion uses one bias, the reader's offset from UTC in force at the moment of the
// operation (daylight time included), so that a date read and written back gives the same
// second count even when the date itself lies in the other season.

#include <QDateTime>
#include <QString>

namespace fx {

/// Minutes east of UTC on this computer now, daylight time included (-90 for 1:30 west).
int GetTimeZoneBias();

/// The local date of a second count: 1 January 1970 + seconds + bias. A count below 1 is no
/// date (a null QDateTime). The result carries the bias as its fixed offset, so its date()
/// and time() are the reader's wall clock and its toSecsSinceEpoch() the count.
QDateTime GetTimeStamp2Date(qint64 seconds);
QDateTime GetTimeStamp2Date(qint64 seconds, int bias);

/// The second count of a local date: the seconds from 1 January 1970 to its wall clock
/// (date() and time(), whatever its time spec), less the bias.
qint64 GetDate2TimeStamp(const QDateTime &date);
qint64 GetDate2TimeStamp(const QDateTime &date, int bias);

/// What follows an expression of UTC seconds to make it the reader's local seconds (the wall
/// clock counted from 1970): "-" for a negative bias, "+" otherwise, then the absolute bias as
/// " (h * 3600 + m * 60)". Plain integer arithmetic, which the store and every kind of
/// project database take as it stands.
QString GetTimeStamp2DateSqlForm();
QString GetTimeStamp2DateSqlForm(int bias);

/// What follows an expression of local seconds to make it UTC seconds: the reverse sign and the
/// same " (h * 3600 + m * 60)".
QString GetDate2TimeStampSqlForm();
QString GetDate2TimeStampSqlForm(int bias);

/// The local store's expression for the date of a column of UTC seconds: its date text. The
/// caller keeps 0 apart, as a count of 0 is no date.
QString GetTimeStamp2DateSql(const QString &column);
QString GetTimeStamp2DateSql(const QString &column, int bias);

/// The local store's expression for the UTC seconds of a column of store dates.
QString GetDate2TimeStampSql(const QString &column);
QString GetDate2TimeStampSql(const QString &column, int bias);

/// A date as the local store's literal: 'YYYY-MM-DD HH:MM:SS', which compares as a date there
/// whatever the locale.
QString GetDateSqlForm(const QDateTime &date);

} // namespace fx

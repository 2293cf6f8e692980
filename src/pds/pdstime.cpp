#include "pds/pdstime.h"

#include "pds/jetfunctions.h"

#include <QTimeZone>

namespace fx {

namespace {
constexpr qint64 kSecondsPerMinute = 60;

// " (h * 3600 + m * 60)" of the absolute bias: whole hours, then the minutes left.
QString OffsetLiteral(int bias)
{
    const int minutes = bias < 0 ? -bias : bias;
    return QStringLiteral(" (%1 * 3600 + %2 * 60)").arg(minutes / 60).arg(minutes % 60);
}
} // namespace

int GetTimeZoneBias()
{
    return QTimeZone::systemTimeZone().offsetFromUtc(QDateTime::currentDateTimeUtc()) / 60;
}

QDateTime GetTimeStamp2Date(qint64 seconds)
{
    return GetTimeStamp2Date(seconds, GetTimeZoneBias());
}

QDateTime GetTimeStamp2Date(qint64 seconds, int bias)
{
    if (seconds < 1)
        return QDateTime();
    return QDateTime::fromSecsSinceEpoch(seconds, QTimeZone(int(bias * kSecondsPerMinute)));
}

qint64 GetDate2TimeStamp(const QDateTime &date)
{
    return GetDate2TimeStamp(date, GetTimeZoneBias());
}

qint64 GetDate2TimeStamp(const QDateTime &date, int bias)
{
    // The wall clock read as if it were UTC counts the local seconds; a local time that falls
    // into a daylight-saving gap still counts as written.
    const qint64 localSeconds = QDateTime(date.date(), date.time(), Qt::UTC).toSecsSinceEpoch();
    return localSeconds - bias * kSecondsPerMinute;
}

QString GetTimeStamp2DateSqlForm()
{
    return GetTimeStamp2DateSqlForm(GetTimeZoneBias());
}

QString GetTimeStamp2DateSqlForm(int bias)
{
    return (bias < 0 ? QStringLiteral(" -") : QStringLiteral(" +")) + OffsetLiteral(bias);
}

QString GetDate2TimeStampSqlForm()
{
    return GetDate2TimeStampSqlForm(GetTimeZoneBias());
}

QString GetDate2TimeStampSqlForm(int bias)
{
    return (bias < 0 ? QStringLiteral(" +") : QStringLiteral(" -")) + OffsetLiteral(bias);
}

QString GetTimeStamp2DateSql(const QString &column)
{
    return GetTimeStamp2DateSql(column, GetTimeZoneBias());
}

QString GetTimeStamp2DateSql(const QString &column, int bias)
{
    return QStringLiteral("datetime(%1%2, 'unixepoch')").arg(column, GetTimeStamp2DateSqlForm(bias));
}

QString GetDate2TimeStampSql(const QString &column)
{
    return GetDate2TimeStampSql(column, GetTimeZoneBias());
}

QString GetDate2TimeStampSql(const QString &column, int bias)
{
    // strftime('%s') reads the store's local text as if it were UTC: the local seconds.
    return QStringLiteral("(CAST(strftime('%s', %1) AS INTEGER)%2)").arg(column, GetDate2TimeStampSqlForm(bias));
}

QString GetDateSqlForm(const QDateTime &date)
{
    return JetDateLiteral(date);
}

} // namespace fx

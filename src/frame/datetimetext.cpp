#include "frame/datetimetext.h"

#include <QLocale>

namespace fx {

QString GeneralDateText(const QDateTime &when)
{
    const QLocale locale = QLocale::system();
    QString timeFormat = locale.timeFormat(QLocale::LongFormat);
    // The long format ends in the zone's name; the general date shows none.
    timeFormat.remove(QLatin1Char('t'));
    return locale.toString(when.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           when.time().toString(timeFormat.trimmed());
}

QString LogStamp(const QDateTime &when)
{
    // The hundredths are the last two digits of the seconds since midnight written "#0.00";
    // like that format, they round, so .996 shows as .00.
    const qint64 hundredths = (when.time().msecsSinceStartOfDay() + 5) / 10;
    const QString seconds = QString::number(hundredths / 100.0, 'f', 2);
    return when.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QLatin1Char('.') + seconds.right(2);
}

} // namespace fx

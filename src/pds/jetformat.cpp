#include "pds/jetformat.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fx {

namespace {

// A date and a time of day without a time zone: the store's dates are wall-clock text, and a
// time in a daylight-saving gap must survive formatting unchanged.
struct Moment
{
    QDate date;
    QTime time;
    bool IsValid() const { return date.isValid() && time.isValid(); }
};

const QDate kJetDayZero(1899, 12, 30);

Moment MomentOfSerial(double serial)
{
    const double day = std::trunc(serial);
    qint64 seconds = std::llround(std::fabs(serial - day) * 86400.0);
    QDate date = kJetDayZero.addDays(qint64(day));
    if (seconds >= 86400) {
        date = date.addDays(1);
        seconds -= 86400;
    }
    return {date, QTime(0, 0).addSecs(int(seconds))};
}

Moment MomentOfText(const QString &text)
{
    const QString trimmed = text.trimmed();
    const qsizetype split = trimmed.indexOf(QRegularExpression(QStringLiteral("[ T]")));
    const QString datePart = split < 0 ? trimmed : trimmed.left(split);
    const QString timePart = split < 0 ? QString() : trimmed.mid(split + 1).trimmed();
    Moment moment;
    moment.date = QDate::fromString(datePart, QStringLiteral("yyyy-MM-dd"));
    if (!moment.date.isValid())
        moment.date = QDate::fromString(datePart, QStringLiteral("M/d/yyyy"));
    moment.time = QTime(0, 0);
    if (!timePart.isEmpty()) {
        moment.time = QTime::fromString(timePart, QStringLiteral("H:mm:ss"));
        if (!moment.time.isValid())
            moment.time = QTime::fromString(timePart, QStringLiteral("H:mm"));
    }
    return moment;
}

// |value| as Format sees a Double: its 15 significant decimal digits, the decimal point
// standing after `pointAt` of them (which may lie outside the digits).
struct Digits
{
    QByteArray digits;
    int pointAt = 0;
};

Digits DigitsOf(double value)
{
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    Digits result;
    result.digits.append(buffer[0]);
    result.digits.append(buffer + 2, 14);
    result.pointAt = std::atoi(std::strchr(buffer, 'e') + 1) + 1;
    return result;
}

// Cuts the digits after `decimals` places behind the point, a dropped 5 or more rounding up:
// Format rounds halves away from zero, unlike CLng and CInt.
void RoundAwayFromZero(Digits &number, int decimals)
{
    const int keep = number.pointAt + decimals;
    if (keep >= number.digits.size())
        return;
    if (keep < 0) {
        number.digits.clear();
        return;
    }
    const bool up = number.digits.at(keep) >= '5';
    number.digits.truncate(keep);
    if (!up)
        return;
    int i = keep - 1;
    for (; i >= 0 && number.digits.at(i) == '9'; --i)
        number.digits[i] = '0';
    if (i >= 0) {
        number.digits[i] = char(number.digits.at(i) + 1);
    } else {
        number.digits.prepend('1');
        ++number.pointAt;
    }
}

struct NumberPattern
{
    int minIntegerDigits = 0;
    int minDecimals = 0;
    int maxDecimals = 0;
    bool point = false;
    bool grouping = false;
};

std::optional<NumberPattern> ParseNumberPattern(const QString &pattern)
{
    static const QRegularExpression shape(QStringLiteral("^[#0,]*(\\.[#0]*)?$"));
    if (pattern.isEmpty() || !shape.match(pattern).hasMatch())
        return std::nullopt;
    NumberPattern result;
    const qsizetype point = pattern.indexOf(QLatin1Char('.'));
    const QString integerPart = point < 0 ? pattern : pattern.left(point);
    result.point = point >= 0;
    result.minIntegerDigits = int(integerPart.count(QLatin1Char('0')));
    result.grouping = integerPart.contains(QLatin1Char(','));
    if (result.point) {
        const QString fraction = pattern.mid(point + 1);
        result.maxDecimals = int(fraction.size());
        result.minDecimals = int(fraction.lastIndexOf(QLatin1Char('0')) + 1);
    }
    return result;
}

QString FormatNumber(double value, const NumberPattern &pattern)
{
    Digits number = DigitsOf(value);
    RoundAwayFromZero(number, pattern.maxDecimals);
    QString integer;
    for (int i = 0; i < number.pointAt; ++i)
        integer += QLatin1Char(i < number.digits.size() ? number.digits.at(i) : '0');
    while (integer.startsWith(QLatin1Char('0')))
        integer.remove(0, 1);
    if (integer.size() < pattern.minIntegerDigits)
        integer.prepend(QString(pattern.minIntegerDigits - integer.size(), QLatin1Char('0')));
    if (pattern.grouping) {
        for (qsizetype at = integer.size() - 3; at > 0; at -= 3)
            integer.insert(at, QLatin1Char(','));
    }
    QString fraction;
    for (int i = 0; i < pattern.maxDecimals; ++i) {
        const int index = number.pointAt + i;
        fraction += QLatin1Char(index >= 0 && index < number.digits.size() ? number.digits.at(index) : '0');
    }
    while (fraction.size() > pattern.minDecimals && fraction.endsWith(QLatin1Char('0')))
        fraction.chop(1);
    // The sign stays on a negative number that rounds to zero: Format(-0.4, "0") is "-0".
    QString text = std::signbit(value) && value != 0.0 ? QStringLiteral("-") : QString();
    text += integer;
    if (pattern.point)
        text += QLatin1Char('.') + fraction;
    return text;
}

bool IsDatePattern(const QString &pattern)
{
    static const QRegularExpression letters(QStringLiteral("[ymdhns]"), QRegularExpression::CaseInsensitiveOption);
    return letters.match(pattern).hasMatch();
}

QString Padded(int value, int width)
{
    return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
}

// The next date letter after position `from`, skipping literals; 0 if none.
QChar NextDateLetter(const QString &pattern, qsizetype from)
{
    for (qsizetype i = from; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i).toLower();
        if (QStringLiteral("ymdhns").contains(c))
            return c;
    }
    return QChar();
}

QString FormatMoment(const Moment &moment, const QString &pattern)
{
    const QLocale english = QLocale::c();
    QString text;
    QChar previousLetter;
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern.at(i).toLower();
        if (c == QLatin1Char('\\') && i + 1 < pattern.size()) {
            text += pattern.at(i + 1);
            i += 2;
            continue;
        }
        if (c == QLatin1Char('"')) {
            const qsizetype end = pattern.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype stop = end < 0 ? pattern.size() : end;
            text += pattern.mid(i + 1, stop - i - 1);
            i = stop + 1;
            continue;
        }
        if (!QStringLiteral("ymdhns").contains(c)) {
            text += pattern.at(i++);
            continue;
        }
        qsizetype run = 1;
        while (i + run < pattern.size() && pattern.at(i + run).toLower() == c)
            ++run;
        const QDate &date = moment.date;
        const QTime &time = moment.time;
        switch (c.unicode()) {
        case 'y':
            text += run >= 3 ? Padded(date.year(), 4) : run == 2 ? Padded(date.year() % 100, 2) : QString::number(date.dayOfYear());
            break;
        case 'm':
            // Format reads "m" next to an hour or before a second as minutes.
            if (run <= 2 && (previousLetter == QLatin1Char('h') || NextDateLetter(pattern, i + run) == QLatin1Char('s')))
                text += Padded(time.minute(), int(run));
            else if (run <= 2)
                text += Padded(date.month(), int(run));
            else
                text += english.monthName(date.month(), run == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case 'd':
            if (run <= 2)
                text += Padded(date.day(), int(run));
            else
                text += english.dayName(date.dayOfWeek(), run == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case 'h': text += Padded(time.hour(), int(qMin<qsizetype>(run, 2))); break;
        case 'n': text += Padded(time.minute(), int(qMin<qsizetype>(run, 2))); break;
        case 's': text += Padded(time.second(), int(qMin<qsizetype>(run, 2))); break;
        default: break;
        }
        previousLetter = c;
        i += run;
    }
    return text;
}

QString PlainText(const QVariant &value)
{
    if (value.typeId() == QMetaType::Double)
        return JetNumberText(value.toDouble());
    return value.toString();
}

} // namespace

QString JetNumberText(double value)
{
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
        return QString::number(qint64(value));
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15G", value);
    return QString::fromLatin1(buffer);
}

std::optional<double> JetNumberOfText(const QString &text)
{
    bool ok = false;
    const double value = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QVariant JetFormat(const QVariant &value, const QString &pattern)
{
    if (value.isNull())
        return QVariant();
    const bool isNumber = value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int
        || value.typeId() == QMetaType::Double;
    if (const std::optional<NumberPattern> numberPattern = ParseNumberPattern(pattern)) {
        const std::optional<double> number = isNumber ? value.toDouble() : JetNumberOfText(value.toString());
        return number ? FormatNumber(*number, *numberPattern) : PlainText(value);
    }
    if (IsDatePattern(pattern)) {
        const Moment moment = isNumber ? MomentOfSerial(value.toDouble()) : MomentOfText(value.toString());
        return moment.IsValid() ? FormatMoment(moment, pattern) : PlainText(value);
    }
    return PlainText(value);
}

QString JetDateText(const QDateTime &dateTime)
{
    return dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QDateTime JetDateFromText(const QString &text)
{
    const Moment moment = MomentOfText(text);
    return moment.IsValid() ? QDateTime(moment.date, moment.time) : QDateTime();
}

QDateTime JetDateFromSerial(double serial)
{
    const Moment moment = MomentOfSerial(serial);
    return QDateTime(moment.date, moment.time);
}

} // namespace fx

#include "pdssim/ristypes.h"

#include "frame/windows1252.h"

#include <QDateTime>
#include <QRegularExpression>

#include <cstdio>
#include <limits>

namespace pdssim {

namespace {

QByteArray Printed(const char *format, double value)
{
    char buffer[64];
    const int length = std::snprintf(buffer, sizeof buffer, format, value);
    return QByteArray(buffer, qBound(0, length, int(sizeof buffer) - 1));
}

QByteArray DecimalText(double value, int scale)
{
    char buffer[96];
    const int length = std::snprintf(buffer, sizeof buffer, "%.*f", scale, value);
    return QByteArray(buffer, qBound(0, length, int(sizeof buffer) - 1));
}

// A stored timestamp in the dump's form; what does not read as one is written as it stands.
QByteArray TimestampText(const QString &stored)
{
    for (const char *format : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss", "yyyy-MM-dd:HH:mm:ss", "yyyy-MM-dd"}) {
        const QDateTime time = QDateTime::fromString(stored.left(19), QString::fromLatin1(format));
        if (time.isValid())
            return time.toString(QStringLiteral("yyyy-MM-dd:HH:mm:ss")).toLatin1();
    }
    return fx::ToWindows1252(stored);
}

} // namespace

RisType RisType::Of(const QString &declared)
{
    const QString type = declared.toLower();
    static const QRegularExpression sizes(QStringLiteral("\\(\\s*(\\d+)\\s*(?:,\\s*(\\d+)\\s*)?\\)"));
    const QRegularExpressionMatch match = sizes.match(type);
    RisType result;
    // In this order, as "char" holds no "int" but "smallint" does.
    if (type.contains(QLatin1String("char"))) {
        result.kind = Char;
        result.size = match.hasMatch() ? qMax(1, match.captured(1).toInt()) : 1;
    } else if (type.contains(QLatin1String("smallint"))) {
        result.kind = SmallInt;
    } else if (type.contains(QLatin1String("int"))) {
        result.kind = Int;
    } else if (type.contains(QLatin1String("decimal"))) {
        result.kind = Decimal;
        result.size = match.hasMatch() ? match.captured(1).toInt() : 15;
        result.scale = match.hasMatch() ? match.captured(2).toInt() : 0;
    } else if (type.contains(QLatin1String("double"))) {
        result.kind = Double;
    } else if (type.contains(QLatin1String("real"))) {
        result.kind = Real;
    } else if (type.contains(QLatin1String("timestamp"))) {
        result.kind = Timestamp;
    }
    return result;
}

int RisType::FixedWidth() const
{
    switch (kind) {
    case SmallInt: return 6;
    case Int: return 11;
    case Double: return 23;
    case Real: return 14;
    case Decimal: return size + 2;
    case Timestamp: return 19;
    case Char: return size;
    }
    return size;
}

QByteArray RisType::FreeValue(const QVariant &value) const
{
    if (value.isNull())
        return QByteArray();
    // SQLite keeps what it is given: a text in a number column is written as it stands.
    const bool number = value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
    switch (kind) {
    case SmallInt:
    case Int:
        return number ? QByteArray::number(value.toLongLong()) : fx::ToWindows1252(value.toString());
    case Double:
        return number ? Printed("%.15g", value.toDouble()) : fx::ToWindows1252(value.toString());
    case Real:
        return number ? Printed("%.7g", value.toDouble()) : fx::ToWindows1252(value.toString());
    case Decimal:
        return number ? DecimalText(value.toDouble(), scale) : fx::ToWindows1252(value.toString());
    case Timestamp:
        return TimestampText(value.toString());
    case Char:
        break;
    }
    QByteArray text = fx::ToWindows1252(value.toString());
    text.replace('\'', "''").replace('\r', ' ').replace('\n', ' ');
    return '\'' + text + '\'';
}

QByteArray RisType::FixedField(const QVariant &value) const
{
    const int width = FixedWidth();
    QByteArray text;
    if (!value.isNull()) {
        if (kind == Char) {
            text = fx::ToWindows1252(value.toString());
            text.replace('\r', ' ').replace('\n', ' ');
        } else {
            text = FreeValue(value);
        }
    }
    return text.leftJustified(width, ' ', true);
}

bool RisType::Parse(const QString &text, QVariant &value) const
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) {
        value = QVariant();
        return true;
    }
    bool ok = false;
    switch (kind) {
    case SmallInt:
    case Int: {
        const qint64 number = trimmed.toLongLong(&ok);
        const qint64 limit = kind == SmallInt ? 32767 : std::numeric_limits<qint32>::max();
        if (!ok || number > limit || number < -limit - 1)
            return false;
        value = number;
        return true;
    }
    case Double:
    case Real:
    case Decimal: {
        const double number = trimmed.toDouble(&ok);
        if (ok)
            value = number;
        return ok;
    }
    case Timestamp: {
        for (const char *format : {"yyyy-MM-dd:HH:mm:ss", "yyyy-MM-dd HH:mm:ss"}) {
            const QDateTime time = QDateTime::fromString(trimmed, QString::fromLatin1(format));
            if (time.isValid()) {
                value = time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
                return true;
            }
        }
        return false;
    }
    case Char:
        break;
    }
    // Trailing blanks are the padding of a fixed-width field; leading ones belong to the value.
    QString kept = text;
    while (kept.endsWith(QLatin1Char(' ')))
        kept.chop(1);
    if (kept.size() > size)
        return false;
    value = kept;
    return true;
}

QString RisType::Name() const
{
    switch (kind) {
    case SmallInt: return QStringLiteral("smallint");
    case Int: return QStringLiteral("int");
    case Double: return QStringLiteral("double");
    case Real: return QStringLiteral("real");
    case Decimal: return QStringLiteral("decimal");
    case Timestamp: return QStringLiteral("timestamp");
    case Char: return QStringLiteral("char");
    }
    return QString();
}

} // namespace pdssim

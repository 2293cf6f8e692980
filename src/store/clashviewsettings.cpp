#include "store/clashviewsettings.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace fx {

ClashViewSettings &RememberedClashViewSettings()
{
    static ClashViewSettings remembered;
    return remembered;
}

std::optional<double> LeadingNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = number.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    bool ok = false;
    const double value = QLocale::c().toDouble(match.captured(0).trimmed(), &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool IsNumericSetting(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^\\s*[+-]?(\\d+[.,]?\\d*|[.,]\\d+)([eE][+-]?\\d+)?\\s*$"));
    // A number too big for a double is no bound either.
    return number.match(text).hasMatch() && LeadingNumber(QString(text).replace(QLatin1Char(','), QLatin1Char('.')));
}

QString NormaliseBound(const QString &text)
{
    if (text.isEmpty())
        return text;
    QString bound = text;
    bound.replace(QLatin1Char(','), QLatin1Char('.'));
    const std::optional<double> value = LeadingNumber(bound);
    return value ? SqlNumber(*value) : bound;
}

QString SqlNumber(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

} // namespace fx

#include "store/clashviewsettings.h"

#include "frame/settings.h"
#include "store/clashstore.h"
#include "store/clashview.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace fx {

ClashViewSettings &RememberedClashViewSettings()
{
    static ClashViewSettings remembered;
    return remembered;
}

QString ProjectSetting(const QString &configFile, const char *word, const char *key)
{
    const QString file = configFile.isEmpty() ? GetUserConfigFile() : configFile;
    return GetIniValue(file, GetProjectName() + QString::fromLatin1(word), QString::fromLatin1(key));
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

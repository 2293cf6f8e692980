#include "frame/log.h"

#include "frame/datetimetext.h"
#include "frame/programinfo.h"

#include <QFileInfo>

#include <cmath>

extern char **environ;

namespace fx {

namespace {
constexpr int kWidth = 120;

// VB's CLng: halves round to the even number.
int RoundHalfEven(double value)
{
    return static_cast<int>(std::nearbyint(value));
}

QString HeaderRow(const QString &label, const QString &value)
{
    // Padded to 119 and closed by "*"; a longer row is not cut.
    return (label + value).leftJustified(kWidth - 1, QLatin1Char(' ')) + QLatin1Char('*');
}
} // namespace

QString Banner(const QString &text)
{
    const double n = static_cast<double>(text.size());
    const int before = std::max(0, RoundHalfEven((kWidth - n) / 2));
    const int after = std::max(0, RoundHalfEven((kWidth - 1 - n) / 2));
    QString line = QString(before, QLatin1Char('*')) + text + QString(after, QLatin1Char('*'));
    if (line.size() > kWidth)
        line.truncate(kWidth);
    return line.leftJustified(kWidth, QLatin1Char('*'));
}

QString EnvironmentLine(const QString &entry)
{
    // Every "=" becomes the gap, the value's own included; a 24-character name gets none.
    const qsizetype nameLength = std::max<qsizetype>(0, entry.indexOf(QLatin1Char('=')));
    const QString gap(std::abs(24 - static_cast<int>(nameLength)), QLatin1Char(' '));
    return entry.split(QLatin1Char('=')).join(gap);
}

QStringList LogHeader(const QString &description)
{
    const QFileInfo program(ProgramFilePath());
    QStringList lines;
    lines << QString(kWidth, QLatin1Char('*'));
    lines << HeaderRow(QStringLiteral("*  Application:   "), ApplicationTitle());
    lines << HeaderRow(QStringLiteral("*  Path:          "), program.absoluteFilePath());
    lines << HeaderRow(QStringLiteral("*  Version:       "), ProgramVersion());
    lines << HeaderRow(QStringLiteral("*  Date:          "), GeneralDateText(program.lastModified()));
    lines << HeaderRow(QStringLiteral("*  Size:          "), QString::number(program.size()) + QStringLiteral(" Bytes"));
    if (!description.trimmed().isEmpty())
        lines << HeaderRow(QStringLiteral("*  Description:   "), description);
    lines << QString(kWidth, QLatin1Char('*'));
    lines << QString() << QStringLiteral("Log starting at ") + GeneralDateText(QDateTime::currentDateTime()) << QString();
    lines << Banner(QStringLiteral("Begin of environment variables"));
    // In the order the process holds them.
    for (char **entry = environ; entry && *entry; ++entry)
        lines << EnvironmentLine(QString::fromLocal8Bit(*entry));
    lines << Banner(QStringLiteral("End of environment variables")) << QString();
    return lines;
}

} // namespace fx

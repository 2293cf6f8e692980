#include "frame/failure.h"

#include "frame/programinfo.h"

namespace fx {

namespace {
// Kept in the version block of the original build; every build uses the argument form.
constexpr auto kArgumentSeparator = "|||";
} // namespace

QString ArgForm(const QString &message, const QStringList &args)
{
    QString text = message;
    for (const QString &arg : args) {
        text += QLatin1String(kArgumentSeparator);
        text += arg;
    }
    return text;
}

Failure::Failure(qint32 number, QString source, QString description)
    : m_number(number)
    , m_source(std::move(source))
    , m_description(std::move(description))
    , m_what(m_description.toUtf8())
{
}

const char *Failure::what() const noexcept
{
    return m_what.constData();
}

Failure Failure::PassedThrough(const QString &procedure) const
{
    // The first hop adds nothing: a raised failure's source is empty or the application title.
    QString description = m_description;
    if (!m_source.isEmpty() && m_source != ApplicationTitle())
        description = m_source + QLatin1String(": ") + m_description;
    return Failure(m_number, procedure, description);
}

bool Failure::IsSilentExit() const
{
    return m_number == 2 && m_description == QLatin1String("exit");
}

void Raise(const char *message, const QStringList &args, qint32 number)
{
    throw Failure(number, QString(), ArgForm(message, args));
}

void Raise(const QString &message, const QStringList &args, qint32 number)
{
    throw Failure(number, QString(), ArgForm(message, args));
}

void RaiseExit()
{
    throw Failure(2, QString(), QStringLiteral("exit"));
}

} // namespace fx

#include "frame/logmessage.h"

#include "frame/datetimetext.h"
#include "frame/failure.h"
#include "frame/log.h"
#include "frame/messagebox.h"
#include "frame/translation.h"

#include <algorithm>
#include <vector>

namespace fx {

namespace {
std::vector<ILogSink *> &Sinks()
{
    static std::vector<ILogSink *> sinks;
    return sinks;
}
} // namespace

LogSinkRegistration::LogSinkRegistration(ILogSink *sink)
    : m_sink(sink)
{
    Sinks().push_back(sink);
}

LogSinkRegistration::~LogSinkRegistration()
{
    auto &sinks = Sinks();
    sinks.erase(std::remove(sinks.begin(), sinks.end(), m_sink), sinks.end());
}

void LogMessage(const QString &text)
{
    // The log stays in English whatever the user's language.
    QString line = FillMessageArgs(text);
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    WriteLogLine(line);
    try {
        // A sink may unregister itself while it shows the message.
        const std::vector<ILogSink *> sinks = Sinks();
        for (ILogSink *sink : sinks)
            sink->ShowLogMessage(line);
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    } catch (const std::exception &e) {
        ShowMessage(QString::fromLocal8Bit(e.what()), MbIconExclamation);
    }
}

void LogMessage(const char *message, const QStringList &args)
{
    LogMessage(ArgForm(message, args));
}

void EventList::ShowLogMessage(const QString &text)
{
    if (m_items.size() == kCapacity)
        m_items.removeFirst();
    m_items << GeneralDateText(QDateTime::currentDateTime()) + QLatin1Char('\t') + text;
    if (m_onChanged)
        m_onChanged();
}

} // namespace fx

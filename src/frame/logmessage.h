#pragma once
// Progress messages: into the log in English, and out to whatever shows them (event lists,
// status labels of the open windows).

#include <QString>
#include <QStringList>

#include <functional>

namespace fx {

/// Something that shows progress messages: a window's event list or status label.
class ILogSink
{
public:
    virtual ~ILogSink() = default;
    /// `text` has its arguments filled in and is in English.
    virtual void ShowLogMessage(const QString &text) = 0;
};

/// Registers a sink for as long as the object lives.
class LogSinkRegistration
{
public:
    explicit LogSinkRegistration(ILogSink *sink);
    ~LogSinkRegistration();
    LogSinkRegistration(const LogSinkRegistration &) = delete;
    LogSinkRegistration &operator=(const LogSinkRegistration &) = delete;

private:
    ILogSink *m_sink;
};

/// The progress message that every part of the program writes. `text` is in argument form.
/// A failure of a sink is shown to the user; the message still reaches the log.
void LogMessage(const QString &text);
void LogMessage(const char *message, const QStringList &args);

/// The event list of a main window: the last five messages, each "date and time<TAB>text".
class EventList : public ILogSink
{
public:
    static constexpr int kCapacity = 5;

    void ShowLogMessage(const QString &text) override;
    const QStringList &Items() const { return m_items; }
    /// Called after every change, so a window can show the items.
    void SetOnChanged(std::function<void()> onChanged) { m_onChanged = std::move(onChanged); }

private:
    QStringList m_items;
    std::function<void()> m_onChanged;
};

} // namespace fx

#pragma once
// A label that shows the latest progress message (the splash window's and the wizard's status).

#include "frame/logmessage.h"

#include <QLabel>
#include <QPointer>

namespace fx {

/// Shows each progress message in a label for as long as both live.
class StatusLabelSink : public ILogSink
{
public:
    explicit StatusLabelSink(QLabel *label) : m_label(label), m_registration(this) {}
    void ShowLogMessage(const QString &text) override
    {
        if (m_label)
            m_label->setText(text);
    }

private:
    QPointer<QLabel> m_label;
    LogSinkRegistration m_registration;
};

} // namespace fx

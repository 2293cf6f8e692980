#include "frame/ui/frmend.h"

#include "frame/events.h"
#include "frame/logmessage.h"
#include "frame/messages.h"
#include "frame/processend.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>

namespace fx {

namespace {
inline constexpr char FormName[] = "frmEnd";

// The forms still loaded, the last first. A form whose unload ran is hidden; a hidden form that
// never showed holds nothing either.
QList<QPointer<QWidget>> LoadedForms(const QWidget *except)
{
    QList<QPointer<QWidget>> forms;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (auto it = windows.crbegin(); it != windows.crend(); ++it) {
        QWidget *window = *it;
        if (window != except && window->isVisible() && window->objectName().startsWith(QLatin1String("frm")))
            forms << window;
    }
    return forms;
}
} // namespace

FrmEnd::FrmEnd(std::function<void()> quit) : m_quit(std::move(quit))
{
    setObjectName(QString::fromLatin1(FormName));
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(100);
    connect(m_timer, &QTimer::timeout, this, &FrmEnd::Timer1_Timer);
}

void FrmEnd::Touch()
{
    m_timer->start();
}

void FrmEnd::Timer1_Timer()
{
    m_timer->stop();
    const bool busy = IsBusy();
    for (const QPointer<QWidget> &form : LoadedForms(this)) {
        // A form may close others as it goes.
        if (!form)
            continue;
        const QString name = form->objectName();
        form->close();
        LogMessage(msg::FormUnloaded, {name});
        DoEvents();
    }
    DoEvents();
    if (busy)
        TerminateSelf();
    if (m_quit)
        m_quit();
}

} // namespace fx

#pragma once
// Driving the modal dialogs of a test: the steps run on the dialog once it is shown, and a
// guard closes whatever is left open, so that a test fails instead of hanging.

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPixmap>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace fxtest {

/// A Latin-1 literal as a QString, for the short expectations of window tests.
inline QString Text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// Runs `steps` on the next modal window that the code under test opens.
class ModalDriver
{
public:
    explicit ModalDriver(std::function<void(QWidget *)> steps) : m_steps(std::move(steps))
    {
        m_poll.setInterval(10);
        QObject::connect(&m_poll, &QTimer::timeout, [this] {
            QWidget *modal = QApplication::activeModalWidget();
            if (!modal || !modal->isVisible())
                return;
            m_poll.stop();
            m_ran = true;
            m_steps(modal);
        });
        m_poll.start();
        // Generous: the guard is there for a broken test, not to measure anything.
        m_guard.setSingleShot(true);
        m_guard.setInterval(60000);
        QObject::connect(&m_guard, &QTimer::timeout, [this] {
            while (QWidget *modal = QApplication::activeModalWidget()) {
                m_closedByGuard = true;
                if (auto *dialog = qobject_cast<QDialog *>(modal))
                    dialog->reject();
                else
                    modal->close();
                QApplication::processEvents();
            }
        });
        m_guard.start();
    }

    /// True when the steps ran.
    bool Ran() const { return m_ran; }
    /// True when the guard had to close a modal window the steps left open.
    bool ClosedByGuard() const { return m_closedByGuard; }

private:
    std::function<void(QWidget *)> m_steps;
    QTimer m_poll;
    QTimer m_guard;
    bool m_ran = false;
    bool m_closedByGuard = false;
};

/// The control `name` of `window`; a test failure when there is none.
template <typename Control = QWidget>
Control *Find(QWidget *window, const char *name)
{
    auto *control = window->findChild<Control *>(QString::fromLatin1(name));
    EXPECT_TRUE(control) << "no control " << name;
    return control;
}

/// Clicks the button `name` of `window`.
inline void Click(QWidget *window, const char *name)
{
    if (auto *button = Find<QAbstractButton>(window, name))
        button->click();
}

/// Saves a picture of `window` as <name>.png in the screenshot folder.
inline void Screenshot(QWidget *window, const char *name)
{
    // Layouts asked for by the last changes settle in the event loop: let them before the picture.
    QApplication::processEvents();
    const QString folder = QStringLiteral(FENDRIX_SCREENSHOT_DIR);
    QDir().mkpath(folder);
    EXPECT_TRUE(window->grab().save(folder + QLatin1Char('/') + QString::fromLatin1(name) + QStringLiteral(".png")));
}

} // namespace fxtest

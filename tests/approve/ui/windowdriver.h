#pragma once
// Driving modal windows from a test: a modal dialog blocks the test in its own event loop, so
// what is to be done in it is scheduled before it opens and runs once it is the active modal.

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace fxtest {

/// Runs `act` on the next modal window that opens (polled every few milliseconds, at most
/// `attempts` times, so that a dialog that never comes does not hang the test).
inline void OnNextModal(std::function<void(QWidget *)> act, int attempts = 2000)
{
    auto poll = std::make_shared<std::function<void(int)>>();
    *poll = [act = std::move(act), poll](int left) {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            act(modal);
            return;
        }
        if (left > 0)
            QTimer::singleShot(5, [poll, left] { (*poll)(left - 1); });
    };
    QTimer::singleShot(0, [poll, attempts] { (*poll)(attempts); });
}

/// Clicks the button `name` of `window`.
inline void Click(QWidget *window, const char *name)
{
    if (auto *button = window->findChild<QAbstractButton *>(QString::fromLatin1(name)))
        button->click();
}

/// Saves a picture of `widget` as `name`.png in the build's screenshot folder.
inline void Screenshot(QWidget *widget, const QString &name)
{
    const QString folder = QStringLiteral(FENDRIX_SCREENSHOT_DIR);
    QDir().mkpath(folder);
    widget->grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace fxtest

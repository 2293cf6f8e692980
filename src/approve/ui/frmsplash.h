#pragma once
// The splash window: shows the version while the program starts, and hands over to the main
// window of the execution mode after a moment, or at once when the user closes it.

#include "frame/startup.h"

#include <QWidget>

#include <functional>
#include <memory>

class QLabel;
class QTimer;

namespace fx {

class StatusLabelSink;

class FrmSplash : public QWidget, public IStartupSplash
{
    Q_OBJECT

public:
    /// In batch mode the window stays hidden and waits one second, otherwise three.
    explicit FrmSplash(bool batchMode, QWidget *parent = nullptr);
    ~FrmSplash() override;

    /// Shown unless in batch mode.
    void Show() override;
    /// Taken away at once; the dispatch does not run.
    void ForceUnload() override;

    /// Starts the wait; `dispatch` runs once, when the wait ends or when the window is closed
    /// early, and the window goes.
    void Start(std::function<void()> dispatch);

    /// The wait in milliseconds: 1000 in batch mode, 3000 otherwise.
    int WaitMilliseconds() const;

protected:
    void closeEvent(QCloseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void Dispatch();

    bool m_batchMode;
    QTimer *m_timer;
    QLabel *m_status;
    std::function<void()> m_dispatch;
    bool m_dispatched = false;
    bool m_forced = false; ///< taken away by ForceUnload: no dispatch
    std::unique_ptr<StatusLabelSink> m_sink; ///< the status label shows the progress messages
};

} // namespace fx

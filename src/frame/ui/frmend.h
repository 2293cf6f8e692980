#pragma once
// frmEnd, the hidden window that takes the process down once the main window has unloaded.

#include <QWidget>

#include <functional>

class QTimer;

namespace fx {

/// Never shown: touching it starts the end sequence. After 100 ms it unloads every form still
/// loaded (the program's top-level windows named "frm..."), logging "<form> successfully
/// unloaded" for each, then ends the process: at once when work is still in hand, which can't
/// be stopped in any gentler way, otherwise by `quit` (leaving the event loop).
class FrmEnd : public QWidget
{
    Q_OBJECT

public:
    explicit FrmEnd(std::function<void()> quit);

    /// Starts the end sequence.
    void Touch();

private:
    void Timer1_Timer();

    QTimer *m_timer = nullptr;
    std::function<void()> m_quit;
};

} // namespace fx

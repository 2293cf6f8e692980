#pragma once
// The window side of message boxes: a Qt message box with the Windows buttons and answers.

#include "frame/messagebox.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace fx {

/// Shows boxes with QMessageBox and lowers stay-on-top windows while one is open.
class QtMessageBoxUi : public IMessageBoxUi
{
public:
    int ShowBox(const QString &text, quint32 flags, const QString &title, void *owner) override;
    void LowerTopmostWindows() override;
    void RestoreTopmostWindows() override;

private:
    std::vector<QPointer<QWidget>> m_lowered;
};

} // namespace fx

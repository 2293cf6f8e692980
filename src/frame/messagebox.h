#pragma once
// Questions and failures shown to the user: a box in a window run, the default answer in batch.

#include <QString>

namespace fx {

class Failure;

/// Style bits of a box, as the Windows message box takes them.
enum MessageBoxFlags : quint32 {
    MbOk = 0,
    MbOkCancel = 1,
    MbAbortRetryIgnore = 2,
    MbYesNoCancel = 3,
    MbYesNo = 4,
    MbRetryCancel = 5,
    MbIconCritical = 16,
    MbIconQuestion = 32,
    MbIconExclamation = 48,
    MbIconInformation = 64,
    MbDefButton1 = 0,
    MbDefButton2 = 256,
    MbDefButton3 = 512,
    MbDefButton4 = 768,
    MbTaskModal = 0x2000,
};

/// Answers, as the Windows message box gives them.
enum MessageBoxAnswerCode : int {
    IdOk = 1,
    IdCancel = 2,
    IdAbort = 3,
    IdRetry = 4,
    IdIgnore = 5,
    IdYes = 6,
    IdNo = 7,
};

/// The window side of a box, filled by the windows library.
class IMessageBoxUi
{
public:
    virtual ~IMessageBoxUi() = default;
    /// Shows a modal box and returns the answer. `owner` may be null.
    virtual int ShowBox(const QString &text, quint32 flags, const QString &title, void *owner) = 0;
    /// Lowers the program's stay-on-top windows so no viewer hides the box.
    virtual void LowerTopmostWindows() {}
    /// Raises again what LowerTopmostWindows lowered.
    virtual void RestoreTopmostWindows() {}
};

/// Installs the window side (null: none; every box then takes its default answer).
void SetMessageBoxUi(IMessageBoxUi *ui);

/// The button that `flags` name as default: the answer of a box nobody sees.
int DefaultAnswer(quint32 flags);

/// Shows the box when `interactive` and a window side exists, else returns the default answer.
int MessageBoxAnswer(const QString &text, quint32 flags, const QString &title, bool interactive,
                     void *owner = nullptr);

/// Shows a failure: its text translated in the box, its procedure chain in the log.
int ShowMessage(const Failure &failure, quint32 flags);
/// Shows a text in argument form.
int ShowMessage(const QString &text, quint32 flags);

} // namespace fx

#include "frame/ui/qtmessagebox.h"

#include <QApplication>
#include <QMessageBox>

namespace fx {

namespace {
struct ButtonAnswer
{
    QMessageBox::StandardButton button;
    int answer;
};

std::vector<ButtonAnswer> ButtonsOf(quint32 flags)
{
    switch (flags & 0xF) {
    case MbOkCancel:
        return {{QMessageBox::Ok, IdOk}, {QMessageBox::Cancel, IdCancel}};
    case MbAbortRetryIgnore:
        return {{QMessageBox::Abort, IdAbort}, {QMessageBox::Retry, IdRetry}, {QMessageBox::Ignore, IdIgnore}};
    case MbYesNoCancel:
        return {{QMessageBox::Yes, IdYes}, {QMessageBox::No, IdNo}, {QMessageBox::Cancel, IdCancel}};
    case MbYesNo:
        return {{QMessageBox::Yes, IdYes}, {QMessageBox::No, IdNo}};
    case MbRetryCancel:
        return {{QMessageBox::Retry, IdRetry}, {QMessageBox::Cancel, IdCancel}};
    default:
        return {{QMessageBox::Ok, IdOk}};
    }
}

QMessageBox::Icon IconOf(quint32 flags)
{
    switch (flags & 0xF0) {
    case MbIconCritical:
        return QMessageBox::Critical;
    case MbIconQuestion:
        return QMessageBox::Question;
    case MbIconExclamation:
        return QMessageBox::Warning;
    case MbIconInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}
} // namespace

int QtMessageBoxUi::ShowBox(const QString &text, quint32 flags, const QString &title, void *owner)
{
    QMessageBox box(IconOf(flags), title, text, QMessageBox::NoButton, static_cast<QWidget *>(owner));
    const std::vector<ButtonAnswer> buttons = ButtonsOf(flags);
    for (const ButtonAnswer &b : buttons)
        box.addButton(b.button);
    // The default answer of the flags is the button that Enter presses.
    const int defaultAnswer = DefaultAnswer(flags);
    for (const ButtonAnswer &b : buttons)
        if (b.answer == defaultAnswer)
            box.setDefaultButton(b.button);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
    const QAbstractButton *clicked = box.clickedButton();
    for (const ButtonAnswer &b : buttons)
        if (clicked == box.button(b.button))
            return b.answer;
    // Closed without a button: Cancel where there is one, as the system box answers.
    for (const ButtonAnswer &b : buttons)
        if (b.answer == IdCancel)
            return IdCancel;
    return buttons.size() == 1 ? buttons.front().answer : defaultAnswer;
}

void QtMessageBoxUi::LowerTopmostWindows()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && !window->isMinimized() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint)) {
            window->setWindowFlag(Qt::WindowStaysOnTopHint, false);
            window->show();
            m_lowered.emplace_back(window);
        }
    }
}

void QtMessageBoxUi::RestoreTopmostWindows()
{
    for (const QPointer<QWidget> &window : m_lowered) {
        if (window) {
            window->setWindowFlag(Qt::WindowStaysOnTopHint, true);
            window->show();
        }
    }
    m_lowered.clear();
}

} // namespace fx

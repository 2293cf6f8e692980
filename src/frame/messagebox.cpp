#include "frame/messagebox.h"

#include "frame/failure.h"
#include "frame/log.h"
#include "frame/messages.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/translation.h"

namespace fx {

namespace {
IMessageBoxUi *&Ui()
{
    static IMessageBoxUi *ui = nullptr;
    return ui;
}

int ShowText(QString text, QString source, quint32 flags)
{
    if (text.trimmed().isEmpty())
        text = QString::fromLatin1(msg::UnknownError);
    text = TranslateText(text, IsLanguageActive(), true);
    if (text.trimmed().isEmpty())
        text = QString::fromLatin1(msg::UnknownError);

    IMessageBoxUi *ui = Ui();
    if (ui)
        ui->LowerTopmostWindows();
    const int answer = MessageBoxAnswer(text, flags, QStringLiteral("Norvane ") + ApplicationTitle(),
                                        !Process().BatchMode);
    // The log gets the procedure chain and the text as shown, after the user answered.
    const bool breakAfterSource = !source.trimmed().isEmpty() && text.contains(QStringLiteral("\r\n"));
    WriteLogLine(source + (breakAfterSource ? QStringLiteral("\r\n") : QString()) + text);
    if (ui)
        ui->RestoreTopmostWindows();
    return answer;
}
} // namespace

void SetMessageBoxUi(IMessageBoxUi *ui)
{
    Ui() = ui;
}

int DefaultAnswer(quint32 flags)
{
    static const int table[6][3] = {
        {IdOk, IdOk, IdOk},
        {IdOk, IdCancel, IdCancel},
        {IdAbort, IdRetry, IdIgnore},
        {IdYes, IdNo, IdCancel},
        {IdYes, IdNo, IdNo},
        {IdRetry, IdCancel, IdCancel},
    };
    const quint32 buttons = flags & 0xF;
    if (buttons > 5)
        return IdOk;
    // The third column stands for the third and the fourth default button alike.
    const quint32 defaultBits = flags & 0x300;
    const int column = defaultBits == MbDefButton1 ? 0 : defaultBits == MbDefButton2 ? 1 : 2;
    return table[buttons][column];
}

int MessageBoxAnswer(const QString &text, quint32 flags, const QString &title, bool interactive, void *owner)
{
    if (interactive && Ui())
        return Ui()->ShowBox(text, flags | MbTaskModal, title, owner);
    return DefaultAnswer(flags);
}

int ShowMessage(const Failure &failure, quint32 flags)
{
    QString source = failure.Source();
    if (source == ApplicationTitle())
        source.clear();
    if (!source.isEmpty())
        source += QLatin1Char(':');
    return ShowText(failure.Description(), source, flags);
}

int ShowMessage(const QString &text, quint32 flags)
{
    return ShowText(text, QString(), flags);
}

} // namespace fx

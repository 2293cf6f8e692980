#include "frame/consolemessagebox.h"

#include <cstdio>

namespace fx {

int ConsoleMessageBoxUi::ShowBox(const QString &text, quint32 flags, const QString &title, void *)
{
    std::fputs((title + QStringLiteral(": ") + text + QLatin1Char('\n')).toLocal8Bit().constData(), stderr);
    return DefaultAnswer(flags);
}

} // namespace fx

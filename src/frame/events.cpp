#include "frame/events.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace fx {

void DoEventsIfInput()
{
    static QElapsedTimer sinceLast;
    if (sinceLast.isValid() && sinceLast.elapsed() < 10)
        return;
    sinceLast.start();
    DoEvents();
}

void DoEvents()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}

} // namespace fx

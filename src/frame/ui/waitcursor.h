#pragma once
// The wait cursor for the length of a piece of long work.

#include "frame/processend.h"

#include <QApplication>

namespace fx {

/// Shows the wait cursor, and marks the process busy, while it lives; nested ones stack.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    BusyScope m_busy;
};

} // namespace fx

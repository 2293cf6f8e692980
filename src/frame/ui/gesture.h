#pragma once
// The one place where a user's gesture ends its failures: shown in a box, never let out of a
// slot (a failure leaving a Qt slot would end the program).

#include "frame/failure.h"
#include "frame/messagebox.h"

#include <exception>

namespace fx {

/// Runs `body`; a failure is shown (a silent end is not) and false is given back.
template <typename Body>
bool RunGesture(Body &&body)
{
    try {
        body();
        return true;
    } catch (const Failure &failure) {
        if (!failure.IsSilentExit())
            ShowMessage(failure, MbIconExclamation);
    } catch (const std::exception &e) {
        ShowMessage(QString::fromLocal8Bit(e.what()), MbIconExclamation);
    }
    return false;
}

} // namespace fx

#pragma once
// The end of a user's gesture in a window: a failure of the work it started is shown here and
// goes no further, since nothing may leave a Qt event handler by an exception.

#include "frame/failure.h"
#include "frame/messagebox.h"

#include <utility>

namespace fx {

/// Runs `body` in the procedure frame `procedure`; a failure is shown with the exclamation icon.
/// True when the body ended normally.
template <typename Body>
bool RunShowingFailure(const char *procedure, Body &&body)
{
    try {
        Frame(procedure, std::forward<Body>(body));
        return true;
    } catch (const Failure &failure) {
        if (!failure.IsSilentExit())
            ShowMessage(failure, MbIconExclamation);
    }
    return false;
}

} // namespace fx

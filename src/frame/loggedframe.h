#pragma once
// The frame of a procedure that also writes its failure to the log, as "<procedure>: <text>",
// before raising it on: for the long operations whose failures a user reads in the log later.

#include "frame/failure.h"
#include "frame/logmessage.h"

#include <utility>

namespace fx {

/// Frame(procedure, body), with a failure logged once on its way out.
template <typename Body>
decltype(auto) LoggedFrame(const char *procedure, Body &&body)
{
    try {
        return Frame(procedure, std::forward<Body>(body));
    } catch (const Failure &failure) {
        LogMessage(failure.Source() + QStringLiteral(": ") + failure.Description());
        throw;
    }
}

} // namespace fx

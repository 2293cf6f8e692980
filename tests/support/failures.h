#pragma once
// Catching the program's failure in a test.

#include "frame/failure.h"

namespace fxtest {

/// "source: description" of the failure that `body` raised; "" if it returned.
template <typename Body>
QString FailureText(Body &&body)
{
    try {
        body();
    } catch (const fx::Failure &failure) {
        return failure.Source() + QStringLiteral(": ") + failure.Description();
    }
    return QString();
}

} // namespace fxtest

#pragma once
// Catching the program's failure in a test, to look at its number, source and description.

#include "frame/failure.h"

#include <optional>

namespace fxtest {

/// The failure that `body` raised, or nothing if it returned.
template <typename Body>
std::optional<fx::Failure> FailureOf(Body &&body)
{
    try {
        body();
    } catch (const fx::Failure &failure) {
        return failure;
    }
    return std::nullopt;
}

} // namespace fxtest

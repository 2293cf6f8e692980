#pragma once
// The process-wide saved failure: where an operation asked not to raise leaves its failure.

#include "frame/failure.h"

namespace fx {

/// Empties the saved failure (number 0, no source, no description).
void ClearSavedFailure();

/// The saved failure; its number is 0 when none is saved.
Failure GetSavedFailure();

/// Raises the saved failure as it was saved, if its number is not zero.
void RaiseSavedFailure();

/// Keeps `failure` as the saved failure.
void SaveFailure(const Failure &failure);

/// Runs `body`, which raises through its own frame. With `raiseOnError` a failure travels on;
/// without it the failure is saved and the result is false. True when the body succeeded.
/// A success leaves an earlier saved failure alone: the caller clears it when it starts a batch.
template <typename Body>
bool RaiseOrSave(bool raiseOnError, Body &&body)
{
    if (raiseOnError) {
        std::forward<Body>(body)();
        return true;
    }
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const Failure &failure) {
        SaveFailure(failure);
        return false;
    }
}

} // namespace fx

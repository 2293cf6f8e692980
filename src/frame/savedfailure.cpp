#include "frame/savedfailure.h"

namespace fx {

namespace {
Failure &Saved()
{
    static Failure saved(0, QString(), QString());
    return saved;
}
} // namespace

void ClearSavedFailure()
{
    Saved() = Failure(0, QString(), QString());
}

Failure GetSavedFailure()
{
    return Saved();
}

void RaiseSavedFailure()
{
    if (Saved().Number() != 0)
        throw Saved();
}

void SaveFailure(const Failure &failure)
{
    Saved() = failure;
}

} // namespace fx

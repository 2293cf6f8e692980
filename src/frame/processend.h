#pragma once
// The busy state of the process and the end of the process.

#include <functional>

namespace fx {

/// Marks work in hand (the busy mouse pointer) for as long as it lives; nests.
class BusyScope
{
public:
    BusyScope();
    ~BusyScope();
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;
};

/// True while any BusyScope lives.
bool IsBusy();

/// Lets the windows follow the busy state (hourglass on and off).
void SetBusyListener(std::function<void(bool busy)> listener);

/// Ends the process at once, work in hand or not.
[[noreturn]] void TerminateSelf();

/// Ends the process. With work in hand it ends at once, since that work can't be stopped in
/// any gentler way; otherwise it returns and the caller leaves its event loop.
void EndProcess();

} // namespace fx

#include "frame/processend.h"

#include <cstdio>
#include <unistd.h>

namespace fx {

namespace {
int &BusyDepth()
{
    static int depth = 0;
    return depth;
}

std::function<void(bool)> &BusyListener()
{
    static std::function<void(bool)> listener;
    return listener;
}
} // namespace

BusyScope::BusyScope()
{
    if (++BusyDepth() == 1 && BusyListener())
        BusyListener()(true);
}

BusyScope::~BusyScope()
{
    if (--BusyDepth() == 0 && BusyListener())
        BusyListener()(false);
}

bool IsBusy()
{
    return BusyDepth() > 0;
}

void SetBusyListener(std::function<void(bool busy)> listener)
{
    BusyListener() = std::move(listener);
}

void TerminateSelf()
{
    std::fflush(nullptr);
    ::_exit(0);
}

void EndProcess()
{
    if (IsBusy())
        TerminateSelf();
}

} // namespace fx

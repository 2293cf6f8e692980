#pragma once
// The process's peak resident memory as the operating system counts it.

#include <sys/resource.h>

namespace fxbench {

/// The most memory the process has held in RAM so far, in MiB.
inline double PeakResidentMB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

} // namespace fxbench

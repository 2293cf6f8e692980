#pragma once
// The version of the operating system.

namespace fx {

/// Major and minor version of the running system (the kernel's on POSIX), read once and kept.
/// The result is major + minor / 10; a failed query gives major -1.
float GetOSVersion(int &major, int &minor);

} // namespace fx

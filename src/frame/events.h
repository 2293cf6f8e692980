#pragma once
// Keeping the windows alive during long work on the one thread.

namespace fx {

/// The cheap yield of long loops: lets waiting events run, at most every few milliseconds,
/// so that a loop over half a million rows does not spend its time in the event loop.
void DoEventsIfInput();

/// Lets all waiting events run now.
void DoEvents();

} // namespace fx

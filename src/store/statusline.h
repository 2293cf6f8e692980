#pragma once
// The counts of the open project as the approval window's status line shows them.

#include <QString>

namespace fx {

/// "Total: ... clashes (approved: ...; unapproved: ...)", with the filtered counts behind it
/// when the grid filter leaves fewer rows; empty when any count fails, as the line then shows
/// nothing rather than an error.
QString ClashCountsCaption();

} // namespace fx

#pragma once
// The counts of the open project as the approval window's status line shows them.

#include <QString>

namespace fx {

/// "Total: ... clashes (approved: ...; unapproved: ...)", with the filtered counts behind it
/// when the grid filter leaves fewer rows; empty when any count fails, as the line then shows
/// nothing rather than an error.
QString ClashCountsCaption();

/// The four counts the status line shows.
struct ClashCounts
{
    qint32 total = 0;          ///< GetTotalClashCount
    qint32 approved = 0;       ///< GetTotalApprovedClashCount
    qint32 count = 0;          ///< GetClashCount
    qint32 approvedInView = 0; ///< GetApprovedClashCount
};

/// The status line of counts already known, for a caller that has some of them at hand.
QString ClashCountsCaption(const ClashCounts &counts);

} // namespace fx

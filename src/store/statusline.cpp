#include "store/statusline.h"

#include "frame/failure.h"
#include "frame/translation.h"
#include "store/clashview.h"
#include "store/messages.h"

namespace fx {

namespace {

// An unapproved count is a difference, never below 0.
QString Unapproved(qint32 count, qint32 approved)
{
    return QString::number(count - approved < 1 ? 0 : count - approved);
}

} // namespace

QString ClashCountsCaption()
{
    try {
        return ClashCountsCaption(
            ClashCounts{GetTotalClashCount(), GetTotalApprovedClashCount(), GetClashCount(), GetApprovedClashCount()});
    } catch (const std::exception &) {
        return QString();
    }
}

QString ClashCountsCaption(const ClashCounts &counts)
{
    QString caption = TranslateText(ArgForm(msg::StatusLineTotal, {QString::number(counts.total), QString::number(counts.approved),
                                                                    Unapproved(counts.total, counts.approved)}));
    if (counts.count != counts.total)
        caption += TranslateText(ArgForm(msg::StatusLineFiltered, {QString::number(counts.count), QString::number(counts.approvedInView),
                                                                   Unapproved(counts.count, counts.approvedInView)}));
    return caption;
}

} // namespace fx

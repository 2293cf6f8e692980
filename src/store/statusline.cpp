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
        const qint32 total = GetTotalClashCount();
        const qint32 approved = GetTotalApprovedClashCount();
        const qint32 count = GetClashCount();
        const qint32 approvedInView = GetApprovedClashCount();
        QString caption = TranslateText(ArgForm(msg::StatusLineTotal, {QString::number(total), QString::number(approved),
                                                                        Unapproved(total, approved)}));
        if (count != total)
            caption += TranslateText(ArgForm(msg::StatusLineFiltered, {QString::number(count), QString::number(approvedInView),
                                                                       Unapproved(count, approvedInView)}));
        return caption;
    } catch (const std::exception &) {
        return QString();
    }
}

} // namespace fx

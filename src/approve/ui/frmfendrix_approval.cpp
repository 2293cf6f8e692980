// The approval flow: approve real, approve false, unapprove and describe the selected clashes.

#include "approve/menudefinition.h"
#include "approve/messages.h"
#include "approve/ui/frmdescription.h"
#include "approve/ui/frmfendrix.h"
#include "approve/ui/frmfiltermessage.h"
#include "frame/failure.h"
#include "frame/ui/waitcursor.h"
#include "grid/ui/clashgridview.h"
#include "store/clashstatus.h"

namespace fx {

void FrmFendrix::ApprovalFlow(int buttonIndex)
{
    Frame("ApprovalFlow", [&] {
        WaitCursor wait;
        if (!m_grid->IsOpen())
            return;
        if (m_grid->SelectedCount() == 0)
            Raise(msg::NoClashesSelected);
        QStringList ids;
        for (qint64 id : m_grid->SelectedClashIds())
            ids << QString::number(id);
        const QString where = QStringLiteral("clash_id IN (") + ids.join(QLatin1String(", ")) + QLatin1Char(')');
        qint64 updated = 0;
        SetClashStatus(where, qint16(ApprovalStatusOfButton(buttonIndex)), updated, true, true,
                       [this](qint16 action) { return FrmDescription::ShowForm(action, this); });
        if (updated > 0)
            m_grid->RefreshClashes();
    });
}

bool FrmFendrix::ShowFilterMessage()
{
    return FrmFilterMessage::ShowForm(this);
}

} // namespace fx

#include "frame/caption.h"

#include "frame/messages.h"

namespace fx {

QString ComposeWindowCaption(const CaptionState &state)
{
    QString caption = QString::fromLatin1(msg::CaptionBase);
    if (state.batchMode)
        caption += QString::fromLatin1(msg::CaptionBatch);
    caption += QStringLiteral(" [") +
               QString::fromLatin1(state.kind == MainWindowKind::Approval ? msg::ApprovalModule : msg::CheckModule) +
               QLatin1Char(']');
    const bool projectOpen = state.projectName != QLatin1String("NO_PROJECT");
    if (projectOpen && state.offline)
        caption += QString::fromLatin1(msg::CaptionOffline);
    if (projectOpen && state.readOnly)
        caption += QString::fromLatin1(msg::CaptionReadOnly);
    if (!state.clashFile.trimmed().isEmpty())
        caption += QStringLiteral(" [") + state.clashFile.trimmed() + QLatin1Char(']');
    if (state.withProjectName)
        caption += QStringLiteral(" - ") + state.projectName;
    return caption;
}

} // namespace fx

#include "frame/caption.h"

#include "frame/messages.h"
#include "frame/translation.h"

namespace fx {

QString ComposeWindowCaption(const CaptionState &state)
{
    QString fixed = QString::fromLatin1(msg::CaptionBase);
    if (state.batchMode)
        fixed += QString::fromLatin1(msg::CaptionBatch);
    fixed += QStringLiteral(" [") +
             QString::fromLatin1(state.kind == MainWindowKind::Approval ? msg::ApprovalModule : msg::CheckModule) +
             QLatin1Char(']');
    const bool projectOpen = state.projectName != QLatin1String("NO_PROJECT");
    if (projectOpen && state.offline)
        fixed += QString::fromLatin1(msg::CaptionOffline);
    if (projectOpen && state.readOnly)
        fixed += QString::fromLatin1(msg::CaptionReadOnly);

    // Only the fixed words are a text to translate: a path or a project name would become a
    // new entry of every language file.
    QString caption = TranslateText(fixed);
    if (!state.clashFile.trimmed().isEmpty())
        caption += QStringLiteral(" [") + state.clashFile.trimmed() + QLatin1Char(']');
    if (state.withProjectName && projectOpen)
        caption += QStringLiteral(" - ") + state.projectName;
    return caption;
}

} // namespace fx

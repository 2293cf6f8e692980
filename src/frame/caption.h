#pragma once
// The title bar of the main windows.

#include <QString>

namespace fx {

enum class MainWindowKind { Approval, Check };

/// What the title bar tells about the process and the open project.
struct CaptionState
{
    bool batchMode = false;
    MainWindowKind kind = MainWindowKind::Approval;
    QString projectName = QStringLiteral("NO_PROJECT");
    bool offline = false;
    bool readOnly = false;
    QString clashFile;          ///< the open clash file, empty if none
    bool withProjectName = false; ///< the caller asks for " - <project>" (only with a project open)
};

/// "Norvane Fendrix" with the pieces that the state calls for, in their fixed order; the fixed
/// words translated, the clash file and the project name appended as they are.
QString ComposeWindowCaption(const CaptionState &state);

} // namespace fx

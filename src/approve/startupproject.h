#pragma once
// What the approval window opens by itself at start: the project of the command line, else the
// last one when AutoLoad is on; and the user config file it works with.

#include <QString>
#include <QStringList>

namespace fx {

/// The project to open at start.
struct StartupProject
{
    QString project;     ///< a project name, or a clash file
    QString controlFile; ///< empty for a clash file
    bool fromCommandLine = false;
    /// False when nothing is to be opened: the window then asks for a project.
    bool load = false;
};

/// The command line's control file and project, else ControlFile and Project of Config.ini.
/// A project given on the command line is opened; a stored one only with AutoLoad. A stored
/// text in the form of a recent item's caption is taken apart first, and a project name that
/// is a clash file is opened as that file.
StartupProject ChooseStartupProject();

/// Settles the user config file of the approval module from Config.ini (a file that can't be
/// taken is logged and forgotten) and gives the warnings about it: a folder or a file that
/// can't be written, in argument form.
QStringList SettleUserConfigFile();

} // namespace fx

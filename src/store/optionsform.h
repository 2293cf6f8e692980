#pragma once
// The options dialog without its window: every value it shows, read from the settings files,
// the checks of its OK in their order, and the writing of the values in the order of the table.

#include "store/options.h"

#include <QString>

#include <array>

namespace fx {

class AdvancedFilterEdit;

/// One value for each control of the options dialog.
struct OptionsSettings
{
    ClashViewer viewer = ClashViewer::BuiltIn;
    QString mstnPath;
    QString dgnSeedFile;
    bool autoGenerateSPRSession = true; ///< else an existing session file
    QString driFile;
    QString sprWorkingDirectory;
    bool showClashDialog = true;
    QString compSeparator;
    QString pdsReportFile;
    bool allowOpenLockedProject = false;
    qint32 compAColor = 0;
    qint32 compBColor = 0;
    std::array<QString, 3> descriptions; ///< approving, unapproving, free: txtDescription 0 to 2
    bool addUserID = true;
    bool neverChangeDescr = false;
    bool neverOverwriteDescr = false;
    bool showDescrDialog = true;
    bool setAutoFilter = true;
    bool showFilterDialog = true;
    QString area;                   ///< the area's name
    std::array<QString, 6> bounds;  ///< in the order of VolumeBoundKeys()
    std::array<QString, 3> centres; ///< the design volume offsets
    int lastUsedFilterColumn = -1;  ///< an index into FilterDimensions(), -1 for none
    QString userConfigFile;
    bool autoLoad = false;
    bool loadTipsAtStartup = true;
};

/// The values as the settings files hold them now.
OptionsSettings ReadOptionsSettings();

/// The checks of OK, in their order; raises the first that fails, having written nothing.
void CheckOptionsSettings(const OptionsSettings &settings);

/// Writes the values into the user config file they name, in the order of the table, the
/// advanced filter from `filter`'s copy (none: left as it is), then the user config file's path
/// and AutoLoad into Config.ini, then whether tips show at start.
void WriteOptionsSettings(const OptionsSettings &settings, const AdvancedFilterEdit *filter);

} // namespace fx

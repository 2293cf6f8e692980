#pragma once
// The table of options: every key of the user config file that the options dialog sets or that
// the program reads, each declared once here with its section, scope and default, and the
// typed accessors every reader goes through.
//
// The viewer is kept in two keys. `ShowClashesInSPR` stays what it always was ("1" SmartPlant
// Review, "0" MicroStation), so a settings file shared with a Windows site reads as before there.
// `ShowClashesInBuiltInViewer` is our own: "1" chooses the built-in viewer, and a Windows program
// ignores it. Choosing the built-in viewer leaves `ShowClashesInSPR` as it stood, so the Windows
// program keeps its last external choice. Where no external viewer can run, the built-in viewer is
// the default.

#include <QList>
#include <QString>

namespace fx {

/// Where an option lies: in the open project's section (the project's name followed by the
/// section word) or in the plain section that every project shares.
enum class OptionScope { Project, All };

/// How a flag reads: anything but "0" is on, or only "1" is on.
enum class FlagRule { NotZero, OnlyOne };

/// One row of the table.
struct OptionKey
{
    const char *section;      ///< the section word
    const char *key;
    OptionScope scope;
    const char *defaultValue; ///< the default, unless `computedDefault` gives it
    QString (*computedDefault)(const QString &configFile) = nullptr; ///< a default that depends on the machine
    FlagRule flagRule = FlagRule::NotZero;
};

namespace option {
QString DefaultMSTNPath(const QString &configFile);
QString DefaultDGNSeedFile(const QString &configFile);
QString DefaultBuiltInViewer(const QString &configFile);

inline constexpr char OptionsWord[] = "Options";
inline constexpr char DescrDialogWord[] = "DescrDialog";
inline constexpr char AutoFilterWord[] = "AutoFilter";
inline constexpr char VolumeFilterWord[] = "VolumeFilter";
inline constexpr char DVCSWord[] = "DVCS";
/// Also the start of the sections that hold each filter column's kept values.
inline constexpr char AdvancedFilterWord[] = "AdvancedFilter";

using S = OptionScope;
inline constexpr OptionKey ShowClashesInSPR{OptionsWord, "ShowClashesInSPR", S::Project, "1"};
inline constexpr OptionKey ShowClashesInBuiltInViewer{OptionsWord, "ShowClashesInBuiltInViewer", S::Project, "",
                                                      &DefaultBuiltInViewer};
inline constexpr OptionKey MSTNPath{OptionsWord, "MSTNPath", S::All, "", &DefaultMSTNPath};
inline constexpr OptionKey DGNSeedFile{OptionsWord, "DGNSeedFile", S::Project, "", &DefaultDGNSeedFile};
inline constexpr OptionKey AutoGenerateSPRSession{OptionsWord, "AutoGenerateSPRSession", S::Project, "1"};
inline constexpr OptionKey DRIFile{OptionsWord, "DRIFile", S::Project, ""};
inline constexpr OptionKey SPRWorkingDirectory{OptionsWord, "SPRWorkingDirectory", S::Project, ""};
inline constexpr OptionKey ShowClashDialog{OptionsWord, "ShowClashDialog", S::Project, "1"};
inline constexpr OptionKey View{OptionsWord, "View", S::Project, "0"};
inline constexpr OptionKey ViewMode{OptionsWord, "ViewMode", S::Project, "0"};
inline constexpr OptionKey ShowViewControl{OptionsWord, "ShowViewControl", S::Project, "1"};
inline constexpr OptionKey CompSeparator{OptionsWord, "CompSeparator", S::Project, ""};
inline constexpr OptionKey PDSReportFile{OptionsWord, "PDSReportFile", S::Project, ""};
inline constexpr OptionKey AllowOpenLockedProject{OptionsWord, "AllowOpenLockedProject", S::All, "0", nullptr,
                                                  FlagRule::OnlyOne};
inline constexpr OptionKey CompAColor{OptionsWord, "CompAColor", S::All, "255"};
inline constexpr OptionKey CompBColor{OptionsWord, "CompBColor", S::All, "65280"};
inline constexpr OptionKey ApprovedDescr{DescrDialogWord, "ApprovedDescr", S::All, "Approved by Fendrix"};
inline constexpr OptionKey UnapprovedDescr{DescrDialogWord, "UnapprovedDescr", S::All, "Unapproved by Fendrix"};
inline constexpr OptionKey Descr{DescrDialogWord, "Descr", S::All, ""};
inline constexpr OptionKey AddUserID{DescrDialogWord, "AddUserID", S::All, "1"};
inline constexpr OptionKey ChangeClashDescr{DescrDialogWord, "ChangeClashDescr", S::All, "1"};
inline constexpr OptionKey OverwriteClashDescr{DescrDialogWord, "OverwriteClashDescr", S::All, "1"};
inline constexpr OptionKey ShowDescrDialog{DescrDialogWord, "ShowDescrDialog", S::All, "1"};
inline constexpr OptionKey SetAutoFilter{AutoFilterWord, "SetAutoFilter", S::All, "1"};
inline constexpr OptionKey ShowFilterDialog{AutoFilterWord, "ShowFilterDialog", S::All, "1"};
inline constexpr OptionKey Area{VolumeFilterWord, "Area", S::Project, ""};
inline constexpr OptionKey EastingLow{VolumeFilterWord, "EastingLow", S::Project, ""};
inline constexpr OptionKey NorthingLow{VolumeFilterWord, "NorthingLow", S::Project, ""};
inline constexpr OptionKey ElevationLow{VolumeFilterWord, "ElevationLow", S::Project, ""};
inline constexpr OptionKey EastingHigh{VolumeFilterWord, "EastingHigh", S::Project, ""};
inline constexpr OptionKey NorthingHigh{VolumeFilterWord, "NorthingHigh", S::Project, ""};
inline constexpr OptionKey ElevationHigh{VolumeFilterWord, "ElevationHigh", S::Project, ""};
inline constexpr OptionKey EastingCenter{DVCSWord, "EastingCenter", S::Project, ""};
inline constexpr OptionKey NorthingCenter{DVCSWord, "NorthingCenter", S::Project, ""};
inline constexpr OptionKey ElevationCenter{DVCSWord, "ElevationCenter", S::Project, ""};
/// An index into the filter columns; none by default.
inline constexpr OptionKey LastUsedFilterColumn{AdvancedFilterWord, "LastUsedFilterColumn", S::All, ""};
} // namespace option

/// Every row, in the order of the table: the order in which the options dialog writes them.
const QList<const OptionKey *> &OptionTable();

/// The six volume bounds in the order low easting, northing, elevation, then high.
const QList<const OptionKey *> &VolumeBoundKeys();
/// The three DVCS offsets: easting, northing, elevation.
const QList<const OptionKey *> &DvcsCenterKeys();

/// The option's section: for a project option the open project's name (or "NO_PROJECT") and the
/// word.
QString OptionSection(const OptionKey &key);
/// The default of an option read from `configFile` (empty: the user config file).
QString OptionDefault(const OptionKey &key, const QString &configFile = QString());

/// The option's text in `configFile` (empty: the user config file); its default when the key is
/// missing or empty. Never fails.
QString GetOption(const OptionKey &key, const QString &configFile = QString());
/// A flag by the key's rule; a missing or empty value reads as the default.
bool GetOptionFlag(const OptionKey &key, const QString &configFile = QString());
/// A colour as the platform's colour number (red in the low byte): the stored value when it is a
/// whole number from 0 to 16777215, otherwise the default.
qint32 GetOptionColor(const OptionKey &key, const QString &configFile = QString());

void SetOption(const OptionKey &key, const QString &value, const QString &configFile = QString());

/// A value for one option.
struct OptionValue
{
    const OptionKey *key;
    QString value;
};

/// Writes the values in the order of the table, whatever their order here, in one write of the
/// file.
void SetOptions(const QList<OptionValue> &values, const QString &configFile = QString());
/// Writes "1" or "0".
void SetOptionFlag(const OptionKey &key, bool on, const QString &configFile = QString());

/// The viewer a clash is shown in.
enum class ClashViewer { SmartPlantReview, MicroStation, BuiltIn };

/// The chosen viewer of the open project.
ClashViewer GetClashViewer(const QString &configFile = QString());
/// The values that store a choice, as the header says: `ShowClashesInSPR` left out for the
/// built-in viewer, and "0" written rather than removed, since on a machine without external
/// viewers a missing key would bring the built-in viewer back.
QList<OptionValue> ClashViewerValues(ClashViewer viewer);
void SetClashViewer(ClashViewer viewer, const QString &configFile = QString());

} // namespace fx

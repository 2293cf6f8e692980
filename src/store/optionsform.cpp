#include "store/optionsform.h"

#include "frame/configkeys.h"
#include "frame/daytips.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/folders.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "store/advancedfilter.h"
#include "store/advancedfilteredit.h"
#include "store/optionsmessages.h"
#include "store/volumefilter.h"

namespace fx {

namespace {

QString Flag(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

void RequireWritableFile(const QString &file)
{
    if (IsFileReadOnly(file))
        Raise(msg::FileWriteDenied, {file});
}

void CheckSmartPlantReview(const OptionsSettings &settings)
{
    if (settings.autoGenerateSPRSession) {
        const QString &folder = settings.sprWorkingDirectory;
        if (!IsFileExists(folder, true))
            Raise(msg::SPRWorkingDirectoryNotExists, {folder});
        try {
            IsFolderWritable(folder);
        } catch (const Failure &) {
            // Told as OK's own check, not as the probe's failure.
            Raise(msg::DirectoryWriteDenied, {folder});
        }
        return;
    }
    if (settings.driFile.trimmed().isEmpty())
        Raise(msg::SPRConfigurationFileNotDefined);
    if (!IsFileExists(settings.driFile))
        Raise(msg::SPRConfigurationFileNotExists, {settings.driFile});
}

void CheckMicroStation(const OptionsSettings &settings)
{
    if (settings.mstnPath.trimmed().isEmpty())
        Raise(msg::MicroStationFileNotDefined);
    if (!IsFileExists(settings.mstnPath))
        Raise(msg::MicroStationFileNotExists, {settings.mstnPath});
    if (!IsFileExists(settings.dgnSeedFile))
        Raise(msg::MicroStationSeedFileNotExists, {settings.dgnSeedFile});
    RequireWritableFile(settings.dgnSeedFile);
}

} // namespace

OptionsSettings ReadOptionsSettings()
{
    return Frame("LoadSettings", [] {
        using namespace option;
        OptionsSettings s;
        s.viewer = GetClashViewer();
        s.mstnPath = GetOption(MSTNPath);
        s.dgnSeedFile = GetOption(DGNSeedFile);
        s.autoGenerateSPRSession = GetOptionFlag(AutoGenerateSPRSession);
        s.driFile = GetOption(DRIFile);
        s.sprWorkingDirectory = GetOption(SPRWorkingDirectory);
        s.showClashDialog = GetOptionFlag(ShowClashDialog);
        s.compSeparator = GetOption(CompSeparator);
        s.pdsReportFile = GetOption(PDSReportFile);
        s.allowOpenLockedProject = GetOptionFlag(AllowOpenLockedProject);
        s.compAColor = GetOptionColor(CompAColor);
        s.compBColor = GetOptionColor(CompBColor);
        s.descriptions = {GetOption(ApprovedDescr), GetOption(UnapprovedDescr), GetOption(Descr)};
        s.addUserID = GetOptionFlag(AddUserID);
        s.neverChangeDescr = !GetOptionFlag(ChangeClashDescr);
        s.neverOverwriteDescr = !GetOptionFlag(OverwriteClashDescr);
        s.showDescrDialog = GetOptionFlag(ShowDescrDialog);
        s.setAutoFilter = GetOptionFlag(SetAutoFilter);
        s.showFilterDialog = GetOptionFlag(ShowFilterDialog);
        s.area = GetOption(Area);
        for (std::size_t i = 0; i < s.bounds.size(); ++i)
            s.bounds[i] = GetOption(*VolumeBoundKeys().at(qsizetype(i)));
        for (std::size_t i = 0; i < s.centres.size(); ++i)
            s.centres[i] = GetOption(*DvcsCenterKeys().at(qsizetype(i)));
        bool ok = false;
        const int column = GetOption(LastUsedFilterColumn).toInt(&ok);
        s.lastUsedFilterColumn = ok && column >= 0 && column < FilterDimensions().size() ? column : -1;
        s.userConfigFile = GetUserConfigFile();
        s.autoLoad = ConfigAutoLoad();
        s.loadTipsAtStartup = DayTips::ShowTipsAtStartup();
        return s;
    });
}

void CheckOptionsSettings(const OptionsSettings &settings)
{
    // Part of OK, whose frame the window gives: the message stays as the check raised it.
    RequireWritableFile(GetConfigFile());
    if (settings.userConfigFile.trimmed().isEmpty())
        Raise(msg::UserConfigFileNotDefined);
    if (!IsFileExists(settings.userConfigFile))
        Raise(msg::UserConfigFileNotExists, {settings.userConfigFile});
    RequireWritableFile(settings.userConfigFile);
    if (settings.viewer == ClashViewer::SmartPlantReview)
        CheckSmartPlantReview(settings);
    if (settings.viewer == ClashViewer::MicroStation)
        CheckMicroStation(settings);
    CheckVolumeBounds(settings.bounds);
    if (!settings.pdsReportFile.trimmed().isEmpty() && !IsFileExists(settings.pdsReportFile))
        Raise(msg::PDSReportFileNotExists, {settings.pdsReportFile});
}

void WriteOptionsSettings(const OptionsSettings &settings, const AdvancedFilterEdit *filter)
{
    Frame("WriteOptionsSettings", [&] {
        using namespace option;
        const OptionsSettings &s = settings;
        QList<OptionValue> values = ClashViewerValues(s.viewer);
        values << OptionValue{&MSTNPath, s.mstnPath} << OptionValue{&DGNSeedFile, s.dgnSeedFile}
               << OptionValue{&AutoGenerateSPRSession, Flag(s.autoGenerateSPRSession)} << OptionValue{&DRIFile, s.driFile}
               << OptionValue{&SPRWorkingDirectory, s.sprWorkingDirectory}
               << OptionValue{&ShowClashDialog, Flag(s.showClashDialog)} << OptionValue{&CompSeparator, s.compSeparator}
               << OptionValue{&PDSReportFile, s.pdsReportFile}
               << OptionValue{&AllowOpenLockedProject, Flag(s.allowOpenLockedProject)}
               << OptionValue{&CompAColor, QString::number(s.compAColor)}
               << OptionValue{&CompBColor, QString::number(s.compBColor)}
               << OptionValue{&ApprovedDescr, s.descriptions[0]} << OptionValue{&UnapprovedDescr, s.descriptions[1]}
               << OptionValue{&Descr, s.descriptions[2]} << OptionValue{&AddUserID, Flag(s.addUserID)}
               << OptionValue{&ChangeClashDescr, Flag(!s.neverChangeDescr)}
               << OptionValue{&OverwriteClashDescr, Flag(!s.neverOverwriteDescr)}
               << OptionValue{&ShowDescrDialog, Flag(s.showDescrDialog)}
               << OptionValue{&SetAutoFilter, Flag(s.setAutoFilter)}
               << OptionValue{&ShowFilterDialog, Flag(s.showFilterDialog)} << OptionValue{&Area, s.area};
        for (std::size_t i = 0; i < s.bounds.size(); ++i)
            values << OptionValue{VolumeBoundKeys().at(qsizetype(i)), s.bounds[i]};
        for (std::size_t i = 0; i < s.centres.size(); ++i)
            values << OptionValue{DvcsCenterKeys().at(qsizetype(i)), s.centres[i]};
        values << OptionValue{&LastUsedFilterColumn,
                              s.lastUsedFilterColumn < 0 ? QString() : QString::number(s.lastUsedFilterColumn)};
        SetOptions(values, s.userConfigFile);
        if (filter)
            filter->CopyBack(s.userConfigFile);

        SetUserConfigFile(s.userConfigFile);
        SetConfigUserConfigFile(ExecutionModeKind::Approve, s.userConfigFile);
        SetConfigAutoLoad(s.autoLoad);
        DayTips::SetShowTipsAtStartup(s.loadTipsAtStartup);
    });
}

} // namespace fx

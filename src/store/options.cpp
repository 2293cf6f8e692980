#include "store/options.h"

#include "frame/inifile.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "store/clashstore.h"
#include "viewers/externalviewers.h"

#include <QDir>

#include <algorithm>
#include <vector>

namespace fx {

namespace {

QString FileOrUserConfig(const QString &configFile)
{
    return configFile.isEmpty() ? GetUserConfigFile() : configFile;
}

const QString kOn = QStringLiteral("1");
const QString kOff = QStringLiteral("0");

} // namespace

QString option::DefaultMSTNPath(const QString &)
{
    return GetDefaultMSTNPath();
}

QString option::DefaultDGNSeedFile(const QString &)
{
    return ProgramDir() + QDir::toNativeSeparators(QStringLiteral("Seed/Seed.dgn"));
}

QString option::DefaultBuiltInViewer(const QString &configFile)
{
    const bool externalRuns = CanRunMicroStation(GetOption(MSTNPath, configFile)) || CanRunSmartPlantReview();
    return externalRuns ? kOff : kOn;
}

const QList<const OptionKey *> &OptionTable()
{
    using namespace option;
    static const QList<const OptionKey *> table{
        &ShowClashesInSPR, &ShowClashesInBuiltInViewer, &MSTNPath, &DGNSeedFile, &AutoGenerateSPRSession, &DRIFile,
        &SPRWorkingDirectory, &ShowClashDialog, &View, &ViewMode, &ShowViewControl, &CompSeparator, &PDSReportFile,
        &AllowOpenLockedProject, &CompAColor, &CompBColor, &ApprovedDescr, &UnapprovedDescr, &Descr, &AddUserID,
        &ChangeClashDescr, &OverwriteClashDescr, &ShowDescrDialog, &SetAutoFilter, &ShowFilterDialog, &Area,
        &EastingLow, &NorthingLow, &ElevationLow, &EastingHigh, &NorthingHigh, &ElevationHigh, &EastingCenter,
        &NorthingCenter, &ElevationCenter, &LastUsedFilterColumn,
    };
    return table;
}

const QList<const OptionKey *> &VolumeBoundKeys()
{
    using namespace option;
    static const QList<const OptionKey *> keys{&EastingLow,  &NorthingLow,  &ElevationLow,
                                               &EastingHigh, &NorthingHigh, &ElevationHigh};
    return keys;
}

const QList<const OptionKey *> &DvcsCenterKeys()
{
    using namespace option;
    static const QList<const OptionKey *> keys{&EastingCenter, &NorthingCenter, &ElevationCenter};
    return keys;
}

QString OptionSection(const OptionKey &key)
{
    const QString word = QString::fromLatin1(key.section);
    return key.scope == OptionScope::Project ? GetProjectName() + word : word;
}

QString OptionDefault(const OptionKey &key, const QString &configFile)
{
    return key.computedDefault ? key.computedDefault(configFile) : QString::fromUtf8(key.defaultValue);
}

QString GetOption(const OptionKey &key, const QString &configFile)
{
    // The default is computed only when it is needed: some ask the registry.
    const QString value = GetIniValue(FileOrUserConfig(configFile), OptionSection(key), QString::fromLatin1(key.key));
    return value.isEmpty() ? OptionDefault(key, configFile) : value;
}

bool GetOptionFlag(const OptionKey &key, const QString &configFile)
{
    const QString value = GetOption(key, configFile);
    return key.flagRule == FlagRule::OnlyOne ? value == kOn : value != kOff;
}

qint32 GetOptionColor(const OptionKey &key, const QString &configFile)
{
    bool ok = false;
    // Digits alone: a sign, a decimal point or a thousands comma make no colour.
    const QString value = GetOption(key, configFile);
    const bool digits = !value.isEmpty() && std::all_of(value.cbegin(), value.cend(), [](QChar c) { return c.isDigit(); });
    const qint64 number = digits ? value.toLongLong(&ok) : 0;
    if (!ok || number > 0xFFFFFF)
        return QString::fromLatin1(key.defaultValue).toInt();
    return qint32(number);
}

void SetOption(const OptionKey &key, const QString &value, const QString &configFile)
{
    SetIniValue(FileOrUserConfig(configFile), OptionSection(key), QString::fromLatin1(key.key), value);
}

void SetOptionFlag(const OptionKey &key, bool on, const QString &configFile)
{
    SetOption(key, on ? kOn : kOff, configFile);
}

void SetOptions(const QList<OptionValue> &values, const QString &configFile)
{
    std::vector<IniEdit> edits;
    for (const OptionKey *key : OptionTable())
        for (const OptionValue &value : values)
            if (value.key == key)
                edits.push_back({OptionSection(*key), QString::fromLatin1(key->key), value.value});
    IniFile::Write(FileOrUserConfig(configFile), edits);
}

ClashViewer GetClashViewer(const QString &configFile)
{
    if (GetOptionFlag(option::ShowClashesInBuiltInViewer, configFile))
        return ClashViewer::BuiltIn;
    return GetOptionFlag(option::ShowClashesInSPR, configFile) ? ClashViewer::SmartPlantReview
                                                                : ClashViewer::MicroStation;
}

QList<OptionValue> ClashViewerValues(ClashViewer viewer)
{
    QList<OptionValue> values;
    if (viewer != ClashViewer::BuiltIn)
        values.append({&option::ShowClashesInSPR, viewer == ClashViewer::SmartPlantReview ? kOn : kOff});
    values.append({&option::ShowClashesInBuiltInViewer, viewer == ClashViewer::BuiltIn ? kOn : kOff});
    return values;
}

void SetClashViewer(ClashViewer viewer, const QString &configFile)
{
    SetOptions(ClashViewerValues(viewer), configFile);
}

} // namespace fx

// The life of a project in the approval window: start-up, load, close with its save dialog,
// the settings files and the recent projects.

#include "approve/messages.h"
#include "approve/recentprojects.h"
#include "approve/startupproject.h"
#include "approve/ui/frmdaytip.h"
#include "approve/ui/frmfendrix.h"
#include "approve/ui/frmoptions.h"
#include "approve/ui/frmsavechanges.h"
#include "approve/ui/frmselectproject.h"
#include "frame/configkeys.h"
#include "frame/datetimetext.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "frame/tempdir.h"
#include "frame/translation.h"
#include "frame/ui/controllock.h"
#include "frame/ui/filefilter.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/waitcursor.h"
#include "grid/ui/clashgridview.h"
#include "pds/messages.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"
#include "store/savechanges.h"
#include "store/savetoproject.h"

#include <QAction>
#include <QElapsedTimer>
#include <QTime>
#include <QTimer>

#include <optional>

namespace fx {

namespace {

QString DialogFilter(const char *filter)
{
    return QtFileFilter(TranslateText(QString::fromUtf8(filter)));
}

// "hh:mm:ss" of an elapsed time, hours going past 24 if they must.
QString ElapsedText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
        .arg((seconds / 60) % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

// The items a close makes usable again, whatever a load or a lock left them.
const QStringList &ItemsEnabledByClose()
{
    static const QStringList keys{
        QStringLiteral("Menu_File_LoadClashes4PDS"), QStringLiteral("Menu_File_LoadClashes4File"),
        QStringLiteral("Menu_File_SaveSettings"),    QStringLiteral("Menu_View_EventWindow"),
    };
    return keys;
}

} // namespace

void FrmFendrix::RunStartup()
{
    if (m_startupDone)
        return;
    m_timer->stop();
    m_startupDone = true;
    const bool done = RunShowingFailure("Timer1_Timer", [this] {
        m_grid->SetGridText(QString::fromUtf8(msg::PleaseSelectProject));
        bool cancel = false;
        CloseProject(false, cancel);

        m_tempDir = CreateTempDir();
        Process().WorkDir = m_tempDir;
        RefreshRecentProjects();

        for (const QString &warning : SettleUserConfigFile())
            ShowMessage(warning, MbIconExclamation);

        const StartupProject startup = ChooseStartupProject();
        if (startup.load) {
            if (startup.fromCommandLine)
                RefreshRecentProjects(RecentProjects::EntryOf(startup.project, startup.controlFile));
            LoadProject(startup.project, startup.controlFile);
        }
        FrmDayTip::ShowMe(this);
        if (GetProjectName() == QLatin1String("NO_PROJECT"))
            LoadFromPDS();
    });
    if (!done) {
        bool cancel = false;
        RunShowingFailure("Timer1_Timer", [&] { CloseProject(false, cancel); });
    }
}

void FrmFendrix::LoadProject(const QString &project, const QString &controlFile)
{
    Frame("LoadProject", [&] {
        bool cancel = false;
        CloseProject(true, cancel);
        if (cancel)
            return;

        std::optional<Failure> kept;
        {
            WaitCursor wait;
            ControlLock lock(this);
            QElapsedTimer elapsed;
            elapsed.start();
            const bool fromFile = controlFile.trimmed().isEmpty();
            m_grid->SetGridText(
                ArgForm(fromFile ? msg::LoadingProjectFromFile : msg::LoadingProjectText, {project}));
            try {
                InitClashes(fromFile ? project : controlFile, fromFile ? QString() : project);
                SetTitle();
                if (!fromFile) {
                    SetConfigControlFile(controlFile);
                    SetConfigProject(controlFile, project);
                }
                try {
                    LoadSetting4INI();
                } catch (const Failure &failure) {
                    kept = failure;
                }
                RefreshRecentProjects(RecentProjects::EntryOf(project, controlFile));
            } catch (const Failure &failure) {
                kept = failure;
            }
            if (!kept)
                LogMessage(msg::ProjectLoadedSuccessfully, {ElapsedText(elapsed.elapsed())});
        }
        if (kept) {
            m_grid->SetGridText(kept->Description());
            bool ignored = false;
            CloseProject(false, ignored);
            // The grid keeps telling what went wrong until the next gesture.
            m_grid->SetGridText(kept->Description());
            ApplyPermissions();
            throw *kept;
        }
        ApplyPermissions();
    });
}

void FrmFendrix::CloseProject(bool askSave, bool &cancel)
{
    Frame("CloseProject", [&] {
        cancel = false;
        if (GetClashesChanged() && askSave && !RunSaveDialog()) {
            cancel = true;
            return;
        }
        WaitCursor wait;
        m_grid->FreeGrid();
        FreeClashes();
        for (const QString &key : ItemsEnabledByClose())
            if (QAction *item = m_menuBar.items.value(key))
                item->setEnabled(true);
        for (int number = 1; number <= RecentProjects::MaxEntries; ++number)
            if (QAction *item = m_menuBar.items.value(RecentProjectKey(number)))
                item->setEnabled(true);
        SetClashesChanged(false);
        SetTitle();
        m_grid->SetGridText(QString::fromUtf8(msg::PleaseSelectProject));
        ApplyPermissions();
    });
}

void FrmFendrix::LoadSetting4INI()
{
    Frame("LoadSetting4INI", [&] {
        // The settings files are read anew at every lookup, so what the file holds now counts.
        LogMessage(msg::LoadingSettingsFrom, {GetUserConfigFile()});
        WaitCursor wait;
        ControlLock lock(this);
        m_grid->ShowClashesInGrid();
    });
}

void FrmFendrix::RefreshRecentProjects(const QString &newEntry)
{
    Frame("RefreshRecentProjects", [&] {
        RecentProjects recent;
        const RecentMenuState state = recent.RefreshRecentProjects(newEntry);
        if (state.separatorVisible)
            SetMenuProperty(m_menuBar, QStringLiteral("Menu_File_MinusRecentProject"), QStringLiteral("Visible"), true);
        for (const RecentMenuItem &item : state.items) {
            QAction *action = m_menuBar.items.value(item.key);
            if (!action)
                continue;
            // An "&" in a path is no access key.
            action->setText(QString(item.caption).replace(QLatin1Char('&'), QLatin1String("&&")));
            action->setData(item.tag);
            action->setVisible(item.visible);
        }
    });
}

void FrmFendrix::ApplyPermissions()
{
    RunShowingFailure("ApplyPermissions", [this] {
        ApplyEnabledStates(m_menuBar, fx::ApplyPermissions(PermissionForm::Main, CurrentPermissionContext()));
    });
}

bool FrmFendrix::RunSaveDialog()
{
    const int status = FrmSaveChanges::ShowForm(this);
    bool goOn = false;
    try {
        WaitCursor wait;
        ControlLock lock(this);
        goOn = ApplySaveChangesStatus(status, [this](const QString &offered) {
            return ChooseFile(true, DialogFilter(msg::ClashFileFilter), offered);
        });
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
        // Nothing differed from the project: closing loses nothing. Any other failure keeps
        // the project open, so no review is lost.
        goOn = failure.Number() == NoChangesFoundNumber;
    }
    SetTitle();
    return goOn;
}

void FrmFendrix::LoadFromPDS()
{
    const SelectProjectResult result = FrmSelectProject::Run(this);
    switch (result.outcome) {
    case SelectProjectResult::Outcome::Project:
        LoadProject(result.project, result.controlFile);
        break;
    case SelectProjectResult::Outcome::ClashFile:
        LoadProject(result.clashFile, QString());
        break;
    case SelectProjectResult::Outcome::Cancelled:
        break;
    }
}

void FrmFendrix::LoadFromFile()
{
    const QString file = ChooseFile(false, DialogFilter(msg::ClashFileFilter), QString());
    if (!file.isEmpty())
        LoadProject(file, QString());
}

void FrmFendrix::LoadRecentProject(const QString &key)
{
    QAction *item = m_menuBar.items.value(key);
    if (!item)
        Raise(msg::MenuItemNotFound, {key});
    QString project;
    QString controlFile;
    ParseRecentProject(QString(item->text()).replace(QLatin1String("&&"), QLatin1String("&")), project, controlFile);
    LoadProject(project, controlFile);
}

void FrmFendrix::LoadSettingsFromFile()
{
    const QString file = ChooseFile(false, DialogFilter(msg::SettingsFileFilter), QString());
    if (file.isEmpty())
        return;
    CopyFileA(file, GetUserConfigFile());
    LoadSetting4INI();
}

void FrmFendrix::ShowOptions()
{
    m_grid->SaveColumnSettings();
    if (!FrmOptions::ShowForm(this))
        return;
    // Only a setting that shapes `clashes` is worth building the view anew.
    if (GetProjectName() != QLatin1String("NO_PROJECT") && IsClashViewOutdated())
        LoadSetting4INI();
}

void FrmFendrix::SaveSettingsToFile()
{
    m_grid->SaveColumnSettings();
    const QString file = ChooseFile(true, DialogFilter(msg::SettingsFileFilter), QString());
    if (file.isEmpty())
        return;
    CopyFileA(GetUserConfigFile(), file);
}

} // namespace fx

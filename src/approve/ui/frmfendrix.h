#pragma once
// frmFendrix, the main window of the approval module: the clashes of one project in the grid,
// the menus and toolbar that work on them, the event window, and the life of a project from
// its load to its close.

#include "approve/ui/mainmenubar.h"

#include <QMainWindow>
#include <QString>

#include <functional>

class QListWidget;
class QTimer;

namespace fx {

class ClashGridView;
class EventWindow;

class FrmFendrix : public QMainWindow
{
    Q_OBJECT

public:
    /// Asks for a file: to open (`save` false) or to save, with a dialog filter and an offered
    /// path. Empty when the user cancelled.
    using FileChooser = std::function<QString(bool save, const QString &filter, const QString &offered)>;

    /// The form's load: the window's place, menus, toolbar, languages and event window; the
    /// start-up itself follows by the timer once the event loop runs.
    explicit FrmFendrix(QWidget *parent = nullptr);
    ~FrmFendrix() override;

    /// Replaces the file dialogs (scripts and tests); null gives the dialogs back.
    void SetFileChooser(FileChooser chooser);

    /// The start-up that the form's timer runs once; public so a caller can run it at once.
    void RunStartup();

    /// Opens a PDS project (with its control file) or a clash file (with an empty control file).
    /// Raises after showing what failed in the grid; nothing is left open then.
    void LoadProject(const QString &project, const QString &controlFile);
    /// Closes the open project, asking first about unsaved changes when `askSave`; `cancel`
    /// tells that the user kept it open.
    void CloseProject(bool askSave, bool &cancel);
    /// Reloads the settings of the user config file and shows the clashes anew.
    void LoadSetting4INI();
    /// The recent projects in the File menu, with `newEntry` put on top when given.
    void RefreshRecentProjects(const QString &newEntry = QString());
    /// Enables the menu items and toolbar buttons as the project and the user's permissions allow.
    void ApplyPermissions();

    /// A click on the menu item `key`.
    void RunMenuCommand(const QString &key);
    /// A click on toolbar button `index` (1 to 10).
    void RunToolButton(int index);

    ClashGridView *Grid() const { return m_grid; }
    QListWidget *EventList() const;
    const MainMenuBar &MenuBar() const { return m_menuBar; }

    /// True when the window was left for the check module.
    bool LeftForCheckModule() const { return m_leaveForCheck; }

Q_SIGNALS:
    /// The unload has run: the process ends, or the check module follows.
    void Unloaded(bool switchToCheck);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void SetTitle();
    void SetEventWindowVisible(bool visible);
    void ApprovalFlow(int buttonIndex);
    bool ShowFilterMessage();
    bool RunSaveDialog();
    void LoadFromPDS();
    void LoadFromFile();
    void LoadRecentProject(const QString &key);
    void LoadSettingsFromFile();
    void SaveSettingsToFile();
    void ShowOptions();
    void OpenManual();
    bool QueryUnload();
    void Unload();
    QString ChooseFile(bool save, const QString &filter, const QString &offered);

    ClashGridView *m_grid = nullptr;
    EventWindow *m_eventWindow = nullptr;
    MainMenuBar m_menuBar;
    QTimer *m_timer = nullptr;
    FileChooser m_fileChooser;
    QString m_tempDir;
    bool m_leaveForCheck = false;
    bool m_startupDone = false;
    bool m_unloaded = false;
};

} // namespace fx

#include "approve/ui/frmfendrix.h"

#include "approve/messages.h"
#include "approve/ui/eventwindow.h"
#include "approve/ui/frmabout.h"
#include "frame/caption.h"
#include "frame/configkeys.h"
#include "frame/fileops.h"
#include "frame/log.h"
#include "frame/logmessage.h"
#include "frame/messages.h"
#include "frame/processstate.h"
#include "frame/programinfo.h"
#include "frame/settings.h"
#include "frame/tempdir.h"
#include "frame/translation.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/translateform.h"
#include "grid/ui/clashgridview.h"
#include "pds/cris.h"
#include "store/clashstore.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileDialog>
#include <QSplitter>
#include <QTimer>
#include <QUrl>

namespace fx {

namespace {

inline constexpr char FormName[] = "frmFendrix";
inline constexpr ConfigKey EventWindowKey{"Approve", "EventWindow", "1"};

} // namespace

FrmFendrix::FrmFendrix(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QString::fromUtf8(FormName));
    // The title is composed and translated by SetTitle.
    setProperty(NoTranslateProperty, true);
    setAttribute(Qt::WA_DeleteOnClose, false);
    LogMessage(msg::StartingProgram, {ApplicationTitle()});

    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("splitter"));
    m_grid = new ClashGridView(splitter);
    m_grid->setObjectName(QStringLiteral("grdClashes"));
    m_grid->SetFilterMessageHook([this] { return ShowFilterMessage(); });
    m_eventWindow = new EventWindow(splitter);
    splitter->addWidget(m_grid);
    splitter->addWidget(m_eventWindow);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setSizes({600, 90});
    setCentralWidget(splitter);
    resize(1100, 720);

    RestoreFormPlace(this, QString::fromUtf8(FormName));
    m_menuBar = AddSystemMenuAndBar(
        this, [this](const QString &key) { RunMenuCommand(key); }, [this](int index) { RunToolButton(index); });
    RunShowingFailure("Form_Load", [this] { InitLanguageMenu(m_menuBar.languageMenu); });
    TranslateForm(this);
    SetEventWindowVisible(ReadConfigKey(GetConfigFile(), EventWindowKey) != QLatin1String("0"));
    SetTitle();

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &FrmFendrix::RunStartup);
    m_timer->start();
}

FrmFendrix::~FrmFendrix()
{
    if (!m_unloaded)
        Unload();
}

void FrmFendrix::SetFileChooser(FileChooser chooser)
{
    m_fileChooser = std::move(chooser);
}

QListWidget *FrmFendrix::EventList() const
{
    return m_eventWindow;
}

void FrmFendrix::SetTitle()
{
    CaptionState state;
    state.batchMode = Process().BatchMode;
    state.kind = MainWindowKind::Approval;
    state.projectName = GetProjectName();
    state.offline = !IsSchemaAvailable();
    state.readOnly = IsReadOnly();
    state.clashFile = GetClashFile();
    state.withProjectName = true;
    setWindowTitle(ComposeWindowCaption(state));
}

void FrmFendrix::SetEventWindowVisible(bool visible)
{
    m_eventWindow->setVisible(visible);
    if (QAction *item = m_menuBar.items.value(QStringLiteral("Menu_View_EventWindow")))
        item->setChecked(visible);
}

void FrmFendrix::RunMenuCommand(const QString &key)
{
    RunShowingFailure("Menu_Click", [&] {
        switch (DispatchMenuKey(key)) {
        case MenuCommand::LoadClashes4PDS:
            LoadFromPDS();
            break;
        case MenuCommand::LoadClashes4File:
            LoadFromFile();
            break;
        case MenuCommand::LoadSettings:
            LoadSettingsFromFile();
            break;
        case MenuCommand::SaveSettings:
            SaveSettingsToFile();
            break;
        case MenuCommand::Options:
            ShowOptions();
            break;
        case MenuCommand::Save:
            if (m_grid->IsOpen())
                RunSaveDialog();
            break;
        case MenuCommand::RecentProject:
            LoadRecentProject(key);
            break;
        case MenuCommand::Exit:
            close();
            break;
        case MenuCommand::ApproveReal:
            RunToolButton(1);
            break;
        case MenuCommand::ApproveFalse:
            RunToolButton(2);
            break;
        case MenuCommand::Unapprove:
            RunToolButton(3);
            break;
        case MenuCommand::SetDescription:
            RunToolButton(4);
            break;
        case MenuCommand::EventWindow: {
            const bool visible = !m_eventWindow->isVisible();
            SetEventWindowVisible(visible);
            WriteConfigKey(GetConfigFile(), EventWindowKey, visible ? QStringLiteral("1") : QStringLiteral("0"));
            break;
        }
        case MenuCommand::LanguageSwitch:
            SetLanguageFromMenu(m_menuBar.languageMenu, key);
            SetTitle();
            break;
        case MenuCommand::Manual:
            OpenManual();
            break;
        case MenuCommand::About:
            FrmAbout::ShowAbout(this);
            break;
        default:
            // The commands whose windows this program does not have are disabled; a key
            // that still gets here does nothing rather than pretend.
            break;
        }
    });
}

void FrmFendrix::RunToolButton(int index)
{
    // Without clashes in the grid no button has anything to work on.
    if (!m_grid->IsOpen())
        return;
    RunShowingFailure("Toolbar1_ButtonClick", [&] {
        switch (index) {
        case 1:
        case 2:
        case 3:
        case 4:
            ApprovalFlow(index);
            break;
        case 10:
            RunSaveDialog();
            break;
        default:
            break;
        }
    });
}

void FrmFendrix::OpenManual()
{
    const QString manual = ProgramDir() + QString::fromUtf8(msg::ManualFile);
    if (!IsFileExists(manual))
        Raise(msg::FileNotExists, {manual});
    QDesktopServices::openUrl(QUrl::fromLocalFile(manual));
}

QString FrmFendrix::ChooseFile(bool save, const QString &filter, const QString &offered)
{
    if (m_fileChooser)
        return m_fileChooser(save, filter, offered);
    return save ? QFileDialog::getSaveFileName(this, QString(), offered, filter)
                : QFileDialog::getOpenFileName(this, QString(), offered, filter);
}

void FrmFendrix::closeEvent(QCloseEvent *event)
{
    if (m_unloaded) {
        event->accept();
        return;
    }
    if (!QueryUnload()) {
        event->ignore();
        return;
    }
    event->accept();
    Unload();
}

bool FrmFendrix::QueryUnload()
{
    bool close = false;
    RunShowingFailure("Form_QueryUnload", [&] {
        const bool readOnly = IsReadOnly();
        // Unsaved changes of a writable project get the save dialog instead of the question.
        if (!(GetClashesChanged() && !readOnly)) {
            const int answer = MessageBoxAnswer(TranslateText(QString::fromUtf8(msg::ReallyCloseWindow)),
                                                MbYesNo | MbIconQuestion | MbDefButton2, windowTitle(), true, this);
            if (answer == IdNo)
                return;
        }
        bool cancel = false;
        CloseProject(!readOnly, cancel);
        close = !cancel;
    });
    return close;
}

void FrmFendrix::Unload()
{
    m_unloaded = true;
    LogMessage(msg::Finishing, {});
    m_grid->SetGridText(QString::fromUtf8(msg::FinishingStatus));
    SaveFormPlace(this, QString::fromUtf8(FormName));
    if (!m_tempDir.isEmpty()) {
        // Nothing of the session may still hold a file in the folder.
        FreeClashes();
        RemoveTempDir(m_tempDir);
        Process().WorkDir = Process().TempDir;
        m_tempDir.clear();
    }
    TheCRIS().CloseConnection();
    LogMessage(msg::Bye, {});
    Q_EMIT Unloaded(m_leaveForCheck);
}

} // namespace fx

#include "pds/selectproject.h"

#include "frame/configkeys.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "pds/messages.h"

namespace fx {

namespace {
constexpr quint32 kExclamation = 48;

// Locks the dialog's controls for as long as it lives.
class ControlsLock
{
public:
    explicit ControlsLock(const std::function<void(bool)> &lock) : m_lock(lock)
    {
        if (m_lock)
            m_lock(true);
    }
    ~ControlsLock()
    {
        if (m_lock)
            m_lock(false);
    }
    ControlsLock(const ControlsLock &) = delete;
    ControlsLock &operator=(const ControlsLock &) = delete;

private:
    const std::function<void(bool)> &m_lock;
};
} // namespace

SelectProjectModel::SelectProjectModel()
    : m_showFailure([](const Failure &failure) { ShowMessage(failure, kExclamation); })
    , m_showText([](const QString &text) { ShowMessage(text, kExclamation); })
{
}

QString SelectProjectModel::Title()
{
    return QString::fromUtf8(msg::SelectProjectTitle);
}

QString SelectProjectModel::ControlFileFilter()
{
    return QString::fromUtf8(msg::ControlFileFilter);
}

QString SelectProjectModel::ClashFileFilter()
{
    return QString::fromUtf8(msg::ClashFileFilter);
}

QString SelectProjectModel::DefaultControlFile()
{
    return Frame("DefaultControlFile", [] {
        LogMessage(msg::GettingDefaultControlFile, {});
        const QString configured = ConfigControlFile().trimmed();
        return configured.isEmpty() ? PdShellValue(QStringLiteral("ControlFile")) : configured;
    });
}

void SelectProjectModel::Open()
{
    try {
        Frame("frmSelectProject::Form_Load", [&] {
            m_autoLoad = ConfigAutoLoad();
            SetControlFile(DefaultControlFile());
        });
    } catch (const Failure &failure) {
        m_showFailure(failure);
    }
}

void SelectProjectModel::SetControlFile(const QString &controlFile)
{
    if (controlFile == m_controlFile)
        return;
    m_controlFile = controlFile;
    m_projects.clear();
    m_selected = -1;
    try {
        Frame("frmSelectProject::txtControlFile_Change", [&] { ReadProjects(); });
    } catch (const Failure &failure) {
        m_projects.clear();
        m_selected = -1;
        m_showFailure(failure);
    }
}

void SelectProjectModel::ReadProjects()
{
    const ControlsLock lock(m_lockControls);
    LogMessage(msg::ReadingControlFile, {m_controlFile});
    const ProjFile projFile = GetProjFile(m_controlFile, false);
    LogMessage(msg::ReadingProjFile, {projFile.PROJ_ADDR, projFile.PROJ_FILE});
    const QList<ProjFileProject> projects = GetProjFileProjects(projFile);
    LogMessage(msg::ProjectsFound, {QString::number(projects.size())});
    if (projects.isEmpty())
        m_showText(QString::fromUtf8(msg::NoProjectsInControlFile));
    m_projects = projects;
    const QString stored = ConfigProject(m_controlFile).trimmed();
    for (int i = 0; i < m_projects.size() && !stored.isEmpty(); ++i) {
        if (m_projects[i].Name.compare(stored, Qt::CaseInsensitive) == 0) {
            m_selected = i;
            break;
        }
    }
}

QStringList SelectProjectModel::ProjectNames() const
{
    QStringList names;
    for (const ProjFileProject &project : m_projects)
        names.append(project.Name);
    return names;
}

void SelectProjectModel::Select(int index)
{
    m_selected = index >= 0 && index < m_projects.size() ? index : -1;
}

void SelectProjectModel::Finish(SelectProjectResult result)
{
    m_result = std::move(result);
    m_finished = true;
}

bool SelectProjectModel::Accept()
{
    try {
        Frame("frmSelectProject::cmdOK_Click", [&] {
            if (m_selected < 0)
                Raise(msg::ProjectNotDefined);
            Finish({SelectProjectResult::Outcome::Project, m_controlFile, m_projects[m_selected].Name, QString()});
            SetConfigAutoLoad(m_autoLoad);
        });
        return true;
    } catch (const Failure &failure) {
        m_showFailure(failure);
        return false;
    }
}

bool SelectProjectModel::AcceptByItself()
{
    return m_autoLoad && Accept();
}

bool SelectProjectModel::LoadFromClashFile(const QString &clashFile)
{
    if (clashFile.trimmed().isEmpty())
        return false;
    Finish({SelectProjectResult::Outcome::ClashFile, QString(), QString(), clashFile});
    SetConfigAutoLoad(m_autoLoad);
    return true;
}

void SelectProjectModel::Cancel()
{
    Finish({});
}

} // namespace fx

#pragma once
// The project selection without its window: the control file, its projects, the preselected
// one, AutoLoad, and how the selection ends. The dialog shows this state and forwards its events.

#include "frame/failure.h"
#include "pds/projfile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace fx {

/// How the selection ended.
struct SelectProjectResult
{
    enum class Outcome { Cancelled, Project, ClashFile };
    Outcome outcome = Outcome::Cancelled;
    QString controlFile;
    QString project;
    QString clashFile; ///< a local clash file to open instead of a project
};

class SelectProjectModel
{
public:
    SelectProjectModel();

    /// Where failures go (a box by default); the event never lets them out.
    void SetShowFailure(std::function<void(const Failure &)> show) { m_showFailure = std::move(show); }
    /// Where plain messages in argument form go (a box by default).
    void SetShowText(std::function<void(const QString &)> show) { m_showText = std::move(show); }
    /// Called with true before a control file is read and with false after, on every way out.
    void SetLockControls(std::function<void(bool)> lock) { m_lockControls = std::move(lock); }

    /// Opening: AutoLoad from Config.ini, then the default control file, read at once.
    void Open();

    /// The dialog's title.
    static QString Title();
    /// The file filters of the two file choices.
    static QString ControlFileFilter();
    static QString ClashFileFilter();

    /// The control file of Config.ini's section named after the application, else the PDS shell's.
    static QString DefaultControlFile();

    bool AutoLoad() const { return m_autoLoad; }
    void SetAutoLoad(bool on) { m_autoLoad = on; }

    const QString &ControlFile() const { return m_controlFile; }
    /// The text of the control file box changed: its projects are read, the stored one selected.
    /// An unchanged text reads nothing.
    void SetControlFile(const QString &controlFile);

    const QList<ProjFileProject> &Projects() const { return m_projects; }
    QStringList ProjectNames() const;
    /// The selected project's index, -1 for none.
    int SelectedIndex() const { return m_selected; }
    void Select(int index);

    /// OK: needs a selected project; the result is taken and AutoLoad stored. False if refused.
    bool Accept();
    /// The timer of AutoLoad: accepts on its own when AutoLoad is on.
    bool AcceptByItself();
    /// The clash file chosen instead of a project; a blank choice changes nothing.
    bool LoadFromClashFile(const QString &clashFile);
    void Cancel();

    /// True once Accept, LoadFromClashFile or Cancel has ended the selection.
    bool IsFinished() const { return m_finished; }
    const SelectProjectResult &Result() const { return m_result; }

private:
    void ReadProjects();
    void Finish(SelectProjectResult result);

    std::function<void(const Failure &)> m_showFailure;
    std::function<void(const QString &)> m_showText;
    std::function<void(bool)> m_lockControls;
    bool m_autoLoad = false;
    QString m_controlFile;
    QList<ProjFileProject> m_projects;
    int m_selected = -1;
    bool m_finished = false;
    SelectProjectResult m_result;
};

} // namespace fx

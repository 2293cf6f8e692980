#include "approve/ui/frmselectproject.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/paths.h"
#include "frame/ui/controllock.h"
#include "frame/ui/filefilter.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <memory>

namespace fx {

namespace {
// Long enough for the window to be seen before it accepts on its own.
constexpr int kAutoLoadDelayMs = 500;
} // namespace

FrmSelectProject::FrmSelectProject(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSelectProject"));
    setWindowTitle(SelectProjectModel::Title());

    auto *controlLabel = NamedControl<QLabel>(this, "lblControlFile", msg::SelectProjectControlFile);
    m_txtControlFile = NamedControl<QLineEdit>(this, "txtControlFile");
    auto *cmdSelectFile = NamedControl<QPushButton>(this, "cmdSelectFile", msg::SelectProjectBrowse);
    auto *projectsLabel = NamedControl<QLabel>(this, "lblProjects", msg::SelectProjectProjects);
    m_lstProjects = NamedControl<QListWidget>(this, "lstProjects");
    m_chkAutoReload = NamedControl<QCheckBox>(this, "chkAutoReload", msg::SelectProjectAutoReload);
    auto *cmdOK = NamedControl<QPushButton>(this, "cmdOK", msg::ButtonOK);
    auto *cmdLoad4File = NamedControl<QPushButton>(this, "cmdLoad4File", msg::SelectProjectLoad4File);
    auto *cmdCancel = NamedControl<QPushButton>(this, "cmdCancel", msg::ButtonCancel);
    cmdOK->setDefault(true);

    auto *grid = new QGridLayout(this);
    grid->addWidget(controlLabel, 0, 0, 1, 2);
    grid->addWidget(m_txtControlFile, 1, 0);
    grid->addWidget(cmdSelectFile, 1, 1);
    grid->addWidget(projectsLabel, 2, 0, 1, 2);
    grid->addWidget(m_lstProjects, 3, 0, 1, 2);
    grid->addWidget(m_chkAutoReload, 4, 0, 1, 2);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdLoad4File);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    grid->addLayout(buttons, 5, 0, 1, 2);
    resize(460, 380);

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(kAutoLoadDelayMs);

    // Reading a control file runs the project's shell script; the window stays locked meanwhile.
    auto lock = std::make_shared<std::unique_ptr<ControlLock>>();
    m_model.SetLockControls([this, lock](bool on) {
        if (on)
            *lock = std::make_unique<ControlLock>(this);
        else
            lock->reset();
    });

    // A typed path is read when the user leaves the box, not at every key.
    connect(m_txtControlFile, &QLineEdit::editingFinished, this, [this] { ReadControlFile(m_txtControlFile->text()); });
    connect(cmdSelectFile, &QPushButton::clicked, this, [this] {
        const QString start = m_model.ControlFile().isEmpty() ? QString() : QFileInfo(m_model.ControlFile()).absolutePath();
        const QString file = QFileDialog::getOpenFileName(this, QString(), start,
                                                          QtFileFilter(SelectProjectModel::ControlFileFilter()));
        if (!file.isEmpty())
            ReadControlFile(QDir::toNativeSeparators(file));
    });
    connect(m_lstProjects, &QListWidget::currentRowChanged, this, [this](int row) { m_model.Select(row); });
    connect(m_lstProjects, &QListWidget::itemDoubleClicked, this, [this] { OnOK(); });
    connect(m_chkAutoReload, &QCheckBox::toggled, this, [this](bool on) { m_model.SetAutoLoad(on); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(cmdLoad4File, &QPushButton::clicked, this, [this] {
        const QString file = QFileDialog::getOpenFileName(this, QString(), QString(),
                                                          QtFileFilter(SelectProjectModel::ClashFileFilter()));
        if (m_model.LoadFromClashFile(QDir::toNativeSeparators(file)))
            accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(m_timer, &QTimer::timeout, this, [this] {
        if (m_model.SelectedIndex() >= 0 && m_model.AcceptByItself())
            accept();
    });

    TranslateForm(this);
    KeepFormPlace(this, objectName());

    m_model.Open();
    ShowModel();
    // AutoLoad accepts the stored project by itself, once the dialog runs.
    if (m_model.AutoLoad() && m_model.SelectedIndex() >= 0)
        m_timer->start();
}

void FrmSelectProject::ReadControlFile(const QString &controlFile)
{
    m_model.SetControlFile(controlFile);
    ShowModel();
}

void FrmSelectProject::ShowModel()
{
    const QSignalBlocker blockText(m_txtControlFile);
    const QSignalBlocker blockList(m_lstProjects);
    const QSignalBlocker blockAuto(m_chkAutoReload);
    if (m_txtControlFile->text() != m_model.ControlFile())
        m_txtControlFile->setText(m_model.ControlFile());
    m_lstProjects->clear();
    m_lstProjects->addItems(m_model.ProjectNames());
    m_lstProjects->setCurrentRow(m_model.SelectedIndex());
    m_chkAutoReload->setChecked(m_model.AutoLoad());
}

void FrmSelectProject::OnOK()
{
    if (m_model.Accept())
        accept();
}

void FrmSelectProject::reject()
{
    m_timer->stop();
    if (!m_model.IsFinished())
        m_model.Cancel();
    QDialog::reject();
}

SelectProjectResult FrmSelectProject::Run(QWidget *parent)
{
    FrmSelectProject dialog(parent);
    dialog.exec();
    return dialog.Model().Result();
}

} // namespace fx

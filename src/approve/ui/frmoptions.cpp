// frmOptions: its pages and controls. What the controls do is in frmoptions_settings.cpp.

#include "approve/ui/frmoptions.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/messagebox.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/advancedfilteredit.h"
#include "store/optionsmessages.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace fx {

namespace {

QGroupBox *NamedFrame(QWidget *parent, const char *name, const char *title)
{
    auto *frame = new QGroupBox(QString::fromLatin1(title), parent);
    frame->setObjectName(QString::fromLatin1(name));
    return frame;
}

// A row of `form`: the label `label` showing `caption`, and the control `box` of type Box.
template <typename Box>
Box *AddRow(QFormLayout *form, QWidget *parent, const char *label, const char *caption, const char *box)
{
    auto *control = NamedControl<Box>(parent, box);
    form->addRow(NamedControl<QLabel>(parent, label, caption), control);
    return control;
}

// A page of the tab control, named so that tests and the control lock find it.
QWidget *NewPage(const char *name)
{
    auto *page = new QWidget;
    page->setObjectName(QString::fromLatin1(name));
    return page;
}

} // namespace

FrmOptions::FrmOptions(QWidget *parent) : QDialog(parent), m_mayChange(IsPermissionGranted(PermissionOptionsNo))
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QString::fromLatin1(msg::OptionsCaption));

    m_pages = new QTabWidget(this);
    m_pages->setObjectName(QStringLiteral("tabOptions"));
    m_pages->addTab(BuildViewerPage(), QString::fromLatin1(msg::OptionsPageViewer));
    m_pages->addTab(BuildClashesPage(), QString::fromLatin1(msg::OptionsPageClashes));
    m_pages->addTab(BuildDescriptionsPage(), QString::fromLatin1(msg::OptionsPageDescriptions));
    m_pages->addTab(BuildVolumePage(), QString::fromLatin1(msg::OptionsPageVolume));
    m_pages->addTab(BuildAdvancedFilterPage(), QString::fromLatin1(msg::OptionsPageAdvancedFilter));
    m_pages->addTab(BuildConfigPage(), QString::fromLatin1(msg::OptionsPageConfig));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    BuildButtons();
    resize(640, 480);

    // Every user sees the pages; only the permission "Options" lets them be changed.
    for (int page = 0; page < m_pages->count(); ++page)
        m_pages->widget(page)->setEnabled(m_mayChange);

    connect(m_pages, &QTabWidget::currentChanged, this, [this] {
        if (m_pages->currentWidget()->objectName() == QLatin1String("pageVolume"))
            ShowVolumePage();
        EnableFields();
    });
    // cmdSelect and cmdOpen work on the file box last used.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        for (QWidget *box : FileBoxesOfPage())
            if (now && (now == box || box->isAncestorOf(now)))
                m_fileBox = box;
    });

    LoadSettings();
    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

FrmOptions::~FrmOptions()
{
    // The pages go before QObject lets go of the connection: a focus change then must not reach them.
    disconnect(qApp, nullptr, this, nullptr);
}

bool FrmOptions::ShowForm(QWidget *parent)
{
    FrmOptions dialog(parent);
    return dialog.exec() == QDialog::Accepted && dialog.Written();
}

QWidget *FrmOptions::BuildViewerPage()
{
    QWidget *page = NewPage("pageViewer");
    auto *layout = new QVBoxLayout(page);

    QGroupBox *viewer = NamedFrame(page, "fraViewer", msg::OptionsViewer);
    auto *viewers = new QHBoxLayout(viewer);
    m_optSPR = NamedControl<QRadioButton>(viewer, "optSPR", msg::OptionsSPR);
    m_optMicroStation = NamedControl<QRadioButton>(viewer, "optMicroStation", msg::OptionsMicroStation);
    m_optBuiltInViewer = NamedControl<QRadioButton>(viewer, "optBuiltInViewer", msg::OptionsBuiltInViewer);
    for (QRadioButton *option : {m_optSPR, m_optMicroStation, m_optBuiltInViewer}) {
        viewers->addWidget(option);
        connect(option, &QRadioButton::toggled, this, &FrmOptions::EnableFields);
    }
    viewers->addStretch();
    layout->addWidget(viewer);

    m_fraMicroStation = NamedFrame(page, "fraMicroStation", msg::OptionsMicroStation);
    auto *microStation = new QFormLayout(m_fraMicroStation);
    m_cmbMSTNPath = AddRow<QComboBox>(microStation, m_fraMicroStation, "lblMSTNPath", msg::OptionsMSTNPath, "cmbMSTNPath");
    m_cmbMSTNPath->setEditable(true);
    m_txtDGNSeedFile =
        AddRow<QLineEdit>(microStation, m_fraMicroStation, "lblDGNSeedFile", msg::OptionsDGNSeedFile, "txtDGNSeedFile");
    layout->addWidget(m_fraMicroStation);

    m_fraSPR = NamedFrame(page, "fraSPR", msg::OptionsSPR);
    auto *spr = new QFormLayout(m_fraSPR);
    m_optAutoGenerateSPRSession =
        NamedControl<QRadioButton>(m_fraSPR, "optAutoGenerateSPRSession", msg::OptionsAutoGenerateSPRSession);
    m_optUseExistingSPRSession =
        NamedControl<QRadioButton>(m_fraSPR, "optUseExistingSPRSession", msg::OptionsUseExistingSPRSession);
    m_txtSPRWorkingDirectory = NamedControl<QLineEdit>(m_fraSPR, "txtSPRWorkingDirectory");
    m_txtDRIFile = NamedControl<QLineEdit>(m_fraSPR, "txtDRIFile");
    spr->addRow(m_optAutoGenerateSPRSession, m_txtSPRWorkingDirectory);
    spr->addRow(m_optUseExistingSPRSession, m_txtDRIFile);
    connect(m_optAutoGenerateSPRSession, &QRadioButton::toggled, this, &FrmOptions::EnableFields);
    layout->addWidget(m_fraSPR);

    m_chkShowClashDialog = NamedControl<QCheckBox>(page, "chkShowClashDialog", msg::OptionsShowClashDialog);
    layout->addWidget(m_chkShowClashDialog);

    QGroupBox *colors = NamedFrame(page, "fraColors", msg::OptionsColors);
    auto *colorRow = new QHBoxLayout(colors);
    const char *labels[] = {"lblCompA", "lblCompB"};
    const char *captions[] = {msg::OptionsCompA, msg::OptionsCompB};
    for (int index = 0; index < 2; ++index) {
        m_lblComp[std::size_t(index)] = NamedControl<QLabel>(colors, labels[index], captions[index]);
        m_lblComp[std::size_t(index)]->setMinimumWidth(120);
        m_lblComp[std::size_t(index)]->setAlignment(Qt::AlignCenter);
        // picComp is a control array: each picture opens the colour choice of its label.
        auto *picture = new QToolButton(colors);
        picture->setObjectName(QStringLiteral("picComp_%1").arg(index));
        picture->setText(QString::fromLatin1(msg::OptionsPickColor));
        connect(picture, &QToolButton::clicked, this, [this, index] { PickColor(index); });
        colorRow->addWidget(m_lblComp[std::size_t(index)]);
        colorRow->addWidget(picture);
    }
    colorRow->addStretch();
    layout->addWidget(colors);
    layout->addStretch();
    return page;
}

QWidget *FrmOptions::BuildClashesPage()
{
    QWidget *page = NewPage("pageClashes");
    auto *layout = new QVBoxLayout(page);
    auto *form = new QFormLayout;
    m_txtSeparator = AddRow<QLineEdit>(form, page, "lblSeparator", msg::OptionsSeparator, "txtSeparator");
    m_txtSeparator->setMaximumWidth(80);
    m_txtPDSReportFile = AddRow<QLineEdit>(form, page, "lblPDSReportFile", msg::OptionsPDSReportFile, "txtPDSReportFile");
    layout->addLayout(form);
    m_chkAllowOpenLockedProject =
        NamedControl<QCheckBox>(page, "chkAllowOpenLockedProject", msg::OptionsAllowOpenLockedProject);
    layout->addWidget(m_chkAllowOpenLockedProject);
    layout->addStretch();
    // The notice comes with the user's tick, not with a stored one.
    connect(m_chkAllowOpenLockedProject, &QCheckBox::clicked, this, [](bool on) {
        if (on)
            ShowMessage(QString::fromLatin1(msg::AllowOpenLockedProjectRisk), MbIconExclamation);
    });
    return page;
}

QWidget *FrmOptions::BuildDescriptionsPage()
{
    QWidget *page = NewPage("pageDescriptions");
    auto *layout = new QVBoxLayout(page);
    auto *form = new QFormLayout;
    // txtDescription is a control array: 0 approving, 1 unapproving, 2 a description alone.
    const char *captions[] = {msg::OptionsApprovedDescr, msg::OptionsUnapprovedDescr, msg::OptionsDescr};
    for (int index = 0; index < 3; ++index) {
        auto *box = new QLineEdit(page);
        box->setObjectName(QStringLiteral("txtDescription_%1").arg(index));
        auto *label = new QLabel(QString::fromLatin1(captions[index]), page);
        label->setObjectName(QStringLiteral("lblDescription_%1").arg(index));
        form->addRow(label, box);
        m_txtDescription[std::size_t(index)] = box;
        connect(box, &QLineEdit::textEdited, this, [this, index] { DescriptionEdited(index); });
    }
    layout->addLayout(form);
    m_chkAddUserID = NamedControl<QCheckBox>(page, "chkAddUserID");
    m_chkAddUserID->setProperty(NoTranslateProperty, true);
    m_chkNeverChangeDescr = NamedControl<QCheckBox>(page, "chkNeverChangeDescr", msg::OptionsNeverChangeDescr);
    m_chkNeverOverwriteDescr = NamedControl<QCheckBox>(page, "chkNeverOverwriteDescr", msg::OptionsNeverOverwriteDescr);
    m_chkShowDescrDialog = NamedControl<QCheckBox>(page, "chkShowDescrDialog", msg::OptionsShowDescrDialog);
    for (QCheckBox *box : {m_chkAddUserID, m_chkNeverChangeDescr, m_chkNeverOverwriteDescr, m_chkShowDescrDialog})
        layout->addWidget(box);
    connect(m_chkAddUserID, &QCheckBox::toggled, this, &FrmOptions::ShowAddUserIDCaption);
    connect(m_chkNeverChangeDescr, &QCheckBox::toggled, this, [this](bool on) {
        if (on) {
            m_chkAddUserID->setChecked(false);
            m_chkNeverOverwriteDescr->setChecked(false);
        }
        EnableFields();
    });

    QGroupBox *autoFilter = NamedFrame(page, "fraAutoFilter", msg::OptionsAutoFilter);
    auto *filterLayout = new QVBoxLayout(autoFilter);
    m_chkSetFilterAutomaticaly =
        NamedControl<QCheckBox>(autoFilter, "chkSetFilterAutomaticaly", msg::OptionsSetFilterAutomaticaly);
    m_chkShowFilterDialog = NamedControl<QCheckBox>(autoFilter, "chkShowFilterDialog", msg::OptionsShowFilterDialog);
    filterLayout->addWidget(m_chkSetFilterAutomaticaly);
    filterLayout->addWidget(m_chkShowFilterDialog);
    connect(m_chkSetFilterAutomaticaly, &QCheckBox::toggled, this, &FrmOptions::EnableFields);
    layout->addWidget(autoFilter);
    layout->addStretch();
    return page;
}

QWidget *FrmOptions::BuildVolumePage()
{
    QWidget *page = NewPage("pageVolume");
    auto *layout = new QVBoxLayout(page);
    m_fraVolume = new QGroupBox(page);
    m_fraVolume->setObjectName(QStringLiteral("fraVolume"));
    m_fraVolume->setProperty(NoTranslateProperty, true);
    auto *grid = new QGridLayout(m_fraVolume);
    m_cmbArea = NamedControl<QComboBox>(m_fraVolume, "cmbArea");
    grid->addWidget(NamedControl<QLabel>(m_fraVolume, "lblArea", msg::OptionsArea), 0, 0);
    grid->addWidget(m_cmbArea, 0, 1, 1, 3);
    connect(m_cmbArea, &QComboBox::currentIndexChanged, this, &FrmOptions::AreaChosen);
    // The lows in the left columns, the highs in the right, in the order of VolumeBoundKeys().
    const char *labels[] = {"lblEastingLow", "lblNorthingLow", "lblElevationLow",
                            "lblEastingHigh", "lblNorthingHigh", "lblElevationHigh"};
    const char *boxes[] = {"txtEastingLow", "txtNorthingLow", "txtElevationLow",
                           "txtEastingHigh", "txtNorthingHigh", "txtElevationHigh"};
    for (int i = 0; i < 6; ++i) {
        auto *label = NamedControl<QLabel>(m_fraVolume, labels[i]);
        label->setProperty(NoTranslateProperty, true);
        auto *box = NamedControl<QLineEdit>(m_fraVolume, boxes[i]);
        grid->addWidget(label, 1 + i % 3, i < 3 ? 0 : 2);
        grid->addWidget(box, 1 + i % 3, i < 3 ? 1 : 3);
        m_lblBounds[std::size_t(i)] = label;
        m_txtBounds[std::size_t(i)] = box;
    }
    layout->addWidget(m_fraVolume);
    auto *buttons = new QHBoxLayout;
    auto *clear = NamedControl<QPushButton>(page, "cmdClearSettings", msg::OptionsClearSettings);
    auto *dvcs = NamedControl<QPushButton>(page, "cmdDVCS", msg::OptionsDVCS);
    buttons->addWidget(clear);
    buttons->addWidget(dvcs);
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addStretch();
    connect(clear, &QPushButton::clicked, this, [this] {
        for (QLineEdit *box : m_txtBounds)
            box->clear();
    });
    connect(dvcs, &QPushButton::clicked, this, &FrmOptions::ShowDVCS);
    return page;
}

QWidget *FrmOptions::BuildAdvancedFilterPage()
{
    QWidget *page = NewPage("pageAdvancedFilter");
    auto *layout = new QHBoxLayout(page);
    auto *columns = new QVBoxLayout;
    m_lstFilterCols = NamedControl<QListWidget>(page, "lstFilterCols");
    m_lstFilterCols->setMaximumWidth(180);
    columns->addWidget(NamedControl<QLabel>(page, "lblFilterCols", msg::OptionsFilterCols));
    columns->addWidget(m_lstFilterCols);
    layout->addLayout(columns);

    auto *values = new QVBoxLayout;
    m_lstFilterValues = NamedControl<QListWidget>(page, "lstFilterValues");
    m_lstFilterValues->viewport()->installEventFilter(this);
    m_txtValue = NamedControl<QLineEdit>(page, "txtValue");
    values->addWidget(NamedControl<QLabel>(page, "lblFilterValues", msg::OptionsFilterValues));
    values->addWidget(m_lstFilterValues);
    auto *valueRow = new QHBoxLayout;
    valueRow->addWidget(NamedControl<QLabel>(page, "lblValue", msg::OptionsValue));
    valueRow->addWidget(m_txtValue);
    values->addLayout(valueRow);
    auto *buttons = new QHBoxLayout;
    auto *selectAll = NamedControl<QPushButton>(page, "cmdSelectAll", msg::OptionsSelectAll);
    auto *clear = NamedControl<QPushButton>(page, "cmdClearAdvancedFilter", msg::OptionsClearAdvancedFilter);
    buttons->addWidget(selectAll);
    buttons->addWidget(clear);
    buttons->addStretch();
    values->addLayout(buttons);
    layout->addLayout(values);

    connect(m_lstFilterCols, &QListWidget::currentRowChanged, this, &FrmOptions::FilterColumnChosen);
    connect(m_txtValue, &QLineEdit::textEdited, this, &FrmOptions::TickLike);
    connect(selectAll, &QPushButton::clicked, this, [this] {
        if (RequireFilterColumn())
            TickLike(QStringLiteral("*"));
    });
    connect(clear, &QPushButton::clicked, this, &FrmOptions::ClearAdvancedFilter);
    return page;
}

QWidget *FrmOptions::BuildConfigPage()
{
    QWidget *page = NewPage("pageConfig");
    auto *layout = new QVBoxLayout(page);
    auto *form = new QFormLayout;
    m_txtConfigFile = AddRow<QLineEdit>(form, page, "lblConfigFile", msg::OptionsConfigFile, "txtConfigFile");
    layout->addLayout(form);
    m_chkAutoReload = NamedControl<QCheckBox>(page, "chkAutoReload", msg::OptionsAutoReload);
    m_chkLoadTipsAtStartup = NamedControl<QCheckBox>(page, "chkLoadTipsAtStartup", msg::DayTipShowAtStartup);
    layout->addWidget(m_chkAutoReload);
    layout->addWidget(m_chkLoadTipsAtStartup);
    layout->addStretch();
    return page;
}

void FrmOptions::BuildButtons()
{
    m_cmdSelect = NamedControl<QPushButton>(this, "cmdSelect", msg::OptionsSelect);
    m_cmdOpen = NamedControl<QPushButton>(this, "cmdOpen", msg::OptionsOpen);
    auto *cmdOK = NamedControl<QPushButton>(this, "cmdOK", msg::ButtonOK);
    auto *cmdCancel = NamedControl<QPushButton>(this, "cmdCancel", msg::ButtonCancel);
    cmdOK->setDefault(true);
    auto *row = new QHBoxLayout;
    row->addWidget(m_cmdSelect);
    row->addWidget(m_cmdOpen);
    row->addStretch();
    row->addWidget(cmdOK);
    row->addWidget(cmdCancel);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
    connect(m_cmdSelect, &QPushButton::clicked, this, &FrmOptions::SelectFile);
    connect(m_cmdOpen, &QPushButton::clicked, this, &FrmOptions::OpenFile);
    connect(cmdOK, &QPushButton::clicked, this, &FrmOptions::ClickOK);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

} // namespace fx

// frmOptions: what its controls do. LoadSettings fills them, the pages keep their rules, and OK
// checks and writes.

#include "approve/messages.h"
#include "approve/ui/frmdvcs.h"
#include "approve/ui/frmoptions.h"
#include "frame/fileops.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/filefilter.h"
#include "store/advancedfilter.h"
#include "store/advancedfilteredit.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/messages.h"
#include "store/optionsmessages.h"
#include "store/statusmessages.h"
#include "viewers/externalviewers.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QUrl>

namespace fx {

namespace {

bool IsProjectOpen()
{
    return GetProjectName() != QLatin1String(msg::NoProject);
}

// The platform's colour number keeps red in its low byte.
QColor ColorOfNumber(qint32 number)
{
    return QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

qint32 NumberOfColor(const QColor &color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

QString FilterOf(const char *pairs)
{
    return QtFileFilter(TranslateText(QString::fromLatin1(pairs)));
}

} // namespace

void FrmOptions::LoadSettings()
{
    // A part that fails is shown; the dialog stays usable on what was filled before it.
    RunShowingFailure("frmOptions::LoadSettings", [this] {
        m_filter = std::make_unique<AdvancedFilterEdit>(GetUserConfigFile());
        for (const FilterDimension &dimension : FilterDimensions())
            m_lstFilterCols->addItem(dimension.name);
        const OptionsSettings settings = ReadOptionsSettings();
        ShowSettings(settings);
        if (IsProjectOpen())
            m_areas = ReadInterferenceAreas();
        ShowAreas(settings.area);
        ShowVolumePage();
    });
    EnableFields();
}

void FrmOptions::ShowSettings(const OptionsSettings &s)
{
    m_optSPR->setChecked(s.viewer == ClashViewer::SmartPlantReview);
    m_optMicroStation->setChecked(s.viewer == ClashViewer::MicroStation);
    m_optBuiltInViewer->setChecked(s.viewer == ClashViewer::BuiltIn);
    const QString installed = GetDefaultMSTNPath();
    if (!installed.isEmpty())
        m_cmbMSTNPath->addItem(installed);
    m_cmbMSTNPath->setCurrentText(s.mstnPath);
    m_txtDGNSeedFile->setText(s.dgnSeedFile);
    m_optAutoGenerateSPRSession->setChecked(s.autoGenerateSPRSession);
    m_optUseExistingSPRSession->setChecked(!s.autoGenerateSPRSession);
    m_txtSPRWorkingDirectory->setText(s.sprWorkingDirectory);
    m_txtDRIFile->setText(s.driFile);
    m_chkShowClashDialog->setChecked(s.showClashDialog);
    m_colors = {s.compAColor, s.compBColor};
    ShowColor(0);
    ShowColor(1);

    m_txtSeparator->setText(s.compSeparator);
    m_txtPDSReportFile->setText(s.pdsReportFile);
    m_chkAllowOpenLockedProject->setChecked(s.allowOpenLockedProject);

    for (std::size_t i = 0; i < 3; ++i)
        m_txtDescription[i]->setText(s.descriptions[i]);
    m_chkNeverChangeDescr->setChecked(s.neverChangeDescr);
    m_chkAddUserID->setChecked(s.addUserID && !s.neverChangeDescr);
    m_chkNeverOverwriteDescr->setChecked(s.neverOverwriteDescr && !s.neverChangeDescr);
    m_chkShowDescrDialog->setChecked(s.showDescrDialog);
    m_chkSetFilterAutomaticaly->setChecked(s.setAutoFilter);
    m_chkShowFilterDialog->setChecked(s.showFilterDialog);
    ShowAddUserIDCaption();

    for (std::size_t i = 0; i < 6; ++i)
        m_txtBounds[i]->setText(s.bounds[i]);
    m_centres = s.centres;

    if (s.lastUsedFilterColumn >= 0)
        m_lstFilterCols->setCurrentRow(s.lastUsedFilterColumn);

    m_txtConfigFile->setText(s.userConfigFile);
    m_chkAutoReload->setChecked(s.autoLoad);
    m_chkLoadTipsAtStartup->setChecked(s.loadTipsAtStartup);
}

OptionsSettings FrmOptions::CollectSettings() const
{
    OptionsSettings s;
    s.viewer = m_optSPR->isChecked()           ? ClashViewer::SmartPlantReview
               : m_optMicroStation->isChecked() ? ClashViewer::MicroStation
                                                : ClashViewer::BuiltIn;
    s.mstnPath = m_cmbMSTNPath->currentText().trimmed();
    s.dgnSeedFile = m_txtDGNSeedFile->text().trimmed();
    s.autoGenerateSPRSession = m_optAutoGenerateSPRSession->isChecked();
    s.sprWorkingDirectory = m_txtSPRWorkingDirectory->text().trimmed();
    s.driFile = m_txtDRIFile->text().trimmed();
    s.showClashDialog = m_chkShowClashDialog->isChecked();
    s.compAColor = m_colors[0];
    s.compBColor = m_colors[1];
    s.compSeparator = m_txtSeparator->text();
    s.pdsReportFile = m_txtPDSReportFile->text().trimmed();
    s.allowOpenLockedProject = m_chkAllowOpenLockedProject->isChecked();
    for (std::size_t i = 0; i < 3; ++i)
        s.descriptions[i] = m_txtDescription[i]->text();
    s.addUserID = m_chkAddUserID->isChecked();
    s.neverChangeDescr = m_chkNeverChangeDescr->isChecked();
    s.neverOverwriteDescr = m_chkNeverOverwriteDescr->isChecked();
    s.showDescrDialog = m_chkShowDescrDialog->isChecked();
    s.setAutoFilter = m_chkSetFilterAutomaticaly->isChecked();
    s.showFilterDialog = m_chkShowFilterDialog->isChecked();
    s.area = AreaNameOfText(m_cmbArea->currentText());
    for (std::size_t i = 0; i < 6; ++i)
        s.bounds[i] = m_txtBounds[i]->text().trimmed();
    s.centres = m_centres;
    s.lastUsedFilterColumn = m_shownFilterColumn;
    s.userConfigFile = m_txtConfigFile->text().trimmed();
    s.autoLoad = m_chkAutoReload->isChecked();
    s.loadTipsAtStartup = m_chkLoadTipsAtStartup->isChecked();
    return s;
}

void FrmOptions::EnableFields()
{
    m_fraMicroStation->setEnabled(m_optMicroStation->isChecked());
    m_fraSPR->setEnabled(m_optSPR->isChecked());
    m_txtSPRWorkingDirectory->setEnabled(m_optAutoGenerateSPRSession->isChecked());
    m_txtDRIFile->setEnabled(m_optUseExistingSPRSession->isChecked());
    const bool describe = !m_chkNeverChangeDescr->isChecked();
    for (QLineEdit *box : m_txtDescription)
        box->setEnabled(describe);
    m_chkAddUserID->setEnabled(describe);
    m_chkNeverOverwriteDescr->setEnabled(describe);
    m_chkShowFilterDialog->setEnabled(m_chkSetFilterAutomaticaly->isChecked());
    const bool files = m_mayChange && !FileBoxesOfPage().isEmpty();
    m_cmdSelect->setEnabled(files);
    m_cmdOpen->setEnabled(files);
}

void FrmOptions::ShowAddUserIDCaption()
{
    m_chkAddUserID->setText(
        m_chkAddUserID->isChecked()
            ? TranslateText(ArgForm(msg::AddUserIDLabelWithText, {m_txtDescription[0]->text(), GetLogonUserName()}))
            : TranslateText(QString::fromLatin1(msg::AddUserIDLabel)));
}

void FrmOptions::DescriptionEdited(int index)
{
    QLineEdit *box = m_txtDescription[std::size_t(index)];
    // An emptied status description falls back to its default at once; the free one may stay empty.
    if (box->text().isEmpty() && index < 2) {
        box->setText(OptionDefault(index == 0 ? option::ApprovedDescr : option::UnapprovedDescr));
        box->selectAll();
    }
    ShowAddUserIDCaption();
}

void FrmOptions::ShowColor(int index)
{
    const QColor color = ColorOfNumber(m_colors[std::size_t(index)]);
    // White on a dark colour, black on a light one, as the eye weighs the three.
    const int luma = (299 * color.red() + 587 * color.green() + 114 * color.blue()) / 1000;
    const QColor text = luma < 140 ? Qt::white : Qt::black;
    m_lblComp[std::size_t(index)]->setStyleSheet(
        QStringLiteral("QLabel { background-color: %1; color: %2; padding: 4px; }").arg(color.name(), text.name()));
}

void FrmOptions::PickColor(int index)
{
    const qint32 current = m_colors[std::size_t(index)];
    std::optional<qint32> chosen;
    if (m_colorChooser) {
        chosen = m_colorChooser(current);
    } else {
        const QColor color = QColorDialog::getColor(ColorOfNumber(current), this);
        if (color.isValid())
            chosen = NumberOfColor(color);
    }
    if (!chosen)
        return;
    m_colors[std::size_t(index)] = *chosen;
    ShowColor(index);
}

void FrmOptions::ShowAreas(const QString &storedArea)
{
    const QSignalBlocker block(m_cmbArea);
    m_cmbArea->clear();
    m_cmbArea->addItem(QString());
    int chosen = storedArea.isEmpty() ? 0 : -1;
    for (const InterferenceArea &area : std::as_const(m_areas)) {
        m_cmbArea->addItem(area.text);
        if (chosen < 0 && area.name == storedArea)
            chosen = m_cmbArea->count() - 1;
    }
    // An area the project no longer has stays chosen, so that OK doesn't lose it.
    if (chosen < 0) {
        m_cmbArea->addItem(storedArea);
        chosen = m_cmbArea->count() - 1;
    }
    m_cmbArea->setCurrentIndex(chosen);
}

void FrmOptions::AreaChosen()
{
    const std::array<QString, 6> bounds = AreaBoundTexts(m_areas, m_cmbArea->currentText());
    for (std::size_t i = 0; i < 6; ++i)
        m_txtBounds[i]->setText(bounds[i]);
}

void FrmOptions::ShowVolumePage()
{
    RunShowingFailure("frmOptions::ShowVolumePage", [this] {
        m_fraVolume->setTitle(VolumeFrameCaption(IsDvcsDefined(m_centres)));
        const bool open = IsProjectOpen();
        const std::array<QString, 6> captions =
            VolumeBoundCaptions(open ? GetClashRange() : ClashRange(), open ? GetMasterUnits() : QString());
        for (std::size_t i = 0; i < 6; ++i)
            m_lblBounds[i]->setText(captions[i]);
    });
}

void FrmOptions::ShowDVCS()
{
    QString units;
    RunShowingFailure("frmOptions::cmdDVCS_Click", [&] { units = IsProjectOpen() ? GetMasterUnits() : QString(); });
    if (const std::optional<std::array<QString, 3>> centres = FrmDVCS::ShowMe(m_centres, units, this)) {
        m_centres = *centres;
        ShowVolumePage();
    }
}

void FrmOptions::FilterColumnChosen(int row)
{
    RunShowingFailure("frmOptions::lstFilterCols_Click", [&] {
        SaveAdvancedFilter();
        m_lstFilterValues->clear();
        m_shownFilterColumn = -1;
        if (row < 0 || !m_filter)
            return;
        for (const FilterValueEntry &entry : m_filter->ColumnValues(m_lstFilterCols->item(row)->text())) {
            auto *item = new QListWidgetItem(entry.value, m_lstFilterValues);
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(entry.kept ? Qt::Checked : Qt::Unchecked);
        }
        m_shownFilterColumn = row;
    });
}

void FrmOptions::SaveAdvancedFilter()
{
    if (m_shownFilterColumn < 0 || !m_filter)
        return;
    QStringList kept;
    for (int row = 0; row < m_lstFilterValues->count(); ++row)
        if (m_lstFilterValues->item(row)->checkState() == Qt::Checked)
            kept << m_lstFilterValues->item(row)->text();
    m_filter->KeepValues(m_lstFilterCols->item(m_shownFilterColumn)->text(), kept);
}

bool FrmOptions::RequireFilterColumn()
{
    return m_shownFilterColumn >= 0 || RunShowingFailure("frmOptions::lstFilterValues_Click", [] {
               Raise(msg::NoFilterColumnSelected);
           });
}

bool FrmOptions::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_lstFilterValues->viewport() && event->type() == QEvent::MouseButtonPress && m_shownFilterColumn < 0) {
        RequireFilterColumn();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FrmOptions::TickLike(const QString &pattern)
{
    if (pattern.isEmpty())
        return;
    for (int row = 0; row < m_lstFilterValues->count(); ++row) {
        QListWidgetItem *item = m_lstFilterValues->item(row);
        if (IsLike(item->text(), pattern))
            item->setCheckState(Qt::Checked);
    }
}

void FrmOptions::ClearAdvancedFilter()
{
    if (m_filter)
        m_filter->Clear();
    for (int row = 0; row < m_lstFilterValues->count(); ++row)
        m_lstFilterValues->item(row)->setCheckState(Qt::Unchecked);
}

QList<QWidget *> FrmOptions::FileBoxesOfPage() const
{
    const QString page = m_pages->currentWidget()->objectName();
    if (page == QLatin1String("pageViewer"))
        return {m_cmbMSTNPath, m_txtDGNSeedFile, m_txtSPRWorkingDirectory, m_txtDRIFile};
    if (page == QLatin1String("pageClashes"))
        return {m_txtPDSReportFile};
    if (page == QLatin1String("pageConfig"))
        return {m_txtConfigFile};
    return {};
}

QWidget *FrmOptions::ActiveFileBox() const
{
    const QList<QWidget *> boxes = FileBoxesOfPage();
    if (boxes.contains(m_fileBox) && m_fileBox->isEnabled())
        return m_fileBox;
    for (QWidget *box : boxes)
        if (box->isEnabled())
            return box;
    return nullptr;
}

void FrmOptions::SelectFile()
{
    QWidget *box = ActiveFileBox();
    if (!box)
        return;
    auto *line = qobject_cast<QLineEdit *>(box);
    const QString current = line ? line->text() : m_cmbMSTNPath->currentText();
    const bool folder = box == m_txtSPRWorkingDirectory;
    const char *filter = box == m_cmbMSTNPath       ? msg::OptionsExecutableFilter
                         : box == m_txtDGNSeedFile  ? msg::OptionsSeedFilter
                         : box == m_txtDRIFile      ? msg::OptionsSessionFilter
                         : box == m_txtConfigFile   ? msg::SettingsFileFilter
                                                    : msg::OptionsReportFilter;
    QString chosen;
    if (m_fileChooser)
        chosen = m_fileChooser(folder, FilterOf(filter), current);
    else if (folder)
        chosen = QFileDialog::getExistingDirectory(this, QString(), current);
    else
        chosen = QFileDialog::getOpenFileName(this, QString(), current, FilterOf(filter));
    if (chosen.isEmpty())
        return;
    chosen = QDir::toNativeSeparators(chosen);
    if (line)
        line->setText(chosen);
    else
        m_cmbMSTNPath->setCurrentText(chosen);
}

void FrmOptions::OpenFile()
{
    RunShowingFailure("frmOptions::cmdOpen_Click", [this] {
        QWidget *box = ActiveFileBox();
        if (!box)
            return;
        auto *line = qobject_cast<QLineEdit *>(box);
        const QString file = (line ? line->text() : m_cmbMSTNPath->currentText()).trimmed();
        if (!IsFileExists(file, box == m_txtSPRWorkingDirectory))
            Raise(msg::FileNotExists, {file});
        if (m_fileOpener)
            m_fileOpener(file);
        else
            QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    });
}

void FrmOptions::ClickOK()
{
    const bool done = RunShowingFailure("frmOptions::cmdOK_Click", [this] {
        // Without the permission nothing could be changed: nothing is written either.
        if (!m_mayChange)
            return;
        SaveAdvancedFilter();
        const OptionsSettings settings = CollectSettings();
        CheckOptionsSettings(settings);
        WriteOptionsSettings(settings, m_filter.get());
        m_written = true;
    });
    if (done)
        accept();
}

} // namespace fx

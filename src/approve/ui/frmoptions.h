#pragma once
// frmOptions, the settings dialog of the approval module: the viewers, the clash names, the
// descriptions, the volume and advanced filters and the settings files, on pages that every
// user sees and only a user with the permission "Options" may change.

#include "store/optionsform.h"
#include "store/volumefilter.h"

#include <QDialog>
#include <QList>
#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace fx {

class AdvancedFilterEdit;

class FrmOptions : public QDialog
{
    Q_OBJECT

public:
    /// Asks for a file (or, with `folder`, a folder) with a dialog filter and an offered path;
    /// empty when the user cancelled.
    using FileChooser = std::function<QString(bool folder, const QString &filter, const QString &offered)>;
    /// Asks for a colour, given and given back as the platform's colour number; none when
    /// cancelled.
    using ColorChooser = std::function<std::optional<qint32>(qint32 current)>;
    /// Opens a file as the desktop does.
    using FileOpener = std::function<void(const QString &file)>;

    /// Builds the pages and runs LoadSettings.
    explicit FrmOptions(QWidget *parent = nullptr);
    ~FrmOptions() override;

    /// Shows the dialog modally; true when OK wrote the settings.
    static bool ShowForm(QWidget *parent);

    /// Replace the desktop's dialogs and file opening (scripts and tests); null gives them back.
    void SetFileChooser(FileChooser chooser) { m_fileChooser = std::move(chooser); }
    void SetColorChooser(ColorChooser chooser) { m_colorChooser = std::move(chooser); }
    void SetFileOpener(FileOpener opener) { m_fileOpener = std::move(opener); }

    /// True once OK has written the settings.
    bool Written() const { return m_written; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *BuildViewerPage();
    QWidget *BuildClashesPage();
    QWidget *BuildDescriptionsPage();
    QWidget *BuildVolumePage();
    QWidget *BuildAdvancedFilterPage();
    QWidget *BuildConfigPage();
    void BuildButtons();

    void LoadSettings();
    void ShowSettings(const OptionsSettings &settings);
    OptionsSettings CollectSettings() const;
    void EnableFields();
    void ShowAddUserIDCaption();
    void DescriptionEdited(int index);
    void ShowColor(int index);
    void PickColor(int index);
    void ShowAreas(const QString &storedArea);
    void AreaChosen();
    void ShowVolumePage();
    void ShowDVCS();
    void FilterColumnChosen(int row);
    void SaveAdvancedFilter();
    bool RequireFilterColumn();
    void TickLike(const QString &pattern);
    void ClearAdvancedFilter();
    QList<QWidget *> FileBoxesOfPage() const;
    QWidget *ActiveFileBox() const;
    void SelectFile();
    void OpenFile();
    void ClickOK();

    bool m_mayChange = true;
    bool m_written = false;
    std::unique_ptr<AdvancedFilterEdit> m_filter;
    QList<InterferenceArea> m_areas;
    std::array<QString, 3> m_centres;
    std::array<qint32, 2> m_colors{};
    int m_shownFilterColumn = -1;
    QWidget *m_fileBox = nullptr;
    FileChooser m_fileChooser;
    ColorChooser m_colorChooser;
    FileOpener m_fileOpener;

    QTabWidget *m_pages = nullptr;
    QRadioButton *m_optSPR = nullptr;
    QRadioButton *m_optMicroStation = nullptr;
    QRadioButton *m_optBuiltInViewer = nullptr;
    QGroupBox *m_fraMicroStation = nullptr;
    QGroupBox *m_fraSPR = nullptr;
    QComboBox *m_cmbMSTNPath = nullptr;
    QLineEdit *m_txtDGNSeedFile = nullptr;
    QRadioButton *m_optAutoGenerateSPRSession = nullptr;
    QRadioButton *m_optUseExistingSPRSession = nullptr;
    QLineEdit *m_txtSPRWorkingDirectory = nullptr;
    QLineEdit *m_txtDRIFile = nullptr;
    QCheckBox *m_chkShowClashDialog = nullptr;
    std::array<QLabel *, 2> m_lblComp{};
    QLineEdit *m_txtSeparator = nullptr;
    QLineEdit *m_txtPDSReportFile = nullptr;
    QCheckBox *m_chkAllowOpenLockedProject = nullptr;
    std::array<QLineEdit *, 3> m_txtDescription{};
    QCheckBox *m_chkAddUserID = nullptr;
    QCheckBox *m_chkNeverChangeDescr = nullptr;
    QCheckBox *m_chkNeverOverwriteDescr = nullptr;
    QCheckBox *m_chkShowDescrDialog = nullptr;
    QCheckBox *m_chkSetFilterAutomaticaly = nullptr;
    QCheckBox *m_chkShowFilterDialog = nullptr;
    QGroupBox *m_fraVolume = nullptr;
    QComboBox *m_cmbArea = nullptr;
    std::array<QLabel *, 6> m_lblBounds{};
    std::array<QLineEdit *, 6> m_txtBounds{};
    QListWidget *m_lstFilterCols = nullptr;
    QListWidget *m_lstFilterValues = nullptr;
    QLineEdit *m_txtValue = nullptr;
    QLineEdit *m_txtConfigFile = nullptr;
    QCheckBox *m_chkAutoReload = nullptr;
    QCheckBox *m_chkLoadTipsAtStartup = nullptr;
    QPushButton *m_cmdSelect = nullptr;
    QPushButton *m_cmdOpen = nullptr;
};

} // namespace fx

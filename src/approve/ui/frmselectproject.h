#pragma once
// "Select PDS Project": the control file, its projects, AutoLoad, or a clash file instead.

#include "pds/selectproject.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QListWidget;
class QTimer;

namespace fx {

class FrmSelectProject : public QDialog
{
    Q_OBJECT

public:
    explicit FrmSelectProject(QWidget *parent = nullptr);

    /// Shows the dialog modally and gives how the selection ended.
    static SelectProjectResult Run(QWidget *parent);

    const SelectProjectModel &Model() const { return m_model; }

    /// Cancel, Escape and the window's close button end the selection as cancelled.
    void reject() override;

private:
    void ReadControlFile(const QString &controlFile);
    /// Shows the model's control file, projects, selection and AutoLoad.
    void ShowModel();
    void OnOK();

    SelectProjectModel m_model;
    QLineEdit *m_txtControlFile = nullptr;
    QListWidget *m_lstProjects = nullptr;
    QCheckBox *m_chkAutoReload = nullptr;
    QTimer *m_timer = nullptr; ///< AutoLoad's own acceptance
};

} // namespace fx

#pragma once
// The description dialog of a status change: the text the touched clashes get, and whether it
// overwrites theirs.

#include "store/description.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;

namespace fx {

class FrmDescription : public QDialog
{
    Q_OBJECT

public:
    FrmDescription(qint16 action, QWidget *parent = nullptr);

    /// Shows the dialog modally for `action`; false when the user cancelled.
    static bool ShowForm(qint16 action, QWidget *parent);

private:
    /// Shows the model's text, boxes and what of them may be changed.
    void ShowModel();

    DescriptionDialogModel m_model;
    QLineEdit *m_txtDescription = nullptr;
    QCheckBox *m_chkAddUserID = nullptr;
    QCheckBox *m_chkDoNotOverwriteDescr = nullptr;
    QCheckBox *m_chkDoNotChangeDescr = nullptr;
    QCheckBox *m_chkNeverShow = nullptr;
};

} // namespace fx

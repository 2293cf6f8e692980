#pragma once
// The description dialog of a status change: the text the touched clashes get, and whether it
// overwrites theirs.

#include "store/description.h"

#include <QDialog>

namespace fx {

class FrmDescription : public QDialog
{
    Q_OBJECT

public:
    FrmDescription(qint16 action, QWidget *parent = nullptr);

    /// Shows the dialog modally for `action`; false when the user cancelled.
    static bool ShowForm(qint16 action, QWidget *parent);

private:
    DescriptionDialogModel m_model;
};

} // namespace fx

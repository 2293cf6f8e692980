#pragma once
// "Save project changes": to the project, to a clash file, or dropped.

#include "store/savechanges.h"

#include <QDialog>

namespace fx {

class FrmSaveChanges : public QDialog
{
    Q_OBJECT

public:
    explicit FrmSaveChanges(QWidget *parent = nullptr);

    /// Shows the dialog modally; the choice taken (SaveChangesOption, 3 for Cancel).
    static int ShowForm(QWidget *parent);

    int GetStatus() const { return m_model.GetStatus(); }

    /// Cancel, Escape and the window's close button give SaveChangesCancelled.
    void reject() override;

private:
    SaveChangesDialogModel m_model;
};

} // namespace fx

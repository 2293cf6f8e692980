#pragma once
// The prompt after a load that leads the user to the automatic filter on unapproved clashes.

#include <QDialog>

class QCheckBox;

namespace fx {

class FrmFilterMessage : public QDialog
{
    Q_OBJECT

public:
    explicit FrmFilterMessage(QWidget *parent = nullptr);

    /// Shows the prompt modally; stores SetAutoFilter and ShowFilterDialog (section AutoFilter)
    /// as the boxes say. True when the automatic filter is to be skipped (Cancel).
    static bool ShowForm(QWidget *parent);

    /// Cancel, Escape and the window's close button skip the filter.
    void reject() override;

private:
    QCheckBox *m_chkSetFilterAutomaticaly = nullptr;
    QCheckBox *m_chkNeverShow = nullptr;
};

} // namespace fx

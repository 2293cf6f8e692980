#pragma once
// "Select PDS Project": the control file, its projects, AutoLoad, or a clash file instead.

#include "pds/selectproject.h"

#include <QDialog>

namespace fx {

class FrmSelectProject : public QDialog
{
    Q_OBJECT

public:
    explicit FrmSelectProject(QWidget *parent = nullptr);

    /// Shows the dialog modally and gives how the selection ended.
    static SelectProjectResult Run(QWidget *parent);

    const SelectProjectModel &Model() const { return m_model; }

private:
    SelectProjectModel m_model;
};

} // namespace fx

#pragma once
// "About": the version, the notices of the trademarks the program names, and the way to the
// system information tool.

#include <QDialog>

namespace fx {

class FrmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit FrmAbout(QWidget *parent = nullptr);

    /// Shows the box modally.
    static void ShowAbout(QWidget *parent);
};

} // namespace fx

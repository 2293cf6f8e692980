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

    /// The system information tool named by the machine's registry: value PATH of
    /// "SOFTWARE\Microsoft\Shared Tools\MSINFO", else value MSINFO of "...\Shared Tools
    /// Location" with "\MSINFO32.EXE"; empty when neither is there.
    static QString GetSysInfoPath();
    /// Starts the tool, or says "System Information Is Unavailable At This Time".
    static void StartSysInfo();
};

} // namespace fx

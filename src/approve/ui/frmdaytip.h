#pragma once
// "Tip of the Day".

#include "frame/daytips.h"

#include <QDialog>

class QLabel;

namespace fx {

class FrmDayTip : public QDialog
{
    Q_OBJECT

public:
    FrmDayTip(DayTips tips, QWidget *parent = nullptr);

    /// Shows the next tip modally unless the tips are switched off or there are none; an empty
    /// `tipFile` is tip.txt in the program's folder.
    static void ShowMe(QWidget *parent, const QString &tipFile = QString());

private:
    DayTips m_tips;
    QLabel *m_lblTipText = nullptr;
};

} // namespace fx

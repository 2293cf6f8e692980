#include "approve/ui/frmdaytip.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace fx {

FrmDayTip::FrmDayTip(DayTips tips, QWidget *parent) : QDialog(parent), m_tips(std::move(tips))
{
    setObjectName(QStringLiteral("frmDayTip"));
    setWindowTitle(QString::fromLatin1(msg::DayTipCaption));

    auto *didYouKnow = NamedControl<QLabel>(this, "lblDidYouKnow", msg::DayTipDidYouKnow);
    QFont bold = didYouKnow->font();
    bold.setBold(true);
    didYouKnow->setFont(bold);
    m_lblTipText = NamedControl<QLabel>(this, "lblTipText");
    m_lblTipText->setProperty(NoTranslateProperty, true);
    m_lblTipText->setWordWrap(true);
    m_lblTipText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_lblTipText->setMinimumSize(360, 120);
    m_lblTipText->setFrameShape(QFrame::StyledPanel);
    auto *chkLoadTipsAtStartup = NamedControl<QCheckBox>(this, "chkLoadTipsAtStartup", msg::DayTipShowAtStartup);
    chkLoadTipsAtStartup->setChecked(DayTips::ShowTipsAtStartup());
    auto *cmdNextTip = NamedControl<QPushButton>(this, "cmdNextTip", msg::DayTipNext);
    auto *cmdOK = NamedControl<QPushButton>(this, "cmdOK", msg::ButtonOK);
    cmdOK->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(didYouKnow);
    layout->addWidget(m_lblTipText, 1);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(chkLoadTipsAtStartup);
    bottom->addStretch();
    bottom->addWidget(cmdNextTip);
    bottom->addWidget(cmdOK);
    layout->addLayout(bottom);

    // The switch counts at once, even if the program ends before this window closes.
    connect(chkLoadTipsAtStartup, &QCheckBox::toggled, this, [](bool on) {
        RunShowingFailure("frmDayTip::chkLoadTipsAtStartup_Click", [&] { DayTips::SetShowTipsAtStartup(on); });
    });
    connect(cmdNextTip, &QPushButton::clicked, this, [this] {
        m_tips.NextTip();
        m_lblTipText->setText(m_tips.CurrentTip());
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] { accept(); });
    connect(this, &QDialog::finished, this, [this] {
        RunShowingFailure("frmDayTip::Form_Unload", [&] { m_tips.StoreCurrentTip(); });
    });

    m_lblTipText->setText(m_tips.CurrentTip());
    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

void FrmDayTip::ShowMe(QWidget *parent, const QString &tipFile)
{
    RunShowingFailure("frmDayTip::ShowMe", [&] {
        std::optional<DayTips> tips = DayTips::ForStartup(tipFile);
        if (!tips)
            return;
        FrmDayTip dialog(std::move(*tips), parent);
        dialog.exec();
    });
}

} // namespace fx

#include "approve/ui/frmfiltermessage.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"
#include "store/options.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace fx {

FrmFilterMessage::FrmFilterMessage(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmFilterMessage"));
    setWindowTitle(QString::fromLatin1(msg::FilterMessageCaption));

    auto *label = NamedControl<QLabel>(this, "lblMessage", msg::FilterMessageText);
    label->setWordWrap(true);
    m_chkSetFilterAutomaticaly = NamedControl<QCheckBox>(this, "chkSetFilterAutomaticaly", msg::FilterMessageSetFilter);
    m_chkSetFilterAutomaticaly->setChecked(GetOptionFlag(option::SetAutoFilter));
    m_chkNeverShow = NamedControl<QCheckBox>(this, "chkNeverShow", msg::FilterMessageNeverShow);
    m_chkNeverShow->setChecked(!GetOptionFlag(option::ShowFilterDialog));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_chkSetFilterAutomaticaly);
    layout->addWidget(m_chkNeverShow);
    QPushButton *cmdOK = AddOkCancel(this, layout).ok;
    setMinimumWidth(360);

    connect(cmdOK, &QPushButton::clicked, this, [this] {
        SetOptionFlag(option::SetAutoFilter, m_chkSetFilterAutomaticaly->isChecked());
        SetOptionFlag(option::ShowFilterDialog, !m_chkNeverShow->isChecked());
        accept();
    });

    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

void FrmFilterMessage::reject()
{
    // Cancel skips the filter this once and leaves SetAutoFilter as it was; asking never to
    // see the prompt again holds all the same.
    if (m_chkNeverShow->isChecked())
        SetOptionFlag(option::ShowFilterDialog, false);
    QDialog::reject();
}

bool FrmFilterMessage::ShowForm(QWidget *parent)
{
    FrmFilterMessage dialog(parent);
    return dialog.exec() != QDialog::Accepted;
}

} // namespace fx

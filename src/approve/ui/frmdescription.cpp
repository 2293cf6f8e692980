#include "approve/ui/frmdescription.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace fx {

FrmDescription::FrmDescription(qint16 action, QWidget *parent)
    : QDialog(parent), m_model(action, IsPermissionGranted(PermissionOptionsNo))
{
    setObjectName(QStringLiteral("frmDescription"));
    setWindowTitle(m_model.Caption());
    setProperty(NoTranslateProperty, true);

    auto *label = NamedControl<QLabel>(this, "lblDescription", msg::DescrLabel);
    m_txtDescription = NamedControl<QLineEdit>(this, "txtDescription");
    m_chkAddUserID = NamedControl<QCheckBox>(this, "chkAddUserID");
    m_chkAddUserID->setProperty(NoTranslateProperty, true);
    m_chkDoNotOverwriteDescr = NamedControl<QCheckBox>(this, "chkDoNotOverwriteDescr", msg::DescrDoNotOverwrite);
    m_chkDoNotChangeDescr = NamedControl<QCheckBox>(this, "chkDoNotChangeDescr", msg::DescrDoNotChange);
    m_chkNeverShow = NamedControl<QCheckBox>(this, "chkNeverShow", msg::DescrNeverShow);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_txtDescription);
    layout->addWidget(m_chkAddUserID);
    layout->addWidget(m_chkDoNotOverwriteDescr);
    layout->addWidget(m_chkDoNotChangeDescr);
    layout->addWidget(m_chkNeverShow);
    QPushButton *cmdOK = AddOkCancel(this, layout).ok;
    setMinimumWidth(440);

    connect(m_txtDescription, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_model.SetText(text);
        ShowModel();
        if (m_model.TextSelected())
            m_txtDescription->selectAll();
    });
    connect(m_chkAddUserID, &QCheckBox::toggled, this, [this](bool on) {
        m_model.SetAddUserID(on);
        // The label names the user only while the box is ticked.
        m_model.SetText(m_model.Text());
        ShowModel();
    });
    connect(m_chkDoNotOverwriteDescr, &QCheckBox::toggled, this, [this](bool on) {
        m_model.SetDoNotOverwriteDescr(on);
        ShowModel();
    });
    connect(m_chkDoNotChangeDescr, &QCheckBox::toggled, this, [this](bool on) {
        m_model.SetDoNotChangeDescr(on);
        m_model.SetText(m_model.Text());
        ShowModel();
    });
    connect(m_chkNeverShow, &QCheckBox::toggled, this, [this](bool on) {
        m_model.SetNeverShow(on);
        ShowModel();
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (RunShowingFailure("frmDescription::cmdOK_Click", [&] { m_model.Accept(); }))
            accept();
    });

    ShowModel();
    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

void FrmDescription::ShowModel()
{
    const QSignalBlocker blockText(m_txtDescription);
    const QSignalBlocker blockUser(m_chkAddUserID);
    const QSignalBlocker blockOverwrite(m_chkDoNotOverwriteDescr);
    const QSignalBlocker blockChange(m_chkDoNotChangeDescr);
    const QSignalBlocker blockNever(m_chkNeverShow);
    if (m_txtDescription->text() != m_model.Text())
        m_txtDescription->setText(m_model.Text());
    m_txtDescription->setEnabled(m_model.TextEnabled());
    m_chkAddUserID->setText(m_model.AddUserIDLabel());
    m_chkAddUserID->setChecked(m_model.AddUserID());
    m_chkAddUserID->setEnabled(m_model.AddUserIDEnabled());
    m_chkDoNotOverwriteDescr->setChecked(m_model.DoNotOverwriteDescr());
    m_chkDoNotChangeDescr->setChecked(m_model.DoNotChangeDescr());
    m_chkDoNotChangeDescr->setEnabled(m_model.DoNotChangeDescrEnabled());
    m_chkNeverShow->setChecked(m_model.NeverShow());
    m_chkNeverShow->setEnabled(m_model.NeverShowEnabled());
}

bool FrmDescription::ShowForm(qint16 action, QWidget *parent)
{
    FrmDescription dialog(action, parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace fx

#include "approve/ui/frmsavechanges.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace fx {

FrmSaveChanges::FrmSaveChanges(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSaveChanges"));
    setWindowTitle(m_model.Caption());
    setProperty(NoTranslateProperty, true);

    auto *label = NamedControl<QLabel>(this, "lblMessage");
    label->setText(m_model.Label());
    label->setProperty(NoTranslateProperty, true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);

    // Option1 is a control array: each button keeps its index, which is the option it stands for.
    auto *options = new QButtonGroup(this);
    const char *texts[] = {msg::SaveOptionToProject, msg::SaveOptionToFile, msg::SaveOptionDiscard};
    for (int index = 0; index < 3; ++index) {
        auto *option = new QRadioButton(QString::fromLatin1(texts[index]), this);
        option->setObjectName(QStringLiteral("Option1_%1").arg(index));
        option->setProperty("index", index);
        option->setEnabled(m_model.IsOptionEnabled(index));
        option->setChecked(m_model.SelectedOption() == index);
        options->addButton(option, index);
        layout->addWidget(option);
    }
    connect(options, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on)
            m_model.SelectOption(index);
    });

    QPushButton *cmdOK = AddOkCancel(this, layout).ok;
    setMinimumWidth(360);

    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (m_model.Accept())
            accept();
    });

    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

void FrmSaveChanges::reject()
{
    m_model.Cancel();
    QDialog::reject();
}

int FrmSaveChanges::ShowForm(QWidget *parent)
{
    FrmSaveChanges dialog(parent);
    dialog.exec();
    return dialog.GetStatus();
}

} // namespace fx

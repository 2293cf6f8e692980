#include "approve/ui/frmdvcs.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"
#include "store/volumefilter.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace fx {

FrmDVCS::FrmDVCS(const std::array<QString, 3> &centres, const QString &masterUnits, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDVCS"));
    setWindowTitle(QString::fromLatin1(msg::DvcsCaption));

    const char *labels[] = {"lblEastingCenter", "lblNorthingCenter", "lblElevationCenter"};
    const char *boxes[] = {"txtEastingCenter", "txtNorthingCenter", "txtElevationCenter"};
    const std::array<QString, 3> captions = DvcsCaptions(masterUnits);
    auto *form = new QFormLayout;
    for (std::size_t i = 0; i < 3; ++i) {
        auto *label = NamedControl<QLabel>(this, labels[i]);
        label->setText(captions[i]);
        label->setProperty(NoTranslateProperty, true);
        m_boxes[i] = NamedControl<QLineEdit>(this, boxes[i]);
        m_boxes[i]->setText(centres[i]);
        form->addRow(label, m_boxes[i]);
    }
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    QPushButton *cmdOK = AddOkCancel(this, layout).ok;
    setMinimumWidth(320);

    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (RunShowingFailure("frmDVCS::cmdOK_Click", [&] { CheckDvcsOffsets(Centres()); }))
            accept();
    });

    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

std::array<QString, 3> FrmDVCS::Centres() const
{
    return {m_boxes[0]->text().trimmed(), m_boxes[1]->text().trimmed(), m_boxes[2]->text().trimmed()};
}

std::optional<std::array<QString, 3>> FrmDVCS::ShowMe(const std::array<QString, 3> &centres, const QString &masterUnits,
                                                      QWidget *parent)
{
    FrmDVCS dialog(centres, masterUnits, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.Centres();
}

} // namespace fx

#pragma once
// Controls made with the name the program knows them by: a control's object name is its
// name in the window, which tests, the control lock and the translation go by.

#include "approve/messages.h"

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include <initializer_list>

namespace fx {

/// A new control of type `Control` in `parent`, named `name`, showing `text` (a Latin-1
/// English literal, or empty).
template <typename Control>
Control *NamedControl(QWidget *parent, const char *name, const char *text = "")
{
    auto *control = new Control(parent);
    control->setObjectName(QString::fromLatin1(name));
    if constexpr (requires { control->setText(QString()); }) {
        if (text[0] != '\0')
            control->setText(QString::fromLatin1(text));
    }
    return control;
}

/// The buttons at the foot of a dialog: a row of them at the right end of `layout`.
inline void AddButtonRow(QBoxLayout *layout, std::initializer_list<QPushButton *> buttons)
{
    auto *row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton *button : buttons)
        row->addWidget(button);
    layout->addLayout(row);
}

/// cmdOK, the default button, and cmdCancel, which rejects the dialog.
struct OkCancelButtons
{
    QPushButton *ok;
    QPushButton *cancel;
};

inline OkCancelButtons AddOkCancel(QDialog *dialog, QBoxLayout *layout)
{
    OkCancelButtons buttons{NamedControl<QPushButton>(dialog, "cmdOK", msg::ButtonOK),
                            NamedControl<QPushButton>(dialog, "cmdCancel", msg::ButtonCancel)};
    buttons.ok->setDefault(true);
    QObject::connect(buttons.cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    AddButtonRow(layout, {buttons.ok, buttons.cancel});
    return buttons;
}

} // namespace fx

#pragma once
// Controls made with the name the program knows them by: a control's object name is its
// name in the window, which tests, the control lock and the translation go by.

#include <QString>
#include <QWidget>

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

} // namespace fx

#pragma once
// Boxes of an interactive run without a window system: the text on standard error.

#include "frame/messagebox.h"

namespace fx {

/// Writes the box's title and text to standard error and takes the default answer.
class ConsoleMessageBoxUi : public IMessageBoxUi
{
public:
    int ShowBox(const QString &text, quint32 flags, const QString &title, void *owner) override;
};

} // namespace fx

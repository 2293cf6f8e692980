#pragma once
// File dialog filters: the program keeps them as "Description (*.ext)|*.ext|..." pairs.

#include <QString>

namespace fx {

/// The filter in the form of Qt's file dialogs: "Description (*.ext);;...". A description that
/// does not name its patterns in brackets gets them added.
QString QtFileFilter(const QString &pairs);

} // namespace fx

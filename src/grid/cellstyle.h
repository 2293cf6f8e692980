#pragma once
// How a value of a clash column is drawn, wherever it is shown: in its cell and in the lists
// that drop down from a filter cell or from the action_discipline editor.

#include <QString>

namespace fx {

/// How a cell is drawn: a text colour as a Windows RGB number (red in the low byte), and bold.
struct CellStyle
{
    bool coloured = false;
    quint32 rgb = 0;
    bool bold = false;
};

/// True for the columns that name a discipline (their values get the discipline colours).
bool IsDisciplineColumn(const QString &column);
/// True for the "*_structure" columns, drawn bold.
bool IsStructureColumn(const QString &column);

/// The style of `value` in `column`: a known discipline in its colour and bold, a structure bold.
CellStyle CellStyleOf(const QString &column, const QString &value);

} // namespace fx

#pragma once
// The statements that read the levels of the project tree, word for word, with
// the optional restriction to what has clashes in the local store's `clashes`.

#include <QString>

namespace fx {

/// The disciplines: pdtable_111; restricted, only those with a clash on either side.
QString TreeDisciplinesStatement(bool restricted);
/// The sub-projects (of discipline 3): pdtable_116; restricted, only those with an area that
/// has a clash.
QString TreeSubProjectsStatement(bool restricted);
/// The area numbers of one sub-project: pdtable_117.
QString TreeSubProjectAreasStatement(qint64 subProject);
/// The areas of a discipline: pdtable_112. `areaList` (numbers joined by ", ", "-1" for none)
/// keeps to the areas of a sub-project; empty for all of the discipline.
QString TreeAreasStatement(qint64 discipline, const QString &areaList, bool restricted);
/// The models of an area: pdtable_113.
QString TreeModelsStatement(qint64 area, bool restricted);

} // namespace fx

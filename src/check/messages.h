#pragma once
// Every text of the check module's core that reaches a user or the log, in argument form.
// The English text is the translation key: a changed text is a new key.

namespace fx::msg {

// ---- Project tree: the root, the placeholders of unopened levels ----
inline constexpr char TreeRootText[] = "Models";
inline constexpr char TreeReadingSubProjects[] = "Reading sub-projects ...";
inline constexpr char TreeReadingAreas[] = "Reading areas ...";
inline constexpr char TreeReadingModels[] = "Reading models ...";

// ---- Project tree: TreeInit and NodeExpand ----
inline constexpr char TreeWithoutSource[] = "Project tree has no data source";
inline constexpr char TreeReadProjectData[] = "Read project data ...";
inline constexpr char TreeReadDisciplines[] = "Read disciplines ...";
inline constexpr char TreeDisciplinesFound[] = "%0% disciplines found";
inline constexpr char TreeReadingSubProjectsOf[] = "Reading sub-projects (discipline_indx_no: %0%) ...";
inline constexpr char TreeReadingAreasOfSubProject[] = "Reading areas from sub-project: '%0%' (sub_project_ndx_no: %1%) ...";
inline constexpr char TreeReadingAreasOfDiscipline[] = "Reading areas from discipline: '%0%' (discipline_indx_no: %1%) ...";
inline constexpr char TreeReadingModelsOfArea[] = "Reading models from area: '%0%' (area_index_no: %1%) ...";
inline constexpr char TreeSubProjectsFound[] = "%0% sub-projects found";
inline constexpr char TreeAreasFound[] = "%0% areas found";
inline constexpr char TreeModelsFound[] = "%0% models found";

// ---- Project tree: a row that cannot be shown; the level goes on ----
inline constexpr char TreeDisciplineNotUnique[] =
    "Warning: Discipline: '%0%' (discipline_indx_no: %1%) cannot be shown. Reason: discipline_indx_no not unique";
inline constexpr char TreeDisciplineNotShown[] = "Warning: Discipline: '%0%' (discipline_indx_no: %1%) cannot be shown. Reason: %2%";
inline constexpr char TreeSubProjectParentMissing[] =
    "Warning: Sub-project: '%0%' (sub_project_ndx_no: %1%) cannot be shown. Reason: discipline_indx_no: %2% not exists";
inline constexpr char TreeSubProjectNotUnique[] =
    "Warning: Sub-project: '%0%' (sub_project_ndx_no: %1%) cannot be shown. Reason: sub_project_ndx_no not unique";
inline constexpr char TreeSubProjectNotShown[] = "Warning: Sub-project: '%0%' (sub_project_ndx_no: %1%) cannot be shown. Reason: %2%";
inline constexpr char TreeAreaParentMissing[] =
    "Warning: Area: '%0%' (area_index_no: %1%) cannot be shown. Reason: discipline_indx_no: %2% not exists";
inline constexpr char TreeAreaNotUnique[] = "Warning: Area: '%0%' (area_index_no: %1%) cannot be shown. Reason: area_index_no not unique";
inline constexpr char TreeAreaNotShown[] = "Warning: Area: '%0%' (area_index_no: %1%) cannot be shown. Reason: %2%";
inline constexpr char TreeModelParentMissing[] = "Warning: Model: '%0%' cannot be shown. Reason: discipline_indx_no: %1% not exists";
inline constexpr char TreeModelNotUnique[] = "Warning: Model: '%0%' cannot be shown. Reason: model_no not unique";
inline constexpr char TreeModelNotShown[] = "Warning: Model: '%0%' cannot be shown. Reason: %1%";
// The reasons of a row whose number is no number, as the original's conversions name them.
inline constexpr char TreeInvalidUseOfNull[] = "Invalid use of Null";
inline constexpr char TreeTypeMismatch[] = "Type mismatch";

// ---- ImportFile: a list of models ticked in the tree ----
inline constexpr char ImportingFile[] = "Importing file '%0%' ...";
inline constexpr char ImportFileEmpty[] = "File '%0%' is empty";
inline constexpr char ImportReadingModels[] = "Reading models ...";
inline constexpr char ImportProcessingLine[] = "Processing '%0%' ...";
inline constexpr char ImportModelFound[] = "Model: '%0%' found";
inline constexpr char ImportModelNotFound[] = "Model '%0%' not found";
inline constexpr char ImportModelsFound[] = "%0% models found";
inline constexpr char ImportFileImported[] = "File imported successfully";
// A file dropped on the tree that is no list of models.
inline constexpr char ImportIncorrectFile[] = "Incorrect file: '%0%'";

} // namespace fx::msg

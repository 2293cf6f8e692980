#include "pdssim/schemadefinition.h"
#include "pdssim/sitemessages.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QRegularExpression>

namespace pdssim {

int TableDefinition::ColumnIndex(const QString &column) const
{
    for (int i = 0; i < columns.size(); ++i)
        if (column == QLatin1String(columns.at(i).name))
            return i;
    return -1;
}

const QList<TableDefinition> &ProjectTables()
{
    static const QList<TableDefinition> tables = {
        // The project number, which a clash file carries to be opened away from the project.
        {"pdtable_101", {{"project_no", "char(20)"}, {"project_name", "char(40)"}, {"client_name", "char(40)"}},
         {QStringLiteral("project_no")}, {}},
        // Project folder, seed file and project lock (type 99); the clash discipline (type 451).
        {"pdtable_102",
         {{"type_of_rdb_data", "smallint"}, {"network_address", "char(26)"}, {"path_name", "char(50)"},
          {"rdb_file_spec", "char(14)"}, {"lock_owner", "char(40)"}, {"lock_date", "int"}, {"lock_status", "smallint"}},
         {QStringLiteral("type_of_rdb_data")}, {}},
        // Disciplines: the clash rows' names, the project tree, the action discipline list.
        {"pdtable_111", {{"discipline_indx_no", "smallint"}, {"discipline_name", "char(20)"}},
         {QStringLiteral("discipline_indx_no")}, {}},
        // Areas: model areas, interference areas with their volumes and area locks.
        {"pdtable_112",
         {{"discipline_indx_no", "smallint"}, {"area_index_no", "int"}, {"area_name", "char(20)"},
          {"area_description", "char(40)"}, {"interference_mode", "smallint"}, {"volume_low_x", "double"},
          {"volume_low_y", "double"}, {"volume_low_z", "double"}, {"volume_high_x", "double"},
          {"volume_high_y", "double"}, {"volume_high_z", "double"}, {"area_lock_owner", "char(40)"},
          {"area_lock_status", "smallint"}, {"area_lock_date", "int"}},
         {QStringLiteral("area_index_no")}, {QStringLiteral("discipline_indx_no")}},
        // Models: the clash rows, the model files for the viewers, envelopes and review files.
        {"pdtable_113",
         {{"model_index_no", "int"}, {"discipline_indx_no", "smallint"}, {"area_index_no", "int"},
          {"partition_no", "smallint"}, {"model_no", "char(20)"}, {"model_description", "char(40)"},
          {"model_type", "smallint"}, {"model_status", "smallint"}, {"network_address", "char(26)"},
          {"path_name", "char(50)"}, {"model_file_spec", "char(14)"}},
         {QStringLiteral("model_index_no")}, {QStringLiteral("area_index_no"), QStringLiteral("model_no")}},
        // Sub-projects of the structural discipline, for the project tree.
        {"pdtable_116", {{"sub_project_ndx_no", "int"}, {"sub_project_no", "char(20)"}, {"sub_project_name", "char(40)"}},
         {QStringLiteral("sub_project_ndx_no")}, {}},
        // The areas of each sub-project.
        {"pdtable_117", {{"area_index_no", "int"}, {"sub_project_ndx_no", "int"}},
         {QStringLiteral("area_index_no"), QStringLiteral("sub_project_ndx_no")}, {}},
        // The site of a model; the clash store creates it empty when the schema lacks it.
        {"pdtable_119", {{"model_index_no", "int"}, {"site_id", "char(20)"}}, {QStringLiteral("model_index_no")}, {}},
        // Drawings, for the project tree.
        {"pdtable_121", {{"drawing_no", "char(24)"}, {"drawing_title", "char(40)"}, {"drawing_type", "smallint"}},
         {QStringLiteral("drawing_no")}, {}},
        // Design review records; the review generator replaces its own.
        {"pdtable_151",
         {{"review_no", "int"}, {"review_title", "char(40)"}, {"review_type", "smallint"},
          {"control_file_spec", "char(14)"}, {"control_path_name", "char(50)"}, {"control_node", "char(26)"},
          {"tag_file_spec", "char(14)"}, {"tag_path_name", "char(50)"}, {"tag_node", "char(26)"}},
         {QStringLiteral("review_no")}, {}},
        // Check runs of the interference areas: write-back takes the newest completion date.
        {"pdtable_131", {{"discipline_indx_no", "smallint"}, {"area_index_no", "int"}, {"completion_date", "int"}},
         {QStringLiteral("discipline_indx_no"), QStringLiteral("area_index_no"), QStringLiteral("completion_date")}, {}},
        // The clash list. No unique index: a check run can leave two rows of one clash, which the
        // clash store must refuse.
        {"pdtable_132",
         {{"unique_clash_id", "int"}, {"if_approval_status", "smallint"}, {"recent_clash_type", "smallint"},
          {"discipline_index_a", "smallint"}, {"model_index_no_a", "int"}, {"comp_a_unique_id", "int"},
          {"discipline_index_b", "smallint"}, {"model_index_no_b", "int"}, {"comp_b_unique_id", "int"},
          {"area_index_no", "int"}, {"area_index_no_b", "int"}, {"action_discipline", "smallint"},
          {"recent_review_date", "int"}},
         {}, {QStringLiteral("unique_clash_id")}},
        // Clash occurrences with the ranges of both components in design units.
        {"pdtable_133",
         {{"system_unique_no", "int"}, {"unique_clash_id", "int"}, {"unique_sequence_no", "int"},
          {"comp_a_range_x_lo", "double"}, {"comp_a_range_y_lo", "double"}, {"comp_a_range_z_lo", "double"},
          {"comp_a_range_x_hi", "double"}, {"comp_a_range_y_hi", "double"}, {"comp_a_range_z_hi", "double"},
          {"comp_b_range_x_lo", "double"}, {"comp_b_range_y_lo", "double"}, {"comp_b_range_z_lo", "double"},
          {"comp_b_range_x_hi", "double"}, {"comp_b_range_y_hi", "double"}, {"comp_b_range_z_hi", "double"}},
         {QStringLiteral("system_unique_no")}, {QStringLiteral("unique_clash_id")}},
        // Components: descriptions for the clash rows, table and row numbers for the linkages.
        {"pdtable_134",
         {{"unique_comp_id", "int"}, {"model_index_no", "int"}, {"comp_table_number", "smallint"},
          {"comp_row_number", "int"}, {"primary_descript", "char(40)"}, {"secondary_descript", "char(40)"}},
         {QStringLiteral("unique_comp_id")}, {QStringLiteral("model_index_no")}},
        // Review history; write-back adds and changes rows. Column order matters: write-back
        // inserts by position.
        {"pdtable_135",
         {{"system_unique_no", "int"}, {"unique_clash_id", "int"}, {"review_date", "int"}, {"review_user_no", "smallint"},
          {"responsib_user_no", "smallint"}, {"action", "smallint"}, {"review_comment", "char(240)"},
          {"approval_method", "smallint"}},
         {QStringLiteral("system_unique_no")}, {QStringLiteral("unique_clash_id")}},
    };
    return tables;
}

const TableDefinition &ProjectTable(const QString &name)
{
    for (const TableDefinition &table : ProjectTables())
        if (name == QLatin1String(table.name))
            return table;
    fx::Raise(pdssim::sitemsg::SimTableNotDefined, {name});
}

QString PostgreSQLTypeOfRISType(const QString &risType)
{
    static const QRegularExpression sized(QStringLiteral("^char\\((\\d+)\\)$"));
    const QRegularExpressionMatch match = sized.match(risType);
    // varchar keeps the text as written; char(n) would give it back padded with blanks.
    if (match.hasMatch())
        return QStringLiteral("varchar(%1)").arg(match.captured(1));
    if (risType == QLatin1String("int"))
        return QStringLiteral("integer");
    if (risType == QLatin1String("double"))
        return QStringLiteral("double precision");
    return risType; // smallint, real, timestamp are spelt alike
}

} // namespace pdssim

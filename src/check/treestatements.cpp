#include "check/treestatements.h"

namespace fx {

// The restriction to what has clashes asks `clashes` once a statement ("x IN (SELECT ...)"),
// not once a row: `clashes` has no index on these columns, and a correlated EXISTS walked the
// whole table for every model without clashes (2 s for an area of 38 at 400,000 clashes).

QString TreeDisciplinesStatement(bool restricted)
{
    QString sql = QStringLiteral("SELECT discipline_indx_no, discipline_name FROM pdtable_111 ");
    if (restricted)
        sql += QStringLiteral("WHERE(discipline_name IN (SELECT discipline_a FROM [clashes]) "
                              "OR discipline_name IN (SELECT discipline_b FROM [clashes])) ");
    return sql + QStringLiteral("GROUP BY discipline_indx_no, discipline_name;");
}

QString TreeSubProjectsStatement(bool restricted)
{
    QString sql = QStringLiteral("SELECT sub_project_ndx_no, sub_project_no, sub_project_name FROM pdtable_116 ");
    if (restricted)
        sql += QStringLiteral(" WHERE(sub_project_ndx_no IN (SELECT c.sub_project_ndx_no FROM pdtable_112 AS b, pdtable_117 AS c "
                              "WHERE(b.area_index_no = c.area_index_no AND (b.area_name IN (SELECT area_a FROM [clashes]) "
                              "OR b.area_name IN (SELECT area_b FROM [clashes]))))) ");
    return sql + QStringLiteral("GROUP BY sub_project_ndx_no, sub_project_no, sub_project_name;");
}

QString TreeSubProjectAreasStatement(qint64 subProject)
{
    return QStringLiteral("SELECT area_index_no FROM pdtable_117 WHERE(sub_project_ndx_no = %1) GROUP BY area_index_no;")
        .arg(subProject);
}

QString TreeAreasStatement(qint64 discipline, const QString &areaList, bool restricted)
{
    QString sql = QStringLiteral("SELECT discipline_indx_no, area_index_no, area_name, area_description, interference_mode "
                                 "FROM pdtable_112 WHERE(discipline_indx_no = %1")
                      .arg(discipline);
    if (!areaList.isEmpty())
        sql += QStringLiteral(" AND area_index_no IN(") + areaList + QLatin1Char(')');
    if (restricted)
        sql += QStringLiteral(" AND (area_name IN (SELECT area_a FROM [clashes]) OR area_name IN (SELECT area_b FROM [clashes]))");
    return sql + QStringLiteral(") GROUP BY discipline_indx_no, area_index_no, area_name, area_description, interference_mode;");
}

QString TreeModelsStatement(qint64 area, bool restricted)
{
    QString sql = QStringLiteral("SELECT discipline_indx_no, area_index_no, model_no, model_description, partition_no, model_type "
                                 "FROM pdtable_113 WHERE(area_index_no = %1")
                      .arg(area);
    if (restricted)
        sql += QStringLiteral(" AND (model_no IN (SELECT model_a FROM [clashes]) OR model_no IN (SELECT model_b FROM [clashes])) ");
    return sql + QStringLiteral(") GROUP BY discipline_indx_no, area_index_no, model_no, model_description, partition_no, model_type;");
}

} // namespace fx

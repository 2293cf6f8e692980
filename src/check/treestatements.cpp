#include "check/treestatements.h"

namespace fx {

// The texts keep their blanks as PDS sites know them: a statement logged or traced reads the
// same as on any other installation.

QString TreeDisciplinesStatement(bool restricted)
{
    QString sql = QStringLiteral("SELECT discipline_indx_no, discipline_name FROM pdtable_111 ");
    if (restricted)
        sql += QStringLiteral("WHERE(EXISTS(SELECT 1 FROM [clashes] AS a WHERE((pdtable_111.discipline_name = a.discipline_a "
                              "OR pdtable_111.discipline_name = a.discipline_b)))) ");
    return sql + QStringLiteral("GROUP BY discipline_indx_no, discipline_name;");
}

QString TreeSubProjectsStatement(bool restricted)
{
    QString sql = QStringLiteral("SELECT sub_project_ndx_no, sub_project_no, sub_project_name FROM pdtable_116 ");
    if (restricted)
        sql += QStringLiteral(" WHERE(EXISTS(SELECT 1 FROM [clashes] AS a, pdtable_112 AS b, pdtable_117 AS c "
                              "WHERE(pdtable_116.sub_project_ndx_no = c.sub_project_ndx_no AND b.area_index_no = c.area_index_no "
                              "AND (a.area_a = b.area_name OR a.area_b = b.area_name)))) ");
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
        sql += QStringLiteral(" AND EXISTS(SELECT 1 FROM [clashes] AS a WHERE((pdtable_112.area_name = a.area_a "
                              "OR pdtable_112.area_name = a.area_b)))");
    return sql + QStringLiteral(") GROUP BY discipline_indx_no, area_index_no, area_name, area_description, interference_mode;");
}

QString TreeModelsStatement(qint64 area, bool restricted)
{
    QString sql = QStringLiteral("SELECT discipline_indx_no, area_index_no, model_no, model_description, partition_no, model_type "
                                 "FROM pdtable_113 WHERE(area_index_no = %1")
                      .arg(area);
    if (restricted)
        sql += QStringLiteral(" AND EXISTS(SELECT 1 FROM [clashes] AS a WHERE((pdtable_113.model_no = a.model_a "
                              "OR pdtable_113.model_no = a.model_b))) ");
    return sql + QStringLiteral(") GROUP BY discipline_indx_no, area_index_no, model_no, model_description, partition_no, model_type;");
}

} // namespace fx

// The project tree on simulated sites of every gateway kind: the check module's tree reads the
// schema and reaches every model; the approval filter's tree reads the open store and shows
// exactly what has clashes; ImportFile reads the store when it holds the tables, else the schema.

#include "../pdssim/sitekind.h"

#include "check/importfile.h"
#include "check/projecttree.h"
#include "frame/logmessage.h"
#include "pds/cris.h"
#include "pds/scratchfiles.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"

#include <QAbstractItemModelTester>
#include <QSet>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class TreeOnSite : public fxtest::SiteKindTest
{
protected:
    void Build(int clashes, int models = 0)
    {
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, m_kind, clashes, false, box.ProgramDir(), models));
    }

    QSet<QString> SchemaValues(const QString &sql)
    {
        QSet<QString> values;
        const Recordset rows = TheCRIS().DBRead(u"pd_"_s + project, sql);
        for (const QVariantList &row : rows.Rows())
            values << row.at(0).toString().trimmed();
        return values;
    }

    static QSet<QString> StoreValues(const QString &sql)
    {
        QSet<QString> values;
        const Recordset rows = ClashConnection().Read(sql);
        for (const QVariantList &row : rows.Rows())
            if (!row.at(0).isNull())
                values << row.at(0).toString().trimmed();
        return values;
    }

    static QSet<QString> Models(const QList<TreeNodeInfo> &nodes)
    {
        QSet<QString> models;
        for (const TreeNodeInfo &node : nodes)
            models << node.parts.model.trimmed();
        return models;
    }

    const QString project = u"T"_s + RandomScratchName().toUpper();
    std::optional<pdssim::SiteLayout> layout;
};

TEST_P(TreeOnSite, the_check_modules_tree_reads_the_schema_and_reaches_every_model)
{
    Build(300);
    SetProjectDefinition(layout->ControlFile(), project);
    ProjectTreeModel tree(SchemaTreeSource(project));
    QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::Fatal);
    tree.TreeInit();
    EXPECT_EQ(tree.rowCount(tree.RootIndex()), SchemaValues(u"SELECT discipline_indx_no FROM pdtable_111"_s).size());
    tree.NodeCheck(tree.RootIndex(), true);
    tree.NodeExpandAllSelected(u",area,model,"_s);
    const QList<TreeNodeInfo> models = tree.TickedModels();
    EXPECT_EQ(Models(models), SchemaValues(u"SELECT model_no FROM pdtable_113"_s));
    for (const TreeNodeInfo &model : models) {
        EXPECT_GT(model.partitionNo, 0) << model.key.toStdString();
        EXPECT_EQ(model.parts.subProject >= 0, model.parts.discipline == 3) << model.key.toStdString();
    }
}

TEST_P(TreeOnSite, the_approval_filters_tree_shows_exactly_the_disciplines_areas_and_models_with_clashes)
{
    // More models than clashes can reach: some have none.
    Build(300, 400);
    InitClashes(layout->ControlFile(), project);
    GetClashes();  // the view of clashes that the approval window shows
    ProjectTreeModel tree(StoreTreeSource());
    tree.TreeInit();
    QSet<QString> disciplines;
    for (int row = 0; row < tree.rowCount(tree.RootIndex()); ++row)
        disciplines << tree.index(row, 0, tree.RootIndex()).data().toString();
    EXPECT_EQ(disciplines, StoreValues(u"SELECT discipline_a FROM clashes UNION SELECT discipline_b FROM clashes"_s));

    tree.NodeCheck(tree.RootIndex(), true);
    tree.NodeExpandAllSelected(u"model"_s);
    QSet<QString> areas;
    for (const TreeNodeInfo &area : tree.TickedNodes(TreeLevel::Area))
        areas << area.parts.name;
    EXPECT_EQ(areas, StoreValues(u"SELECT area_a FROM clashes UNION SELECT area_b FROM clashes"_s));
    const QSet<QString> models = Models(tree.TickedModels());
    EXPECT_EQ(models, StoreValues(u"SELECT model_a FROM clashes UNION SELECT model_b FROM clashes"_s));
    // The restriction leaves something out.
    EXPECT_LT(models.size(), StoreValues(u"SELECT model_no FROM pdtable_113"_s).size());
}

TEST_P(TreeOnSite, import_file_reads_the_store_when_it_holds_the_tables_and_the_schema_otherwise)
{
    Build(120);
    SetProjectDefinition(layout->ControlFile(), project);
    const QStringList names = [&] {
        QStringList list = SchemaValues(u"SELECT model_no FROM pdtable_113 WHERE discipline_indx_no IN (1, 3)"_s).values();
        list.sort();
        return list;
    }();
    ASSERT_GE(names.size(), 2);
    const QString file = box.WriteFile(u"models.txt"_s, (names.first() + u"\r\nNOPE\r\n"_s + names.last() + u"\r\n"_s).toLatin1());

    // The check module: no store open, the schema is read.
    ProjectTreeModel checkTree(SchemaTreeSource(project));
    checkTree.TreeInit();
    EXPECT_EQ(ImportFile(file, checkTree), 2);
    checkTree.NodeExpandAllSelected(u"model"_s);
    EXPECT_EQ(Models(checkTree.TickedModels()), (QSet<QString>{names.first(), names.last()}));

    // The approval filter: the store holds pdtable_113 and 117.
    InitClashes(layout->ControlFile(), project);
    ClashConnection().Execute(u"UPDATE pdtable_113 SET model_no = 'X' || model_no;"_s);
    ProjectTreeModel storeTree(SchemaTreeSource(project));
    storeTree.TreeInit();
    // Every model of the store's copy is renamed: nothing of the list is found there.
    EXPECT_EQ(ImportFile(file, storeTree), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, TreeOnSite, testing::Values("sqlite", "ris", "postgres"),
                         [](const testing::TestParamInfo<const char *> &info) { return std::string(info.param); });

} // namespace

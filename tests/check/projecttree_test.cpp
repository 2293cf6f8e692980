// The project tree's model on a project made by hand: the levels read when opened, their log,
// the rows that cannot be shown, the tick rules, the stored state, the opening of everything
// ticked, and the restriction to what has clashes.

#include "treefixture.h"

#include "check/messages.h"
#include "check/projecttree.h"
#include "frame/failure.h"
#include "frame/settings.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;
using fxtest::Key;

namespace {

const QString kPiping = Key({{"Discipline", "1"}});
const QString kEquipment = Key({{"Discipline", "2"}});
const QString kStructural = Key({{"Discipline", "3"}});
const QString kPA1 = Key({{"Discipline", "1"}, {"Area", "11"}});
const QString kPA2 = Key({{"Discipline", "1"}, {"Area", "12"}});
const QString kP1101 = Key({{"Discipline", "1"}, {"Area", "11"}, {"Model", "P1101"}});
const QString kP1102 = Key({{"Discipline", "1"}, {"Area", "11"}, {"Model", "P1102"}});
const QString kP1201 = Key({{"Discipline", "1"}, {"Area", "12"}, {"Model", "P1201"}});
const QString kSP1 = Key({{"Discipline", "3"}, {"SubProject", "1"}});
const QString kSA1 = Key({{"Discipline", "3"}, {"SubProject", "1"}, {"Area", "31"}});
const QString kS3101 = Key({{"Discipline", "3"}, {"SubProject", "1"}, {"Area", "31"}, {"Model", "S3101"}});

class ProjectTree : public fxtest::HandMadeProject
{
protected:
    // A tree of the hand-made project, its disciplines read.
    ProjectTreeModel &Tree(bool restricted = false)
    {
        tree = std::make_unique<ProjectTreeModel>(Source(restricted));
        tree->TreeInit();
        return *tree;
    }

    QModelIndex At(const QString &key) const { return tree->IndexOfKey(key); }
    Qt::CheckState State(const QString &key) const { return Qt::CheckState(At(key).data(Qt::CheckStateRole).toInt()); }
    void Expand(const QString &key) { tree->NodeExpand(tree->ReachIndex(key)); }

    std::unique_ptr<ProjectTreeModel> tree;
};

TEST_F(ProjectTree, tree_init_adds_the_root_and_the_disciplines_each_with_the_placeholder_of_its_next_level)
{
    tree = std::make_unique<ProjectTreeModel>(Source());
    QSignalSpy expandRequested(tree.get(), &ProjectTreeModel::ExpandRequested);
    tree->TreeInit();

    ASSERT_EQ(tree->rowCount(), 1);
    const QModelIndex root = tree->RootIndex();
    EXPECT_EQ(tree->KeyOfIndex(root), u"Models"_s);
    EXPECT_EQ(root.data().toString(), u"Models"_s);
    EXPECT_EQ(ChildTexts(*tree, root), (QStringList{u"Piping"_s, u"Equipment"_s, u"Structural"_s}));
    EXPECT_EQ(ChildTexts(*tree, At(kPiping)), QStringList{u"Reading areas ..."_s});
    EXPECT_EQ(ChildTexts(*tree, At(kStructural)), QStringList{u"Reading sub-projects ..."_s});
    const QModelIndex placeholder = tree->index(0, 0, At(kPiping));
    EXPECT_EQ(tree->KeyOfIndex(placeholder), TreePlaceholderKey(kPiping, TreeLevel::Area));
    EXPECT_TRUE(placeholder.data(ProjectTreeModel::PlaceholderRole).toBool());
    EXPECT_FALSE(placeholder.data(Qt::CheckStateRole).isValid());
    EXPECT_TRUE(tree->IsUnopened(At(kPiping)));
    EXPECT_EQ(tree->NodeCount(), 4);

    EXPECT_EQ(log.lines, (QStringList{u"Read project data ..."_s, u"Read disciplines ..."_s, u"3 disciplines found"_s}));
    ASSERT_EQ(expandRequested.size(), 1);
    EXPECT_EQ(expandRequested.at(0).at(0).toModelIndex(), root);
    EXPECT_EQ(tree->ExpandedIndexes(), QModelIndexList{root});
    EXPECT_EQ(reads, 1);
}

TEST_F(ProjectTree, node_expand_reads_one_level_logs_it_and_keeps_the_partition_on_models)
{
    Tree();
    tree->NodeExpand(At(kPiping));
    EXPECT_EQ(ChildTexts(*tree, At(kPiping)), (QStringList{u"PA1 - Piping area 1"_s, u"PA2 - Piping area 2"_s}));
    EXPECT_EQ(ChildTexts(*tree, At(kPA1)), QStringList{u"Reading models ..."_s});
    tree->NodeExpand(At(kPA1));
    EXPECT_EQ(ChildTexts(*tree, At(kPA1)), (QStringList{u"P1101 - Pipe rack"_s, u"P1102 - Pumps"_s}));
    EXPECT_EQ(At(kP1102).data(ProjectTreeModel::PartitionNoRole).toInt(), 2);
    EXPECT_EQ(tree->NodeInfo(At(kP1102)).partitionNo, 2);
    EXPECT_EQ(tree->NodeInfo(At(kP1102)).parts.model, u"P1102"_s);
    EXPECT_EQ(tree->flags(At(kP1102)) & Qt::ItemNeverHasChildren, Qt::ItemNeverHasChildren);
    // An area without description is its name alone.
    Expand(kEquipment);
    EXPECT_EQ(ChildTexts(*tree, At(kEquipment)), QStringList{u"EA1"_s});

    // An open level is not read again.
    const int before = reads;
    tree->NodeExpand(At(kPiping));
    EXPECT_EQ(reads, before);
    for (const QString &line : {u"Reading areas from discipline: 'Piping' (discipline_indx_no: 1) ..."_s, u"2 areas found"_s,
                                u"Reading models from area: 'PA1' (area_index_no: 11) ..."_s, u"2 models found"_s,
                                u"1 areas found"_s})
        EXPECT_TRUE(log.Has(line)) << line.toStdString() << "\n" << log.lines.join(u'\n').toStdString();
}

TEST_F(ProjectTree, structural_areas_hang_below_its_sub_projects_and_models_of_another_type_stay_hidden)
{
    Tree();
    tree->NodeExpand(At(kStructural));
    EXPECT_EQ(ChildTexts(*tree, At(kStructural)), (QStringList{u"SP-1 - North"_s, u"SP-2 - South"_s}));
    EXPECT_EQ(ChildTexts(*tree, At(kSP1)), QStringList{u"Reading areas ..."_s});
    tree->NodeExpand(At(kSP1));
    EXPECT_EQ(ChildTexts(*tree, At(kSP1)), QStringList{u"SA1 - Steel north"_s});
    tree->NodeExpand(At(kSA1));
    // S3101 has a second row of model_type 2: not shown, and no warning of a duplicate.
    EXPECT_EQ(ChildTexts(*tree, At(kSA1)), QStringList{u"S3101 - Main steel"_s});
    EXPECT_EQ(tree->NodeInfo(At(kS3101)).parts.subProject, 1);
    for (const QString &line : {u"Reading sub-projects (discipline_indx_no: 3) ..."_s, u"2 sub-projects found"_s,
                                u"Reading areas from sub-project: 'SP-1' (sub_project_ndx_no: 1) ..."_s, u"1 areas found"_s,
                                u"1 models found"_s})
        EXPECT_TRUE(log.Has(line)) << line.toStdString();
    EXPECT_TRUE(statements.contains(u"SELECT area_index_no FROM pdtable_117 WHERE(sub_project_ndx_no = 1) GROUP BY area_index_no;"_s));
    EXPECT_TRUE(statements.contains(
        u"SELECT discipline_indx_no, area_index_no, area_name, area_description, interference_mode FROM pdtable_112 "
        "WHERE(discipline_indx_no = 3 AND area_index_no IN(31)) GROUP BY discipline_indx_no, area_index_no, area_name, "
        "area_description, interference_mode;"_s));
    for (const QString &line : log.lines)
        EXPECT_FALSE(line.startsWith(u"Warning"_s)) << line.toStdString();
}

TEST_F(ProjectTree, a_sub_project_without_areas_opens_empty)
{
    Db().Execute(u"INSERT INTO pdtable_116 VALUES (3, 'SP-3', 'Empty');"_s);
    Tree();
    Expand(kStructural);
    const QString empty = Key({{"Discipline", "3"}, {"SubProject", "3"}});
    tree->NodeExpand(At(empty));
    EXPECT_EQ(tree->rowCount(At(empty)), 0);
    EXPECT_FALSE(tree->IsUnopened(At(empty)));
    EXPECT_TRUE(statements.last().contains(u"area_index_no IN(-1)"_s));
}

TEST_F(ProjectTree, rows_with_a_taken_key_a_missing_parent_or_no_number_are_skipped_with_a_warning_and_the_others_show)
{
    Db().Execute(u"INSERT INTO pdtable_111 VALUES (1, 'Piping again');"
                 "INSERT INTO pdtable_112 VALUES (1, 11, 'PA1X', 'Same number', 1), (1, NULL, 'PA0', 'No number', 1);"
                 "INSERT INTO pdtable_113 VALUES (8, 1, 11, 4, 'P1101', 'Same model again', 1), "
                 "  (9, 2, 11, 5, 'E1199', 'Equipment in a piping area', 1);"_s);
    Tree();
    EXPECT_EQ(ChildTexts(*tree, tree->RootIndex()), (QStringList{u"Piping"_s, u"Equipment"_s, u"Structural"_s}));
    Expand(kPA1);
    EXPECT_EQ(ChildTexts(*tree, At(kPiping)), (QStringList{u"PA1 - Piping area 1"_s, u"PA2 - Piping area 2"_s}));
    EXPECT_EQ(ChildTexts(*tree, At(kPA1)), (QStringList{u"P1101 - Pipe rack"_s, u"P1102 - Pumps"_s}));
    for (const QString &line :
         {u"Warning: Discipline: 'Piping again' (discipline_indx_no: 1) cannot be shown. Reason: discipline_indx_no not unique"_s,
          u"Warning: Area: 'PA1X' (area_index_no: 11) cannot be shown. Reason: area_index_no not unique"_s,
          u"Warning: Area: 'PA0' (area_index_no: ) cannot be shown. Reason: Invalid use of Null"_s,
          u"Warning: Model: 'P1101' cannot be shown. Reason: model_no not unique"_s,
          u"Warning: Model: 'E1199' cannot be shown. Reason: discipline_indx_no: 2 not exists"_s, u"2 areas found"_s,
          u"2 models found"_s})
        EXPECT_TRUE(log.Has(line)) << line.toStdString() << "\n" << log.lines.join(u'\n').toStdString();
}

TEST_F(ProjectTree, the_model_passes_the_item_model_tester_and_every_node_is_found_by_its_key)
{
    tree = std::make_unique<ProjectTreeModel>(Source());
    QAbstractItemModelTester tester(tree.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    tree->TreeInit();
    for (const QString &key : {kPiping, kPA1, kPA2, kEquipment, kStructural, kSP1, kSA1})
        Expand(key);
    tree->NodeCheck(At(kP1101), true);
    tree->NodeCheck(At(kStructural), true);
    tree->setData(At(kP1102), Qt::Checked, Qt::CheckStateRole);
    tree->TreeInit();
    tree->NodeExpandAllSelected(u"model"_s);
    tree->NodeCheck(tree->RootIndex(), true);
    tree->NodeExpandAllSelected(u"model"_s);

    // Key to node and back, and node to its row under its parent and back.
    const QModelIndexList all = AllIndexes(*tree);
    EXPECT_EQ(all.size(), 17);  // the root, 3 disciplines, 2 sub-projects, 5 areas and 6 models
    for (const QModelIndex &index : all) {
        const QString key = tree->KeyOfIndex(index);
        EXPECT_EQ(tree->IndexOfKey(key), index) << key.toStdString();
        EXPECT_EQ(tree->index(index.row(), 0, index.parent()), index);
        EXPECT_EQ(index.data(ProjectTreeModel::NodeKeyRole).toString(), key);
    }
    EXPECT_EQ(tree->NodeCount(), all.size());
    EXPECT_FALSE(tree->IndexOfKey(u"Discipline"_s + QChar(2) + u"99"_s).isValid());
    EXPECT_TRUE(tree->KeyOfIndex({}).isEmpty());
}

TEST_F(ProjectTree, a_tick_goes_down_to_every_node_below_and_makes_the_nodes_above_partly_ticked)
{
    Tree();
    Expand(kPA1);
    Expand(kPA2);
    QSignalSpy changed(tree.get(), &QAbstractItemModel::dataChanged);
    tree->setData(At(kPA1), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(State(kPA1), Qt::Checked);
    EXPECT_EQ(State(kP1101), Qt::Checked);
    EXPECT_EQ(State(kP1102), Qt::Checked);
    EXPECT_EQ(State(kPA2), Qt::Unchecked);
    EXPECT_EQ(State(kPiping), Qt::PartiallyChecked);
    EXPECT_TRUE(At(kPiping).data(ProjectTreeModel::PartlyTickedRole).toBool());
    EXPECT_EQ(tree->RootIndex().data(Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_FALSE(changed.isEmpty());

    // The other area too: Piping is wholly ticked, the root still partly.
    tree->NodeCheck(At(kPA2), true);
    EXPECT_EQ(State(kPiping), Qt::Checked);
    EXPECT_FALSE(At(kPiping).data(ProjectTreeModel::PartlyTickedRole).toBool());
    EXPECT_EQ(tree->RootIndex().data(Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);

    // One model off: its area and Piping partly ticked; all off: unticked up to the root.
    tree->NodeCheck(At(kP1101), false);
    EXPECT_EQ(State(kPA1), Qt::PartiallyChecked);
    EXPECT_EQ(State(kPiping), Qt::PartiallyChecked);
    tree->NodeCheck(At(kP1102), false);
    tree->NodeCheck(At(kP1201), false);
    EXPECT_EQ(State(kPA1), Qt::Unchecked);
    EXPECT_EQ(State(kPiping), Qt::Unchecked);
    EXPECT_EQ(tree->RootIndex().data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    // A partly ticked state is the children's to give, never a click's.
    EXPECT_FALSE(tree->setData(At(kPiping), Qt::PartiallyChecked, Qt::CheckStateRole));
}

TEST_F(ProjectTree, a_partly_ticked_only_child_keeps_its_parent_partly_ticked_and_a_tick_on_it_ticks_all)
{
    Tree();
    Expand(kEquipment);
    const QString ea1 = Key({{"Discipline", "2"}, {"Area", "21"}});
    Db().Execute(u"INSERT INTO pdtable_113 VALUES (10, 2, 21, 2, 'E2102', 'Pumps', 1);"_s);
    Expand(ea1);
    tree->NodeCheck(At(ea1 + QChar(1) + u"Model"_s + QChar(2) + u"E2101"_s), true);
    EXPECT_EQ(State(ea1), Qt::PartiallyChecked);
    // Equipment's one area is ticked, but not wholly: Equipment is partly ticked too.
    EXPECT_EQ(State(kEquipment), Qt::PartiallyChecked);
    // A click on a partly ticked node ticks it with everything below.
    tree->setData(At(kEquipment), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(State(ea1), Qt::Checked);
    EXPECT_EQ(State(ea1 + QChar(1) + u"Model"_s + QChar(2) + u"E2102"_s), Qt::Checked);
}

TEST_F(ProjectTree, children_read_later_take_the_tick_of_their_parent)
{
    Tree();
    tree->NodeCheck(At(kPiping), true);
    Expand(kPA1);
    EXPECT_EQ(State(kPA1), Qt::Checked);
    EXPECT_EQ(State(kP1101), Qt::Checked);
    tree->NodeCheck(At(kPiping), false);
    Expand(kPA2);
    EXPECT_EQ(State(kP1201), Qt::Unchecked);

    // NodeCheckChildren copies a node's own tick down without looking up.
    tree->NodeCheck(At(kPA1), true);
    tree->NodeCheck(At(kP1101), false);
    EXPECT_EQ(State(kPA1), Qt::PartiallyChecked);
    tree->NodeCheckChildren(At(kPA1));
    EXPECT_EQ(State(kP1101), Qt::Checked);
    EXPECT_EQ(State(kPA1), Qt::Checked);
}

TEST_F(ProjectTree, expand_all_selected_opens_the_ticked_nodes_down_to_the_wanted_level)
{
    Tree();
    tree->NodeCheck(At(kStructural), true);
    tree->NodeCheck(At(kEquipment), true);
    tree->NodeExpandAllSelected(u",area,"_s);
    EXPECT_FALSE(tree->IsUnopened(At(kStructural)));
    EXPECT_FALSE(tree->IsUnopened(At(kSP1)));
    EXPECT_TRUE(tree->IsUnopened(At(kSA1)));
    EXPECT_TRUE(tree->IsUnopened(At(kPiping)));  // not ticked
    EXPECT_TRUE(tree->TickedModels().isEmpty());

    tree->NodeExpandAllSelected(u"model"_s);
    QStringList models;
    for (const TreeNodeInfo &model : tree->TickedModels())
        models << model.parts.model;
    EXPECT_EQ(models, (QStringList{u"E2101"_s, u"S3101"_s, u"S3201"_s}));
    EXPECT_EQ(tree->TickedNodes(TreeLevel::Area).size(), 3);
    EXPECT_TRUE(tree->IsUnopened(At(kPiping)));
}

TEST_F(ProjectTree, a_saved_state_comes_back_in_a_new_tree_and_a_wholly_ticked_subtree_is_stored_at_its_top)
{
    const QString file = box.Root() + u"user.ini"_s;
    Tree();
    Expand(kPA1);
    Expand(kSA1);
    tree->NodeCheck(At(kP1101), true);
    tree->NodeCheck(At(kSP1), true);
    tree->setData(At(kPA1), true, ProjectTreeModel::ExpandedRole);
    tree->TreeSave2INI(u"PNotUsedModels"_s, u"F_"_s, file);

    // Stored: P1101, and SP-1 alone for its wholly ticked subtree.
    const QString stored = GetIniValue(file, u"PNotUsedModels"_s, u"Check_F_"_s);
    EXPECT_EQ(stored, u"Discipline:1|Area:11|Model:P1101;Discipline:3|SubProject:1"_s);
    EXPECT_EQ(GetIniValue(file, u"PNotUsedModels"_s, u"Expand_F_"_s), u"Models;Discipline:1|Area:11"_s);

    ProjectTreeModel restored(Source());
    QSignalSpy expandRequested(&restored, &ProjectTreeModel::ExpandRequested);
    restored.TreeInit();
    restored.TreeLoad4INI(u"PNotUsedModels"_s, u"F_"_s, file);
    const auto state = [&](const QString &key) { return Qt::CheckState(restored.IndexOfKey(key).data(Qt::CheckStateRole).toInt()); };
    EXPECT_EQ(state(kP1101), Qt::Checked);
    EXPECT_EQ(state(kP1102), Qt::Unchecked);
    EXPECT_EQ(state(kPA1), Qt::PartiallyChecked);
    EXPECT_EQ(state(kPiping), Qt::PartiallyChecked);
    EXPECT_EQ(state(kSP1), Qt::Checked);
    EXPECT_EQ(state(kStructural), Qt::PartiallyChecked);
    EXPECT_TRUE(restored.IsUnopened(restored.IndexOfKey(kSP1)));  // ticked as a whole, not opened
    EXPECT_EQ(restored.TickedNodes(TreeLevel::SubProject).size(), 1);
    // Opened again and asked to be shown so: the root (TreeInit, then the state) and PA1.
    EXPECT_TRUE(restored.IndexOfKey(kPA1).data(ProjectTreeModel::ExpandedRole).toBool());
    EXPECT_EQ(expandRequested.size(), 3);

    // Saving it gives the same state.
    restored.TreeSave2INI(u"PNotUsedModels"_s, u"F_"_s, file);
    EXPECT_EQ(GetIniValue(file, u"PNotUsedModels"_s, u"Check_F_"_s), stored);
    // Another prefix is another state in the same section; nothing ticked stores nothing.
    ProjectTreeModel empty(Source());
    empty.TreeInit();
    empty.TreeSave2INI(u"PNotUsedModels"_s, u"G_"_s, file);
    EXPECT_EQ(GetIniValue(file, u"PNotUsedModels"_s, u"Check_G_"_s, u"none"_s), u"none"_s);
    EXPECT_EQ(GetIniValue(file, u"PNotUsedModels"_s, u"Check_F_"_s), stored);
}

TEST_F(ProjectTree, a_stored_state_that_names_nodes_no_longer_in_the_project_keeps_the_rest)
{
    const QString file = box.Root() + u"user.ini"_s;
    const QString gone = Key({{"Discipline", "1"}, {"Area", "11"}, {"Model", "P1199"}});
    const QString goneArea = Key({{"Discipline", "1"}, {"Area", "19"}});
    const QString goneDiscipline = Key({{"Discipline", "7"}});
    SetIniValue(file, u"Check"_s, u"Check_P"_s,
                u"Discipline:1|Area:11|Model:P1199;Discipline:1|Area:19;Discipline:7;Discipline:1|Area:11|Model:P1102;Unit:4"_s);
    SetIniValue(file, u"Check"_s, u"Expand_P"_s, u"Models;Discipline:7;Discipline:1|Area:19|Model:x;Discipline:2"_s);
    Tree();
    tree->NodeCheck(At(kEquipment), true);
    tree->TreeLoad4INI(u"Check"_s, u"P"_s, file);
    EXPECT_FALSE(At(gone).isValid());
    EXPECT_FALSE(At(goneArea).isValid());
    EXPECT_FALSE(At(goneDiscipline).isValid());
    EXPECT_EQ(State(kP1102), Qt::Checked);
    EXPECT_EQ(State(kPA1), Qt::PartiallyChecked);
    // What was ticked before the load is not kept.
    EXPECT_EQ(State(kEquipment), Qt::Unchecked);
    EXPECT_FALSE(tree->IsUnopened(At(kEquipment)));
    EXPECT_TRUE(At(kEquipment).data(ProjectTreeModel::ExpandedRole).toBool());
}

TEST_F(ProjectTree, the_ticked_models_of_a_stored_state_come_without_any_window)
{
    const QString file = box.Root() + u"user.ini"_s;
    SetIniValue(file, u"PNotUsedModels"_s, u"Check_"_s, u"Discipline:3;Discipline:1|Area:11|Model:P1102"_s);
    QStringList models;
    for (const TreeNodeInfo &model : TickedModels4INI(Source(), u"PNotUsedModels"_s, QString(), file))
        models << model.parts.model + u"/"_s + QString::number(model.partitionNo);
    EXPECT_EQ(models, (QStringList{u"P1102/2"_s, u"S3101/1"_s, u"S3201/3"_s}));
}

TEST_F(ProjectTree, the_restricted_tree_shows_only_what_has_clashes)
{
    Tree(true);
    EXPECT_EQ(ChildTexts(*tree, tree->RootIndex()), (QStringList{u"Piping"_s, u"Structural"_s}));
    tree->NodeCheck(tree->RootIndex(), true);
    tree->NodeExpandAllSelected(u"model"_s);
    EXPECT_EQ(ChildTexts(*tree, At(kPiping)), QStringList{u"PA1 - Piping area 1"_s});
    EXPECT_EQ(ChildTexts(*tree, At(kStructural)), QStringList{u"SP-1 - North"_s});
    QStringList models;
    for (const TreeNodeInfo &model : tree->TickedModels())
        models << model.parts.model;
    EXPECT_EQ(models, (QStringList{u"P1101"_s, u"S3101"_s}));
    EXPECT_TRUE(statements.first().contains(u"IN (SELECT discipline_a FROM [clashes])"_s));
}

TEST_F(ProjectTree, a_level_that_cannot_be_read_raises_in_the_frame_of_node_expand_and_keeps_its_placeholder)
{
    Tree();
    Db().Execute(u"DROP TABLE pdtable_112;"_s);
    const QString failure = [&] {
        try {
            tree->NodeExpand(At(kPiping));
        } catch (const Failure &f) {
            return f.Source();
        }
        return QString();
    }();
    EXPECT_EQ(failure, u"NodeExpand"_s);
    EXPECT_TRUE(tree->IsUnopened(At(kPiping)));
    // A tree without a source says so.
    ProjectTreeModel none;
    EXPECT_THROW(none.TreeInit(), Failure);
    EXPECT_EQ(none.rowCount(), 0);
}

TEST_F(ProjectTree, a_tree_cleared_while_a_level_is_read_drops_the_rows)
{
    // Events run while the rows are taken; a new TreeInit meanwhile (another project) wins.
    tree = std::make_unique<ProjectTreeModel>();
    bool reentered = false;
    tree->SetSource({[&](const QString &sql) {
                         const Recordset rows = Db().Read(sql);
                         if (sql.contains(u"pdtable_112"_s) && !reentered) {
                             reentered = true;
                             tree->TreeInit();
                         }
                         return rows;
                     },
                     false});
    tree->TreeInit();
    tree->NodeExpand(At(kPiping));
    EXPECT_TRUE(reentered);
    EXPECT_TRUE(tree->IsUnopened(At(kPiping)));
    EXPECT_EQ(tree->NodeCount(), 4);
}

} // namespace

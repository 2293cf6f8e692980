// ImportFile: a list of models ticks them in the tree, read from the store that holds the
// project tables; what a list file may hold, and what it may lack.

#include "treefixture.h"

#include "check/importfile.h"
#include "check/messages.h"
#include "check/projecttree.h"
#include "store/clashstore.h"
#include "support/failures.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;
using fxtest::Key;

namespace {

class ImportList : public fxtest::HandMadeProject
{
protected:
    void SetUp() override
    {
        HandMadeProject::SetUp();
        // The hand-made project is the open store: ImportFile reads its pdtable_113 and 117.
        ClashStore().ProjectDefinition.name = u"P"_s;
        ClashStore().ClashConnection = std::make_unique<SqliteDb>(box.Temp() + u"project.db"_s);
        tree.TreeInit();
    }

    void TearDown() override { FreeClashes(); }

    QStringList TickedModels()
    {
        QStringList models;
        tree.NodeExpandAllSelected(u"model"_s);
        for (const TreeNodeInfo &model : tree.TickedModels())
            models << model.parts.model;
        return models;
    }

    QString List(const QByteArray &content) { return box.WriteFile(u"list.txt"_s, content); }

    ProjectTreeModel tree{Source()};
};

TEST_F(ImportList, every_line_ticks_its_model_down_the_tree_and_the_log_tells_each_step)
{
    // A byte order mark, Windows line ends, blank lines, blanks around a line, another case.
    const QString file = List("\xEF\xBB\xBFP1101\r\n\r\n  s3201 \r\nE2101\r\n\r\n");
    EXPECT_EQ(ImportFile(file, tree), 3);
    EXPECT_EQ(TickedModels(), (QStringList{u"P1101"_s, u"E2101"_s, u"S3201"_s}));
    // The structural model is reached through its area's sub-project.
    EXPECT_EQ(Qt::CheckState(tree.IndexOfKey(Key({{"Discipline", "3"}, {"SubProject", "2"}})).data(Qt::CheckStateRole).toInt()),
              Qt::Checked);
    EXPECT_EQ(Qt::CheckState(tree.IndexOfKey(Key({{"Discipline", "1"}, {"Area", "11"}})).data(Qt::CheckStateRole).toInt()),
              Qt::PartiallyChecked);
    const QStringList expected{u"Importing file '%1' ..."_s.arg(file),
                               u"Reading models ..."_s,
                               u"Processing 'P1101' ..."_s,
                               u"Reading areas from discipline: 'Piping' (discipline_indx_no: 1) ..."_s,
                               u"2 areas found"_s,
                               u"Reading models from area: 'PA1' (area_index_no: 11) ..."_s,
                               u"2 models found"_s,
                               u"Model: 'P1101' found"_s,
                               u"Processing 's3201' ..."_s};
    ASSERT_GE(log.lines.size(), 4 + expected.size());
    EXPECT_EQ(log.lines.mid(3, expected.size()), expected);  // after TreeInit's three lines
    EXPECT_TRUE(log.Has(u"Model: 'S3201' found"_s));
    EXPECT_EQ(log.lines.mid(log.lines.size() - 2), (QStringList{u"3 models found"_s, u"File imported successfully"_s}));
}

TEST_F(ImportList, what_was_ticked_before_goes_and_unknown_lines_are_logged_as_not_found)
{
    tree.NodeCheck(tree.IndexOfKey(Key({{"Discipline", "2"}})), true);
    const QString file = List("X9999\nP11*\n");
    EXPECT_EQ(ImportFile(file, tree), 2);
    EXPECT_EQ(TickedModels(), (QStringList{u"P1101"_s, u"P1102"_s}));
    EXPECT_TRUE(log.Has(u"Model 'X9999' not found"_s));
    EXPECT_FALSE(log.Has(u"Model 'P11*' not found"_s));
    EXPECT_TRUE(log.Has(u"2 models found"_s));
}

TEST_F(ImportList, a_model_the_tree_does_not_show_is_not_found)
{
    // The restricted tree shows only P1101 of Piping; S3101's type 2 row is a hidden one.
    ProjectTreeModel restricted(Source(true));
    restricted.TreeInit();
    const QString file = List("P1102\nP1101\n");
    EXPECT_EQ(ImportFile(file, restricted), 1);
    EXPECT_TRUE(log.Has(u"Model 'P1102' not found"_s));
    EXPECT_TRUE(log.Has(u"Model: 'P1101' found"_s));
}

TEST_F(ImportList, a_file_without_a_line_is_empty_and_a_missing_file_fails)
{
    for (const QByteArray &content : {QByteArray(), QByteArray("\xEF\xBB\xBF"), QByteArray("\r\n  \r\n\n")}) {
        const QString file = List(content);
        EXPECT_EQ(fxtest::FailureText([&] { ImportFile(file, tree); }), u"ImportFile: "_s + ArgForm(msg::ImportFileEmpty, {file}));
    }
    tree.NodeCheck(tree.RootIndex(), true);
    const QString missing = box.Root() + u"none.txt"_s;
    EXPECT_TRUE(fxtest::FailureText([&] { ImportFile(missing, tree); }).startsWith(u"ImportFile: "_s));
    // A failed import leaves the ticks as they were.
    EXPECT_TRUE(tree.IsTicked(tree.RootIndex()));
}

TEST_F(ImportList, a_list_in_utf16_or_windows_1252_reads_as_well)
{
    QByteArray utf16("\xFF\xFE");
    for (const QChar c : u"E2101\r\n"_s)
        utf16.append(char(c.unicode() & 0xFF)).append(char(c.unicode() >> 8));
    EXPECT_EQ(ReadListFileLines(List(utf16)), QStringList{u"E2101"_s});
    EXPECT_EQ(ReadListFileLines(List("M\xFC" "1\r\nP1\n")), (QStringList{u"M\u00FC1"_s, u"P1"_s}));
}

} // namespace

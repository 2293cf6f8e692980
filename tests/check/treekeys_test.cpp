// The node keys of the project tree, the kind tests and readers on them, the packing of keys
// into a stored state, and the LIKE of a list file's lines.

#include "treefixture.h"

#include "check/importfile.h"
#include "check/treekeys.h"
#include "check/treestate.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QChar L = QChar(0x0001);
const QChar V = QChar(0x0002);

TEST(TreeKeys, keys_join_levels_by_u0001_and_name_and_value_by_u0002)
{
    const QString discipline = TreeChildKey(TreeRootKey(), TreeLevel::Discipline, u"3"_s);
    EXPECT_EQ(discipline, u"Discipline"_s + V + u"3"_s);
    const QString model = TreeChildKey(TreeChildKey(TreeChildKey(discipline, TreeLevel::SubProject, u"1"_s), TreeLevel::Area, u"31"_s),
                                       TreeLevel::Model, u"S3101"_s);
    EXPECT_EQ(model, u"Discipline"_s + V + u"3"_s + L + u"SubProject"_s + V + u"1"_s + L + u"Area"_s + V + u"31"_s + L + u"Model"_s
                         + V + u"S3101"_s);
    EXPECT_EQ(TreePlaceholderKey(discipline, TreeLevel::Area), discipline + L + u"Area"_s + V);
    EXPECT_EQ(TreeAncestorKeys(model),
              (QStringList{discipline, fxtest::Key({{"Discipline", "3"}, {"SubProject", "1"}}),
                           fxtest::Key({{"Discipline", "3"}, {"SubProject", "1"}, {"Area", "31"}})}));
    EXPECT_EQ(TreeRootKey(), u"Models"_s);
}

TEST(TreeKeys, the_deepest_level_tells_the_kind_of_a_key)
{
    const QString subProject = fxtest::Key({{"Discipline", "3"}, {"SubProject", "1"}});
    const QString area = fxtest::Key({{"Discipline", "3"}, {"SubProject", "1"}, {"Area", "31"}});
    const QString model = area + L + u"Model"_s + V + u"S3101"_s;
    const QString line = model + L + u"LineID"_s + V + u"100-P"_s;
    EXPECT_TRUE(IsDisciplineKey(fxtest::Key({{"Discipline", "3"}})));
    EXPECT_TRUE(IsSubProjectKey(subProject));
    EXPECT_FALSE(IsSubProjectKey(area));
    EXPECT_TRUE(IsAreaKey(area));
    EXPECT_FALSE(IsAreaKey(model));
    EXPECT_TRUE(IsModelKey(model));
    EXPECT_FALSE(IsModelKey(line));
    EXPECT_FALSE(IsDisciplineKey(model));
    EXPECT_TRUE(IsDrawingTypeKey(fxtest::Key({{"DrawingType", "2"}})));
    EXPECT_TRUE(IsDrawingKey(fxtest::Key({{"DrawingType", "2"}, {"Drawing", "DWG-1"}})));
    EXPECT_FALSE(IsDrawingTypeKey(fxtest::Key({{"DrawingType", "2"}, {"Drawing", "DWG-1"}})));
    EXPECT_EQ(TreeKindOfKey(TreeRootKey()), TreeLevel::Root);
    // Not keys of the tree: an unknown level, a level out of its order, a number that is none.
    EXPECT_EQ(TreeKindOfKey(u"Unit"_s + V + u"1"_s), TreeLevel::None);
    EXPECT_EQ(TreeKindOfKey(fxtest::Key({{"Area", "11"}})), TreeLevel::None);
    EXPECT_EQ(TreeKindOfKey(fxtest::Key({{"Discipline", "x"}})), TreeLevel::None);
}

TEST(TreeKeys, node_texts_and_readers_give_numbers_name_and_description)
{
    EXPECT_EQ(TreeNodeText(u"PA1   "_s, u" Piping area 1 "_s), u"PA1 - Piping area 1"_s);
    EXPECT_EQ(TreeNodeText(u"EA1"_s, QString()), u"EA1"_s);

    const QString area = fxtest::Key({{"Discipline", "3"}, {"SubProject", "2"}, {"Area", "32"}});
    const TreeNodeParts parts = ReadAreaNode(area, u"SA2 - Steel - south"_s);
    EXPECT_EQ(parts.discipline, 3);
    EXPECT_EQ(parts.subProject, 2);
    EXPECT_EQ(parts.area, 32);
    EXPECT_EQ(parts.name, u"SA2"_s);
    EXPECT_EQ(parts.description, u"Steel - south"_s);

    const TreeNodeParts model = ReadModelNode(area + L + u"Model"_s + V + u"S3201"_s, u"S3201 - Platforms"_s);
    EXPECT_EQ(model.model, u"S3201"_s);
    EXPECT_EQ(model.area, 32);
    const TreeNodeParts drawing = ReadDrawingNode(fxtest::Key({{"DrawingType", "2"}, {"Drawing", "DWG-1"}}), u"DWG-1 - Plan"_s);
    EXPECT_EQ(drawing.drawingType, 2);
    EXPECT_EQ(drawing.drawing, u"DWG-1"_s);
    EXPECT_EQ(drawing.description, u"Plan"_s);
}

TEST(TreeKeys, a_reader_on_a_node_of_another_kind_gives_minus_one_and_empty_texts)
{
    const QString area = fxtest::Key({{"Discipline", "1"}, {"Area", "11"}});
    for (const TreeNodeParts &parts :
         {ReadModelNode(area, u"PA1 - Piping area 1"_s), ReadDisciplineNode(area, u"PA1 - Piping area 1"_s),
          ReadSubProjectNode(area, u"PA1 - Piping area 1"_s), ReadDrawingNode(area, u"PA1"_s),
          ReadAreaNode(TreeRootKey(), u"Models"_s), ReadAreaNode(u"garbage"_s, u"a - b"_s)}) {
        EXPECT_EQ(parts.discipline, -1);
        EXPECT_EQ(parts.subProject, -1);
        EXPECT_EQ(parts.area, -1);
        EXPECT_EQ(parts.drawingType, -1);
        EXPECT_TRUE(parts.model.isEmpty());
        EXPECT_TRUE(parts.drawing.isEmpty());
        EXPECT_TRUE(parts.name.isEmpty());
        EXPECT_TRUE(parts.description.isEmpty());
    }
}

TEST(TreeState, packed_keys_come_back_the_same_whatever_their_values_hold)
{
    const QStringList keys{TreeRootKey(), fxtest::Key({{"Discipline", "1"}}),
                           fxtest::Key({{"Discipline", "1"}, {"Area", "11"}, {"Model", "P 11;01|x:y%z  "}}),
                           fxtest::Key({{"Discipline", "3"}, {"SubProject", "1"}, {"Area", "31"}, {"Model", "Stahl-Ü"}})};
    const QString packed = PackTreeKeys(keys);
    EXPECT_FALSE(packed.contains(L));
    EXPECT_FALSE(packed.contains(V));
    EXPECT_EQ(packed.trimmed(), packed);
    EXPECT_TRUE(packed.startsWith(u"Models;Discipline:1;Discipline:1|Area:11|Model:"_s)) << packed.toStdString();
    EXPECT_EQ(UnpackTreeKeys(packed), keys);
    EXPECT_TRUE(UnpackTreeKeys(QString()).isEmpty());
    // A part that is no key (edited by hand) is left out; the others stay.
    EXPECT_EQ(UnpackTreeKeys(u"rubbish;Discipline:2; ;|x"_s), QStringList{fxtest::Key({{"Discipline", "2"}})});
}

TEST(ImportLike, a_line_is_a_model_number_or_a_pattern_with_star_or_percent)
{
    EXPECT_TRUE(IsLikeModelNo(u"P1101"_s, u"p1101"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P1101   "_s, u"P1101"_s));
    EXPECT_FALSE(IsLikeModelNo(u"P11011"_s, u"P1101"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P1101"_s, u"P11*"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P1101"_s, u"%101"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P1101"_s, u"P*0*1"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P1101"_s, u"*"_s));
    EXPECT_FALSE(IsLikeModelNo(u"P1201"_s, u"P11*"_s));
    // "?" and "_" are themselves, as in a recordset filter.
    EXPECT_FALSE(IsLikeModelNo(u"P1101"_s, u"P110?"_s));
    EXPECT_TRUE(IsLikeModelNo(u"P110?"_s, u"P110?"_s));
    EXPECT_FALSE(IsLikeModelNo(u"P1101"_s, u"P_101"_s));
}

} // namespace

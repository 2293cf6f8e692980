// The names of clash types and model statuses as Fendrix.ini defines them.

#include "frame/settings.h"
#include "store/clashdefinitions.h"

#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

TEST(ClashDefinitions, only_whole_16_bit_keys_with_a_name_count_and_the_first_read_is_kept)
{
    fxtest::Sandbox box;
    const QString ini = box.ProgramDir() + u"Fendrix.ini"_s;
    const QString section = u"ClashTypesDefinition"_s;
    SetIniValue(ini, section, u"1"_s, u"  Hard - Hard  "_s);
    SetIniValue(ini, section, u"2.5"_s, u"half"_s);
    SetIniValue(ini, section, u"3,0"_s, u"comma"_s);
    SetIniValue(ini, section, u"x"_s, u"letters"_s);
    SetIniValue(ini, section, u"4"_s, u"   "_s);
    SetIniValue(ini, section, u"70000"_s, u"too big"_s);
    SetIniValue(ini, section, u"-7"_s, u"negative"_s);

    const QList<ClashDefinition> types = GetClashTypes();
    ASSERT_EQ(types.size(), 2);
    EXPECT_EQ(types.at(0).number, 1);
    EXPECT_EQ(types.at(0).name, u"Hard - Hard"_s);
    EXPECT_EQ(types.at(1).number, -7);
    EXPECT_EQ(types.at(1).name, u"negative"_s);

    // Remembered: a later change of the file is not seen, and the other section is apart.
    SetIniValue(ini, section, u"5"_s, u"late"_s);
    EXPECT_EQ(GetClashTypes().size(), 2);
    EXPECT_TRUE(GetModelStatus().isEmpty());
    EXPECT_EQ(ReadClashDefinitions(ini, section).size(), 3);
}

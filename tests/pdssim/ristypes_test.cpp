// The RIS types as the stand-ins write and read their values.

#include "pdssim/ristypes.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using pdssim::RisType;

namespace {

TEST(RisType, each_type_has_its_fixed_width_and_writes_its_values_in_both_forms)
{
    const std::tuple<const char *, int, QVariant, QByteArray> cases[] = {
        {"smallint not null", 6, qint64(-32768), "-32768"},
        {"int", 11, qint64(2147483647), "2147483647"},
        {"double", 23, 0.1, "0.1"},
        {"double", 23, 1.0 / 3, "0.333333333333333"},
        {"real", 14, 1.0 / 3, "0.3333333"},
        {"decimal(8,2)", 10, -3.5, "-3.50"},
        {"timestamp", 19, u"1994-05-01 12:30:00"_s, "1994-05-01:12:30:00"},
        {"char(3)", 3, u"O'N"_s, "'O''N'"},
    };
    for (const auto &[declared, width, value, free] : cases) {
        const RisType type = RisType::Of(QString::fromLatin1(declared));
        EXPECT_EQ(type.FixedWidth(), width) << declared;
        EXPECT_EQ(type.FreeValue(value), free) << declared;
        const QByteArray fixed = type.FixedField(value);
        EXPECT_EQ(fixed.size(), width) << declared;
        EXPECT_EQ(type.FixedField(QVariant()), QByteArray(width, ' ')) << declared;
    }
    // A fixed char field is cut to its width, never quoted.
    EXPECT_EQ(RisType::Of(u"char(3)"_s).FixedField(u"O'Neill"_s), "O'N");
}

TEST(RisType, a_dump_text_is_taken_only_when_it_is_a_value_of_the_column)
{
    QVariant value = u"untouched"_s;
    EXPECT_FALSE(RisType::Of(u"smallint"_s).Parse(u"32768"_s, value));
    EXPECT_FALSE(RisType::Of(u"int"_s).Parse(u"12a"_s, value));
    EXPECT_FALSE(RisType::Of(u"double"_s).Parse(u"1,5"_s, value));
    EXPECT_FALSE(RisType::Of(u"timestamp"_s).Parse(u"1994-13-01:00:00:00"_s, value));
    EXPECT_FALSE(RisType::Of(u"char(2)"_s).Parse(u"abc"_s, value));
    EXPECT_EQ(value, QVariant(u"untouched"_s));

    ASSERT_TRUE(RisType::Of(u"smallint"_s).Parse(u" -32768 "_s, value));
    EXPECT_EQ(value, QVariant(qint64(-32768)));
    ASSERT_TRUE(RisType::Of(u"timestamp"_s).Parse(u"1994-05-01:12:30:00"_s, value));
    EXPECT_EQ(value, QVariant(u"1994-05-01 12:30:00"_s));
    // A fixed field's padding goes, its leading blanks stay; blanks alone are NULL.
    ASSERT_TRUE(RisType::Of(u"char(6)"_s).Parse(u" ab   "_s, value));
    EXPECT_EQ(value, QVariant(u" ab"_s));
    ASSERT_TRUE(RisType::Of(u"char(6)"_s).Parse(u"      "_s, value));
    EXPECT_TRUE(value.isNull());
}

} // namespace

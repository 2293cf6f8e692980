#include "frame/failure.h"
#include <gtest/gtest.h>
TEST(Failure, placeholder) { EXPECT_EQ(fx::ArgForm("a %0%", {QStringLiteral("b")}), QStringLiteral("a %0%|||b")); }

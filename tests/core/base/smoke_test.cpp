#include "base/number.h"

#include <gtest/gtest.h>

TEST(Number, RoundsHalvesToEven)
{
    EXPECT_EQ(vkm::leadingInteger(QStringLiteral("12.5")), 12);
    EXPECT_EQ(vkm::leadingInteger(QStringLiteral("13.5")), 14);
}

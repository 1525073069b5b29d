#include "foundation/c_locale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>

#include "tests/support/locale.h"

TEST(CLocale, ScansAFloatUpToTheFirstOtherCharacter) {
    EXPECT_EQ(1.5f, bxScanFloatInCLocale("1.5"));
    EXPECT_EQ(-0.25f, bxScanFloatInCLocale("  -0.25abc"));
    EXPECT_EQ(2000.0f, bxScanFloatInCLocale("2e3"));
    EXPECT_EQ(1.0f, bxScanFloatInCLocale("1,5"));
    EXPECT_EQ(0.1f, bxScanFloatInCLocale(".1"));
}

TEST(CLocale, ScansToTheNearestFloat) {
    EXPECT_EQ(16777216.0f, bxScanFloatInCLocale("16777217"));
    EXPECT_EQ(INFINITY, bxScanFloatInCLocale("1e99"));
    EXPECT_TRUE(std::signbit(bxScanFloatInCLocale("-0")));
}

TEST(CLocale, ScansNoNumberAsZero) {
    EXPECT_EQ(0.0f, bxScanFloatInCLocale(nullptr));
    EXPECT_EQ(0.0f, bxScanFloatInCLocale(""));
    EXPECT_EQ(0.0f, bxScanFloatInCLocale("abc"));
    EXPECT_EQ(0.0f, bxScanFloatInCLocale("-"));
    EXPECT_EQ(0.0f, bxScanFloatInCLocale("   "));
}

TEST(CLocale, ScansAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    float scanned = 0;
    ASSERT_EQ(1, std::sscanf("1,5", "%f", &scanned));
    ASSERT_EQ(1.5f, scanned);  // what the host's own scan makes of it
    EXPECT_EQ(1.5f, bxScanFloatInCLocale("1.5"));
    EXPECT_EQ(1.0f, bxScanFloatInCLocale("1,5"));
}

TEST(CLocale, LeavesTheLocaleOfTheProcessAsItWas) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    bxScanFloatInCLocale("1.5");
    EXPECT_STREQ(",", localeconv()->decimal_point);
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    EXPECT_STREQ("1,5", text);
}

// Formatting, also under a locale that writes a comma for a decimal point.

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "foundation/bx_string.h"
#include "tests/support/locale.h"

namespace {

BXString shortCount(int n) {
    BXString s("old");
    s.printShortCount(n);
    return s;
}

}  // namespace

TEST(BXStringFormat, FormatsAsPrintfDoes) {
    EXPECT_STREQ("a=7 b='x' 1.500000", BXString::format("a=%d b='%s' %f", 7, "x", 1.5).c_str());
    EXPECT_STREQ("100%", BXString::format("%d%%", 100).c_str());
    EXPECT_STREQ("4294967295 ff c", BXString::format("%u %x %c", UINT_MAX, 255, 'c').c_str());
}

TEST(BXStringFormat, CutsTheTextAt511Characters) {
    const std::string long600(600, 'x');
    const BXString cut = BXString::format("%s", long600.c_str());
    EXPECT_EQ(511, cut.length());
    EXPECT_EQ(512u, cut.getDynMemoryUsed());
    const std::string long511(511, 'x');
    EXPECT_STREQ(long511.c_str(), BXString::format("%s", long511.c_str()).c_str());
    const std::string long512(512, 'x');
    EXPECT_STREQ(long511.c_str(), BXString::format("%s", long512.c_str()).c_str());
}

TEST(BXStringFormat, CutsALongFormatToo) {
    const std::string long600(600, 'x');
    EXPECT_EQ(511, BXString::format(long600.c_str()).length());
}

TEST(BXStringFormat, IsAllocatedEvenWhenEmpty) {
    EXPECT_FALSE(BXString::format("").isNull());
    EXPECT_TRUE(BXString::format("").isEmpty());
    EXPECT_FALSE(BXString::format("%s", "").isNull());
    EXPECT_FALSE(BXString::format(BXString()).isNull());
}

TEST(BXStringFormat, EndsWhereACharacterCannotBeWritten) {
    const wchar_t noCharacter[] = {static_cast<wchar_t>(0x7FFFFFFF), 0};
    EXPECT_STREQ("ab", BXString::format("ab%lscd", noCharacter).c_str());
    BXString s("old");
    s.print("ab%lscd", noCharacter);
    EXPECT_STREQ("ab", s.c_str());
}

TEST(BXStringFormat, KeepsBytesBeyondAscii) {
    EXPECT_STREQ("\xC3\xA4\xFF", BXString::format("%s", "\xC3\xA4\xFF").c_str());
}

TEST(BXStringPrint, ReplacesTheContents) {
    BXString s("old");
    s.print("%d-%d", 1, 2);
    EXPECT_STREQ("1-2", s.c_str());
    s.print("");
    EXPECT_FALSE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
}

TEST(BXStringPrint, CutsTheTextAt511Characters) {
    BXString s;
    s.print("%s", std::string(600, 'x').c_str());
    EXPECT_EQ(511, s.length());
}

TEST(BXStringPrint, TakesItsOwnText) {
    BXString s("abc");
    s.print("<%s>", s.c_str());
    EXPECT_STREQ("<abc>", s.c_str());
    s.print(s);
    EXPECT_STREQ("<abc>", s.c_str());
}

TEST(BXStringInt2String, PrintsEveryInt) {
    EXPECT_STREQ("0", BXString::int2String(0).c_str());
    EXPECT_STREQ("-12", BXString::int2String(-12).c_str());
    EXPECT_STREQ("2147483647", BXString::int2String(INT_MAX).c_str());
    EXPECT_STREQ("-2147483648", BXString::int2String(INT_MIN).c_str());
}

TEST(BXStringPrintShortCount, PrintsSmallCountsWhole) {
    EXPECT_STREQ("0", shortCount(0).c_str());
    EXPECT_STREQ("7", shortCount(7).c_str());
    EXPECT_STREQ("999", shortCount(999).c_str());
}

TEST(BXStringPrintShortCount, PrintsThousands) {
    EXPECT_STREQ("1.0k", shortCount(1000).c_str());
    EXPECT_STREQ("12.3k", shortCount(12399).c_str());
    EXPECT_STREQ("999.9k", shortCount(999999).c_str());
}

TEST(BXStringPrintShortCount, PrintsMillions) {
    EXPECT_STREQ("1.0m", shortCount(1000000).c_str());
    EXPECT_STREQ("1.9m", shortCount(1999999).c_str());
    EXPECT_STREQ("2147.4m", shortCount(INT_MAX).c_str());
}

// Required(R09)
TEST(BXStringPrintShortCount, KeepsTheLastThreeDigitsOfANegativeCount) {
    EXPECT_STREQ("0", shortCount(0).c_str());
    EXPECT_STREQ("-1", shortCount(-1).c_str());
    EXPECT_STREQ("-999", shortCount(-999).c_str());
    EXPECT_STREQ("0", shortCount(-1000).c_str());
    EXPECT_STREQ("-234", shortCount(-1234).c_str());
    EXPECT_STREQ("0", shortCount(-5000).c_str());
    EXPECT_STREQ("-648", shortCount(INT_MIN).c_str());
}

// Required(R06)
TEST(BXStringPrintTime, LeavesAnEmptyText) {
    for (const unsigned int time : {0u, 1u, 3600000u, UINT_MAX}) {
        for (const bool flag : {false, true}) {
            BXString s("old");
            s.printTime(time, flag);
            EXPECT_FALSE(s.isNull());
            EXPECT_TRUE(s.isEmpty());
        }
    }
}

TEST(BXSprintfS, FormatsIntoTheBuffer) {
    char buffer[8];
    bxSprintf_s(buffer, sizeof buffer, "%d:%s", 12, "ab");
    EXPECT_STREQ("12:ab", buffer);
}

TEST(BXSprintfS, CutsTheTextToTheSize) {
    char buffer[] = "#########";
    bxSprintf_s(buffer, 5, "%s", "abcdefgh");
    EXPECT_STREQ("abcd", buffer);
    EXPECT_EQ('#', buffer[5]);
    bxSprintf_s(buffer, 1, "%s", "abcdefgh");
    EXPECT_STREQ("", buffer);
}

TEST(BXSprintfS, WritesNothingWithoutABufferOrASize) {
    char buffer[] = "abc";
    bxSprintf_s(buffer, 0, "%d", 1);
    EXPECT_STREQ("abc", buffer);
    bxSprintf_s(buffer, -1, "%d", 1);
    EXPECT_STREQ("abc", buffer);
    bxSprintf_s(nullptr, 4, "%d", 1);
}

TEST(BXSprintfS, TakesANullFormatAsTheEmptyOne) {
    char buffer[] = "abc";
    bxSprintf_s(buffer, 4, nullptr);
    EXPECT_STREQ("", buffer);
}

// Required(R07)
TEST(BXSprintf, LeavesTheBufferUntouched) {
    char buffer[] = "abc";
    char format[] = "%d";
    bxSprintf_s(buffer, sizeof buffer, format, 1);
    EXPECT_STREQ("1", buffer);
    bxSprintf(buffer, format, 2);
    EXPECT_STREQ("1", buffer);
}

TEST(BXStringFormat, WritesAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_STREQ("1.500000 -0.25 1e+10", BXString::format("%f %g %g", 1.5, -0.25, 1e10).c_str());
    EXPECT_STREQ("1234567", BXString::format("%'d", 1234567).c_str());
}

TEST(BXStringPrint, WritesAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    BXString s;
    s.print("%.2f", 3.14159);
    EXPECT_STREQ("3.14", s.c_str());
}

TEST(BXSprintfS, WritesAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    char buffer[16];
    bxSprintf_s(buffer, sizeof buffer, "%.1f", 0.5);
    EXPECT_STREQ("0.5", buffer);
}

// Editing, extraction and conversion.

#include <gtest/gtest.h>

#include <climits>

#include "foundation/bx_string.h"

TEST(BXStringToUpper, MapsAsciiLettersOnly) {
    BXString s("aZ09_\xC3\xA4z");
    EXPECT_EQ(&s, &s.toUpper());
    EXPECT_STREQ("AZ09_\xC3\xA4Z", s.c_str());
}

TEST(BXStringToUpper, LeavesTheNullStringNull) {
    BXString s;
    EXPECT_TRUE(s.toUpper().isNull());
}

// Required(R08)
TEST(BXStringCutTo, RemovesTheHeadAndKeepsTheTail) {
    BXString s("abcdef");
    s.cutTo(3);
    EXPECT_STREQ("def", s.c_str());
    s.cutTo(0);
    EXPECT_STREQ("def", s.c_str());
    s.cutTo(2);
    EXPECT_STREQ("f", s.c_str());
}

TEST(BXStringCutTo, LeavesNothingFromTheLengthOn) {
    for (const int n : {6, 7, INT_MAX}) {
        BXString s("abcdef");
        s.cutTo(n);
        EXPECT_TRUE(s.isNull()) << n;
    }
}

TEST(BXStringCutTo, ChangesNothingBelowOne) {
    for (const int n : {0, -1, INT_MIN}) {
        BXString s("abcdef");
        const char* buffer = s.data();
        s.cutTo(n);
        EXPECT_STREQ("abcdef", s.c_str());
        EXPECT_EQ(buffer, s.data());
    }
}

TEST(BXStringCutTo, LeavesTheNullStringNull) {
    BXString null;
    null.cutTo(1);
    EXPECT_TRUE(null.isNull());
    BXString empty("");
    empty.cutTo(1);
    EXPECT_TRUE(empty.isNull());
}

TEST(BXStringSubString, TakesTheCharactersBeforeTheEnd) {
    const BXString s("abcdef");
    EXPECT_STREQ("bc", s.subString(1, 3).c_str());
    EXPECT_STREQ("abcdef", s.subString(0, 6).c_str());
    EXPECT_STREQ("f", s.subString(5, 6).c_str());
}

TEST(BXStringSubString, GoesToTheEndForMinusOneOrAnEndBeyond) {
    const BXString s("abcdef");
    EXPECT_STREQ("cdef", s.subString(2, -1).c_str());
    EXPECT_STREQ("cdef", s.subString(2, 7).c_str());
    EXPECT_STREQ("cdef", s.subString(2, INT_MAX).c_str());
}

TEST(BXStringSubString, IsNullFromTheLengthOn) {
    const BXString s("abc");
    EXPECT_TRUE(s.subString(3, -1).isNull());
    EXPECT_TRUE(s.subString(4, 9).isNull());
    EXPECT_TRUE(s.subString(INT_MAX, -1).isNull());
    EXPECT_TRUE(BXString().subString(0, -1).isNull());
}

TEST(BXStringSubString, IsNullForAnEmptyOrReversedRange) {
    const BXString s("abc");
    EXPECT_TRUE(s.subString(1, 1).isNull());
    EXPECT_TRUE(s.subString(2, 1).isNull());
    EXPECT_TRUE(s.subString(0, -2).isNull());
    EXPECT_TRUE(s.subString(0, INT_MIN).isNull());
}

TEST(BXStringSubString, TakesANegativeStartAsZero) {
    EXPECT_STREQ("ab", BXString("abc").subString(-1, 2).c_str());
    EXPECT_STREQ("abc", BXString("abc").subString(INT_MIN, -1).c_str());
}

TEST(BXStringUnquoted, DropsOnePairOfQuotes) {
    EXPECT_STREQ("abc", BXString("\"abc\"").unquoted().c_str());
    EXPECT_STREQ("\"abc\"", BXString("\"\"abc\"\"").unquoted().c_str());
}

TEST(BXStringUnquoted, CopiesATextWithoutAPairOfQuotes) {
    EXPECT_STREQ("abc", BXString("abc").unquoted().c_str());
    EXPECT_STREQ("\"abc", BXString("\"abc").unquoted().c_str());
    EXPECT_STREQ("abc\"", BXString("abc\"").unquoted().c_str());
    EXPECT_STREQ("'abc'", BXString("'abc'").unquoted().c_str());
    EXPECT_TRUE(BXString().unquoted().isNull());
    EXPECT_FALSE(BXString("").unquoted().isNull());
}

TEST(BXStringUnquoted, LeavesNothingOfALoneQuoteOrAnEmptyPair) {
    EXPECT_TRUE(BXString("\"").unquoted().isNull());
    EXPECT_TRUE(BXString("\"\"").unquoted().isNull());
}

TEST(BXStringGetFileName, DropsFoldersAndTheLastExtension) {
    EXPECT_STREQ("b.c", BXString("a/b.c.txt").getFileName().c_str());
    EXPECT_STREQ("b", BXString("a\\b").getFileName().c_str());
    EXPECT_STREQ("c", BXString("/a\\b/c.ext").getFileName().c_str());
    EXPECT_STREQ("name", BXString("name.ext").getFileName().c_str());
    EXPECT_STREQ("name", BXString("name").getFileName().c_str());
    EXPECT_STREQ("name", BXString("a/name.").getFileName().c_str());
}

TEST(BXStringGetFileName, IgnoresADotBeforeASeparator) {
    EXPECT_STREQ("c", BXString("/a.b/c").getFileName().c_str());
    EXPECT_STREQ("c", BXString("a.b\\c").getFileName().c_str());
}

TEST(BXStringGetFileName, IsNullWhenNothingIsLeft) {
    EXPECT_TRUE(BXString().getFileName().isNull());
    EXPECT_TRUE(BXString("").getFileName().isNull());
    EXPECT_TRUE(BXString(".txt").getFileName().isNull());
    EXPECT_TRUE(BXString("a/.txt").getFileName().isNull());
    EXPECT_TRUE(BXString("a/").getFileName().isNull());
}

TEST(BXStringConvertToInt, ReadsDigitsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(12, BXString("12").convertToInt());
    EXPECT_EQ(-12, BXString("-12ab").convertToInt());
    EXPECT_EQ(7, BXString("+7.9").convertToInt());
    EXPECT_EQ(8, BXString("0008").convertToInt());
    EXPECT_EQ(INT_MAX, BXString("2147483647").convertToInt());
    EXPECT_EQ(INT_MIN, BXString("-2147483648").convertToInt());
}

TEST(BXStringConvertToInt, IsZeroWithoutADigitAfterTheSign) {
    EXPECT_EQ(0, BXString().convertToInt());
    EXPECT_EQ(0, BXString("").convertToInt());
    EXPECT_EQ(0, BXString("abc").convertToInt());
    EXPECT_EQ(0, BXString("-").convertToInt());
    EXPECT_EQ(0, BXString("+-5").convertToInt());
    EXPECT_EQ(0, BXString("- 5").convertToInt());
}

TEST(BXStringConvertToInt, DoesNotSkipLeadingBlanks) {
    EXPECT_EQ(0, BXString(" 5").convertToInt());
    EXPECT_EQ(0, BXString("\t5").convertToInt());
    EXPECT_EQ(5, BXString("5 ").convertToInt());
}

TEST(BXStringConvertToInt, WrapsBeyondTheRange) {
    EXPECT_EQ(INT_MIN, BXString("2147483648").convertToInt());
    EXPECT_EQ(0, BXString("4294967296").convertToInt());
    EXPECT_EQ(1, BXString("4294967297").convertToInt());
    EXPECT_EQ(INT_MAX, BXString("-2147483649").convertToInt());
}

// Comparison, prefixes and suffixes.

#include <gtest/gtest.h>

#include <climits>

#include "foundation/bx_string.h"

TEST(BXString, IsEqualByText) {
    EXPECT_TRUE(BXString("abc") == BXString("abc"));
    EXPECT_TRUE(BXString("abc") == "abc");
    EXPECT_FALSE(BXString("abc") == "abC");
    EXPECT_TRUE(BXString("abc") != "ab");
    EXPECT_FALSE(BXString("abc") != "abc");
}

TEST(BXString, IsEqualWhetherNullOrAllocatedEmpty) {
    EXPECT_TRUE(BXString() == BXString(""));
    EXPECT_FALSE(BXString() < BXString(""));
    EXPECT_FALSE(BXString("") < BXString());
    EXPECT_TRUE(BXString().equalsNoCase(BXString("")));
}

TEST(BXString, IsEqualWithoutCase) {
    EXPECT_TRUE(BXString("abC").equalsNoCase("ABc"));
    EXPECT_FALSE(BXString("abc").equalsNoCase("abcd"));
    EXPECT_FALSE(BXString("abc").equalsNoCase("abd"));
}

TEST(BXString, OrdersBytewise) {
    EXPECT_TRUE(BXString("ab") < BXString("abc"));
    EXPECT_TRUE(BXString("B") < BXString("a"));
    EXPECT_TRUE(BXString("z") < BXString("\xC3"));
    EXPECT_FALSE(BXString("abc") < BXString("abc"));
}

TEST(BXString, ComparesAsMinusOneZeroAndOne) {
    EXPECT_EQ(0, BXString::cmp("abc", "abc", 0));
    EXPECT_EQ(-1, BXString::cmp("abc", "abz", 0));
    EXPECT_EQ(1, BXString::cmp("abz", "abc", 0));
    EXPECT_EQ(-1, BXString::cmp("ab", "abc", 0));
    EXPECT_EQ(1, BXString::cmp("abc", "ab", 0));
    EXPECT_EQ(1, BXString::cmp("a", "B", 0));
}

TEST(BXString, ComparesAtMostNCharacters) {
    EXPECT_EQ(0, BXString::cmp("abcd", "abxy", 2));
    EXPECT_EQ(-1, BXString::cmp("abcd", "abxy", 3));
    EXPECT_EQ(0, BXString::cmpNoCase("abcd", "ABxy", 2));
    EXPECT_EQ(-1, BXString::cmpNoCase("abcd", "ABxy", 3));
    EXPECT_EQ(0, BXString::cmp("ab", "ab", 9));
}

TEST(BXString, ComparesLongTextsToTheirEnd) {
    BXString a;
    BXString b;
    a.create(150000, 'x');
    b.create(150000, 'x');
    b.data()[149999] = 'y';
    for (const int n : {0, -1, INT_MIN, 150000, INT_MAX}) {
        EXPECT_EQ(-1, BXString::cmp(a.c_str(), b.c_str(), n)) << n;
        EXPECT_EQ(-1, BXString::cmpNoCase(a.c_str(), b.c_str(), n)) << n;
    }
    EXPECT_EQ(0, BXString::cmp(a.c_str(), b.c_str(), 149999));
    EXPECT_EQ(0, BXString::cmpNoCase(a.c_str(), b.c_str(), 149999));
}

TEST(BXString, ComparesWithoutALimitWhenNIsBelowOne) {
    EXPECT_EQ(-1, BXString::cmp("abc", "abd", 0));
    EXPECT_EQ(-1, BXString::cmp("abc", "abd", -1));
    EXPECT_EQ(-1, BXString::cmpNoCase("abc", "ABD", 0));
    EXPECT_EQ(-1, BXString::cmpNoCase("abc", "ABD", -7));
}

TEST(BXString, ComparesWithoutCase) {
    EXPECT_EQ(0, BXString::cmpNoCase("aBc", "AbC", 0));
    EXPECT_EQ(-1, BXString::cmpNoCase("a", "B", 0));
    EXPECT_EQ(1, BXString::cmpNoCase("_", "a", 0));  // '_' lies after 'A'
    EXPECT_EQ(1, BXString::cmpNoCase("abc", "AB", 0));
    EXPECT_EQ(-1, BXString::cmpNoCase("ab", "ABC", 0));
}

TEST(BXString, ComparesANullTextAsAnEmptyOne) {
    for (const auto compare : {BXString::cmp, BXString::cmpNoCase}) {
        EXPECT_EQ(0, compare(nullptr, nullptr, 0));
        EXPECT_EQ(-1, compare(nullptr, "a", 0));
        EXPECT_EQ(0, compare(nullptr, "", 0));
        EXPECT_EQ(1, compare("a", nullptr, 0));
        EXPECT_EQ(0, compare("", nullptr, 0));
        EXPECT_EQ(-1, compare(nullptr, "\xE4", 0));
        EXPECT_EQ(1, compare("\xE4", nullptr, 0));
    }
}

// Required(R18)
TEST(BXString, ComparesSignedWithCaseAndUnsignedWithout) {
    EXPECT_EQ(-1, BXString::cmp("\xE4", "a", 0));
    EXPECT_EQ(1, BXString::cmpNoCase("\xE4", "a", 0));
    EXPECT_EQ(1, BXString::cmp("\x7F", "\x80", 0));
    EXPECT_EQ(-1, BXString::cmpNoCase("\x7F", "\x80", 0));
}

TEST(BXString, FoldsAsciiLettersOnly) {
    for (int byte = 0; byte < 256; ++byte) {
        const int expected = byte >= 'a' && byte <= 'z' ? byte - 32 : byte;
        EXPECT_EQ(expected, BXString::s_toUpper[byte]) << byte;
    }
}

TEST(BXString, StartsWithAPrefix) {
    EXPECT_TRUE(BXString("abcdef").startsWith("abc", false));
    EXPECT_TRUE(BXString("abc").startsWith("abc", false));
    EXPECT_FALSE(BXString("abcdef").startsWith("ABC", false));
    EXPECT_TRUE(BXString("abcdef").startsWith("ABC", true));
    EXPECT_FALSE(BXString("abcdef").startsWith("abd", true));
}

TEST(BXString, EndsWithASuffix) {
    EXPECT_TRUE(BXString("abcdef").endsWith("def", false));
    EXPECT_TRUE(BXString("def").endsWith("def", false));
    EXPECT_FALSE(BXString("abcdef").endsWith("DEF", false));
    EXPECT_TRUE(BXString("abcdef").endsWith("DEF", true));
    EXPECT_FALSE(BXString("abcdef").endsWith("cde", true));
}

TEST(BXString, StartsAndEndsWithNothingLongerThanItself) {
    EXPECT_FALSE(BXString("ab").startsWith("abc", false));
    EXPECT_FALSE(BXString("ab").startsWith("abc", true));
    EXPECT_FALSE(BXString("bc").endsWith("abc", false));
    EXPECT_FALSE(BXString().startsWith("a", true));
    EXPECT_FALSE(BXString().endsWith("a", true));
}

TEST(BXString, StartsAndEndsWithTheEmptyTextEvenWhenEmpty) {
    for (const BXString& s : {BXString(), BXString(""), BXString("abc")}) {
        for (const BXString& empty : {BXString(), BXString("")}) {
            for (const bool ignoreCase : {false, true}) {
                EXPECT_TRUE(s.startsWith(empty, ignoreCase));
                EXPECT_TRUE(s.endsWith(empty, ignoreCase));
            }
        }
    }
}

TEST(BXString, IsInAFolderThatItBeginsWith) {
    EXPECT_TRUE(BXString("/Users/x/a.txt").isInPath("/Users/x"));
    EXPECT_TRUE(BXString("/users/X").isInPath("/Users/x"));
    EXPECT_FALSE(BXString("/Users/y").isInPath("/Users/x"));
    EXPECT_TRUE(BXString("/Users/xyz").isInPath("/Users/x"));  // a prefix, not a folder boundary
}

TEST(BXString, IsInAFolderWhicheverTheSeparators) {
    EXPECT_TRUE(BXString("\\Users\\x\\a").isInPath("/users/x/"));
    EXPECT_TRUE(BXString("/Users/x/a").isInPath("\\users\\x\\"));
}

TEST(BXString, IsInTheEmptyFolder) {
    EXPECT_TRUE(BXString("a").isInPath(BXString()));
    EXPECT_TRUE(BXString("a").isInPath(""));
    EXPECT_TRUE(BXString().isInPath(""));
}

TEST(BXString, IsInNoFolderLongerThanItself) {
    EXPECT_FALSE(BXString("/Users").isInPath("/Users/"));
    EXPECT_FALSE(BXString().isInPath("/"));
}

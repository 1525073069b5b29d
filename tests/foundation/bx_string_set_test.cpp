// Searches for characters of a set, and edits by a set.

#include <gtest/gtest.h>

#include <climits>

#include "foundation/bx_string.h"

TEST(BXStringCharSet, FindsTheFirstCharacterOfTheSet) {
    EXPECT_EQ(1, BXString("a/b\\c").findFirstCharOf("\\/"));
    EXPECT_EQ(0, BXString("abc").findFirstCharOf("cba"));
    EXPECT_EQ(-1, BXString("abc").findFirstCharOf("xyz"));
}

TEST(BXStringCharSet, FindsTheFirstCharacterNotOfTheSet) {
    EXPECT_EQ(2, BXString(" \tab").findFirstCharNotOf(" \t"));
    EXPECT_EQ(-1, BXString(" \t ").findFirstCharNotOf(" \t"));
    EXPECT_EQ(0, BXString("abc").findFirstCharNotOf(""));
}

TEST(BXStringCharSet, FindsTheLastCharacterOfTheSet) {
    EXPECT_EQ(3, BXString("a/b\\c").findLastCharOf("\\/"));
    EXPECT_EQ(0, BXString("abc").findLastCharOf("a"));
    EXPECT_EQ(2, BXString("abc").findLastCharOf("c"));
    EXPECT_EQ(-1, BXString("abc").findLastCharOf("xyz"));
}

TEST(BXStringCharSet, FindsTheLastCharacterNotOfTheSet) {
    EXPECT_EQ(1, BXString("ab \n").findLastCharNotOf(" \n"));
    EXPECT_EQ(0, BXString("a  ").findLastCharNotOf(" "));
    EXPECT_EQ(-1, BXString("   ").findLastCharNotOf(" "));
}

TEST(BXStringCharSet, FindsTheNextCharacterFromTheStartItself) {
    const BXString s("a/b/c");
    EXPECT_EQ(1, s.findNextCharOf("/", 0));
    EXPECT_EQ(1, s.findNextCharOf("/", 1));
    EXPECT_EQ(3, s.findNextCharOf("/", 2));
    EXPECT_EQ(-1, s.findNextCharOf("/", 4));
    EXPECT_EQ(2, s.findNextCharNotOf("/", 1));
    EXPECT_EQ(4, s.findNextCharNotOf("/", 4));
    EXPECT_EQ(-1, BXString("a//").findNextCharNotOf("/", 1));
}

TEST(BXStringCharSet, FindsNoNextCharacterFromTheEndOn) {
    const BXString s("abc");
    EXPECT_EQ(-1, s.findNextCharOf("c", 3));
    EXPECT_EQ(-1, s.findNextCharNotOf("x", 3));
    EXPECT_EQ(-1, s.findNextCharOf("c", INT_MAX));
}

TEST(BXStringCharSet, TakesANegativeStartOfTheNextCharacterAsZero) {
    EXPECT_EQ(0, BXString("abc").findNextCharOf("a", -1));
    EXPECT_EQ(1, BXString("abc").findNextCharNotOf("a", INT_MIN));
}

TEST(BXStringCharSet, FindsThePreviousCharacterBeforeTheStart) {
    const BXString s("a/b/c");
    EXPECT_EQ(3, s.findPrevCharOf("/", 5));
    EXPECT_EQ(3, s.findPrevCharOf("/", 4));
    EXPECT_EQ(1, s.findPrevCharOf("/", 3));
    EXPECT_EQ(0, s.findPrevCharNotOf("/", 2));
    EXPECT_EQ(2, s.findPrevCharNotOf("/", 4));
    EXPECT_EQ(-1, BXString("//a").findPrevCharNotOf("/", 2));
}

// Required(R15)
TEST(BXStringCharSet, NeverExaminesTheStartBackwardsAlthoughFindPrevDoes) {
    const BXString s("ab/");
    EXPECT_EQ(-1, s.findPrevCharOf("/", 2));
    EXPECT_EQ(2, s.findPrevCharOf("/", 3));
    EXPECT_EQ(2, s.findPrev("/", 2, false));
    EXPECT_EQ(1, s.findPrevCharNotOf("/", 2));
}

TEST(BXStringCharSet, FindsNoPreviousCharacterFromAStartBelowOne) {
    EXPECT_EQ(0, BXString("abc").findPrevCharOf("a", 1));
    EXPECT_EQ(-1, BXString("abc").findPrevCharOf("a", 0));
    EXPECT_EQ(-1, BXString("abc").findPrevCharOf("a", -1));
    EXPECT_EQ(-1, BXString("abc").findPrevCharNotOf("x", INT_MIN));
}

TEST(BXStringCharSet, TakesAStartBeyondTheEndAsTheEnd) {
    EXPECT_EQ(2, BXString("abc").findPrevCharOf("c", 4));
    EXPECT_EQ(2, BXString("abc").findPrevCharNotOf("x", INT_MAX));
}

TEST(BXStringCharSet, TellsBytesBeyondAsciiApart) {
    const BXString s("a\xC3\xA4z");
    EXPECT_EQ(1, s.findFirstCharOf("\xC3"));
    EXPECT_EQ(2, s.findLastCharOf("\xA4"));
    EXPECT_EQ(3, s.findLastCharNotOf("\xC3\xA4"));
    EXPECT_EQ(-1, s.findFirstCharOf("\xFF"));
}

TEST(BXStringCharSet, LooksAtTheCase) {
    EXPECT_EQ(2, BXString("aBb").findFirstCharOf("b"));
}

TEST(BXStringCharSet, RemovesTheCharactersOfTheSet) {
    BXString s("a b\tc ");
    s.removeCharsOf(" \t");
    EXPECT_STREQ("abc", s.c_str());
    EXPECT_EQ(3, s.length());
}

TEST(BXStringCharSet, RemovesTheCharactersNotOfTheSet) {
    BXString s("a1b22c");
    s.removeCharsNotOf("0123456789");
    EXPECT_STREQ("122", s.c_str());
}

TEST(BXStringCharSet, RemovesEverythingDownToAnAllocatedEmptyText) {
    BXString s("aaa");
    s.removeCharsOf("a");
    EXPECT_FALSE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
    s = "aaa";
    s.removeCharsNotOf("");
    EXPECT_TRUE(s.isEmpty());
}

TEST(BXStringCharSet, ReplacesTheCharactersOfTheSet) {
    BXString s("a\\b/c");
    s.replaceCharsOf("\\/", ':');
    EXPECT_STREQ("a:b:c", s.c_str());
}

TEST(BXStringCharSet, ReplacesTheCharactersNotOfTheSet) {
    BXString s("a\\b/c");
    s.replaceCharsNotOf("abc", '_');
    EXPECT_STREQ("a_b_c", s.c_str());
}

TEST(BXStringCharSet, EndsTheTextWhereACharacterIsReplacedByNul) {
    BXString s("ab/cd/e");
    s.replaceCharsOf("/", '\0');
    EXPECT_STREQ("ab", s.c_str());
}

TEST(BXStringCharSet, LeavesNullAndEmptyTextsAlone) {
    BXString null;
    null.removeCharsOf("a");
    null.removeCharsNotOf("a");
    null.replaceCharsOf("a", 'b');
    null.replaceCharsNotOf("a", 'b');
    EXPECT_TRUE(null.isNull());
    BXString empty("");
    empty.removeCharsNotOf("a");
    empty.replaceCharsNotOf("a", 'b');
    EXPECT_FALSE(empty.isNull());
    EXPECT_TRUE(empty.isEmpty());
}

TEST(BXStringCharSet, TakesItselfForTheSet) {
    BXString removed("abcab");
    removed.removeCharsOf(removed);
    EXPECT_TRUE(removed.isEmpty());
    BXString replaced("abc");
    replaced.replaceCharsOf(replaced, 'x');
    EXPECT_STREQ("xxx", replaced.c_str());
}

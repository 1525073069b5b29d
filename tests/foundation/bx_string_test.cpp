// Construction, assignment and concatenation, and the two forms of the empty string.

#include "foundation/bx_string.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

TEST(BXString, StartsOutNull) {
    const BXString s;
    EXPECT_TRUE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
    EXPECT_EQ(0, s.length());
    EXPECT_STREQ("", s.c_str());
    EXPECT_EQ(nullptr, s.data());
    EXPECT_EQ('\0', s[0]);
}

TEST(BXString, IsOnePointerWide) {
    EXPECT_EQ(sizeof(void*), sizeof(BXString));
}

TEST(BXString, CopiesTheTextItIsMadeFrom) {
    char text[] = "abc";
    const BXString s(text);
    text[0] = 'x';
    EXPECT_STREQ("abc", s.c_str());
    EXPECT_EQ(3, s.length());
    EXPECT_EQ('c', s[2]);
    EXPECT_EQ('\0', s[3]);
}

TEST(BXString, IsNullWhenMadeFromANullText) {
    EXPECT_TRUE(BXString(static_cast<const char*>(nullptr)).isNull());
}

TEST(BXString, IsAnAllocatedEmptyTextWhenMadeFromAnEmptyText) {
    const BXString s("");
    EXPECT_FALSE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
    EXPECT_EQ(0, s.length());
}

TEST(BXString, KeepsTheFormOfTheStringItIsCopiedFrom) {
    const BXString null;
    const BXString empty("");
    const BXString text("abc");
    EXPECT_TRUE(BXString(null).isNull());
    EXPECT_FALSE(BXString(empty).isNull());
    EXPECT_STREQ("", BXString(empty).c_str());
    EXPECT_STREQ("abc", BXString(text).c_str());
    EXPECT_NE(text.data(), BXString(text).data());
}

TEST(BXString, KeepsTheFormOfTheStringItIsAssigned) {
    const BXString null;
    const BXString empty("");
    BXString s("abc");
    s = empty;
    EXPECT_FALSE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
    s = null;
    EXPECT_TRUE(s.isNull());
}

TEST(BXString, ReturnsItselfFromAnAssignment) {
    BXString s;
    const BXString text("abc");
    EXPECT_EQ(&s, &(s = text));
    EXPECT_STREQ("abc", s.c_str());
    EXPECT_NE(text.data(), s.data());
}

TEST(BXString, KeepsItsTextWhenAssignedToItself) {
    BXString s("abc");
    const BXString& same = s;
    s = same;
    EXPECT_STREQ("abc", s.c_str());
}

TEST(BXString, TakesAPartOfItself) {
    BXString s("abcdef");
    s = s.subString(2, 4);
    EXPECT_STREQ("cd", s.c_str());
}

TEST(BXString, TakesTheTailOfItsOwnText) {
    BXString s("abcdef");
    s = s.c_str() + 4;
    EXPECT_STREQ("ef", s.c_str());
}

TEST(BXString, TakesOverTheBufferWhenMoved) {
    BXString source("abc");
    const char* buffer = source.data();
    BXString made(std::move(source));
    EXPECT_EQ(buffer, made.data());
    EXPECT_TRUE(source.isNull());

    BXString assigned("old");
    assigned = std::move(made);
    EXPECT_EQ(buffer, assigned.data());
    EXPECT_TRUE(made.isNull());
}

TEST(BXString, KeepsItsTextWhenMovedToItself) {
    BXString s("abc");
    BXString& same = s;
    s = std::move(same);
    EXPECT_STREQ("abc", s.c_str());
}

TEST(BXString, SwapsTheBuffers) {
    BXString a("abc");
    BXString b;
    a.swap(b);
    EXPECT_TRUE(a.isNull());
    EXPECT_STREQ("abc", b.c_str());
}

TEST(BXString, CreatesCopiesOfACharacter) {
    BXString s("old");
    s.create(3, 'x');
    EXPECT_STREQ("xxx", s.c_str());
}

TEST(BXString, CreatesTheNullStringFromNoCharacters) {
    BXString s("old");
    s.create(0, 'x');
    EXPECT_TRUE(s.isNull());
    s = "old";
    s.create(-5, 'x');
    EXPECT_TRUE(s.isNull());
}

TEST(BXString, CreatesFromARangeOfText) {
    const char text[] = "abcdef";
    BXString s("old");
    s.create(text + 1, text + 4);
    EXPECT_STREQ("bcd", s.c_str());
}

TEST(BXString, CreatesFromARangeOfItself) {
    BXString s("abcdef");
    s.create(s.data() + 1, s.data() + 4);
    EXPECT_STREQ("bcd", s.c_str());
}

TEST(BXString, CreatesTheNullStringFromNoRange) {
    const char text[] = "abcdef";
    BXString s("old");
    s.create(nullptr, text);
    EXPECT_TRUE(s.isNull());
    s = "old";
    s.create(text + 2, text + 2);
    EXPECT_TRUE(s.isNull());
    s = "old";
    s.create(text + 2, text + 1);
    EXPECT_TRUE(s.isNull());
}

TEST(BXString, SharesOneEmptyString) {
    EXPECT_TRUE(BXString::emptyString().isNull());
    EXPECT_EQ(&BXString::emptyString(), &BXString::emptyString());
}

TEST(BXString, Concatenates) {
    const BXString ab("ab");
    const BXString cd("cd");
    EXPECT_STREQ("abcd", (ab + cd).c_str());
    EXPECT_STREQ("abab", (ab + ab).c_str());
    EXPECT_STREQ("ab", ab.c_str());
}

TEST(BXString, ConcatenatesToACopyOfTheOtherSideWhenThisSideIsEmpty) {
    const BXString null;
    const BXString empty("");
    EXPECT_STREQ("cd", (null + BXString("cd")).c_str());
    EXPECT_STREQ("cd", (empty + BXString("cd")).c_str());
    EXPECT_TRUE((empty + null).isNull());
    EXPECT_FALSE((null + empty).isNull());
}

TEST(BXString, ConcatenatesToACopyOfThisSideWhenTheOtherIsEmpty) {
    EXPECT_STREQ("ab", (BXString("ab") + BXString()).c_str());
    EXPECT_STREQ("ab", (BXString("ab") + BXString("")).c_str());
}

TEST(BXString, ConcatenatesToACText) {
    EXPECT_STREQ("abcd", ("ab" + BXString("cd")).c_str());
    EXPECT_STREQ("cd", ("" + BXString("cd")).c_str());
    EXPECT_STREQ("ab", ("ab" + BXString()).c_str());
    EXPECT_TRUE(("" + BXString()).isNull());
    EXPECT_STREQ("cd", (static_cast<const char*>(nullptr) + BXString("cd")).c_str());
}

TEST(BXString, Appends) {
    BXString s;
    EXPECT_EQ(&s, &(s += "ab"));
    s += BXString("cd");
    s += BXString();
    s += BXString("");
    EXPECT_STREQ("abcd", s.c_str());
}

TEST(BXString, AppendsItself) {
    BXString s("abc");
    s += s;
    EXPECT_STREQ("abcabc", s.c_str());
}

TEST(BXString, AppendsToAnEmptyTextAsConcatenationDoes) {
    BXString nullThenEmpty;
    nullThenEmpty += BXString("");
    EXPECT_FALSE(nullThenEmpty.isNull());
    BXString emptyThenNull("");
    emptyThenNull += BXString();
    EXPECT_TRUE(emptyThenNull.isNull());
}

TEST(BXString, PrintsToAStream) {
    std::ostringstream out;
    out << BXString("abc") << BXString();
    EXPECT_EQ("abc", out.str());
}

TEST(BXString, BehavesAlikeWhetherNullOrAllocatedEmpty) {
    const BXString a("a");
    for (const BXString& s : {BXString(), BXString("")}) {
        EXPECT_EQ(0, s.length());
        for (const bool ignoreCase : {false, true}) {
            EXPECT_FALSE(s.startsWith(a, ignoreCase));
            EXPECT_FALSE(s.endsWith(a, ignoreCase));
            EXPECT_EQ(-1, s.findFirst(a, ignoreCase));
            EXPECT_EQ(-1, s.findFirst("", ignoreCase));
            EXPECT_EQ(-1, s.findFirst(BXString(), ignoreCase));
            EXPECT_EQ(-1, s.findNext(a, 0, ignoreCase));
            EXPECT_EQ(-1, s.findLast(a, ignoreCase));
            EXPECT_EQ(-1, s.findPrev(a, 1, ignoreCase));
        }
        EXPECT_FALSE(s.isInPath(a));
        EXPECT_TRUE(s.isInPath(BXString()));
        EXPECT_TRUE(s.isInPath(""));
        EXPECT_EQ(0, s.convertToInt());
        EXPECT_TRUE(s.getFileName().isNull());
        EXPECT_TRUE(s.subString(0, -1).isNull());
        EXPECT_TRUE(s.unquoted().isEmpty());
    }
}

TEST(BXString, IsSearchedForCharactersAlikeWhetherNullOrAllocatedEmpty) {
    const BXString sets[] = {BXString("a"), BXString(""), BXString()};
    for (const BXString& s : {BXString(), BXString("")}) {
        for (const BXString& set : sets) {
            EXPECT_EQ(-1, s.findFirstCharOf(set));
            EXPECT_EQ(-1, s.findFirstCharNotOf(set));
            EXPECT_EQ(-1, s.findLastCharOf(set));
            EXPECT_EQ(-1, s.findLastCharNotOf(set));
            EXPECT_EQ(-1, s.findNextCharOf(set, 0));
            EXPECT_EQ(-1, s.findNextCharNotOf(set, 0));
            EXPECT_EQ(-1, s.findPrevCharOf(set, 1));
            EXPECT_EQ(-1, s.findPrevCharNotOf(set, 1));
        }
    }
}

TEST(BXString, IsSearchedForANullPatternAsForAnAllocatedEmptyOne) {
    const BXString text("abc");
    for (const BXString& pattern : {BXString(), BXString("")}) {
        for (const bool ignoreCase : {false, true}) {
            EXPECT_EQ(0, text.findFirst(pattern, ignoreCase));
            EXPECT_EQ(-1, text.findNext(pattern, 0, ignoreCase));
            EXPECT_EQ(-1, text.findLast(pattern, ignoreCase));
            EXPECT_EQ(-1, text.findPrev(pattern, 1, ignoreCase));
        }
    }
}

TEST(BXString, TakesANullSetAsTheAllocatedEmptyOne) {
    for (const BXString& set : {BXString(), BXString("")}) {
        const BXString text("abc");
        EXPECT_EQ(-1, text.findFirstCharOf(set));
        EXPECT_EQ(0, text.findFirstCharNotOf(set));
        EXPECT_EQ(-1, text.findLastCharOf(set));
        EXPECT_EQ(2, text.findLastCharNotOf(set));
        EXPECT_EQ(-1, text.findNextCharOf(set, 0));
        EXPECT_EQ(1, text.findNextCharNotOf(set, 1));
        EXPECT_EQ(-1, text.findPrevCharOf(set, 3));
        EXPECT_EQ(1, text.findPrevCharNotOf(set, 2));
        BXString edited("abc");
        edited.removeCharsOf(set);
        edited.replaceCharsOf(set, 'x');
        EXPECT_STREQ("abc", edited.c_str());
        edited.replaceCharsNotOf(set, 'x');
        EXPECT_STREQ("xxx", edited.c_str());
        edited.removeCharsNotOf(set);
        EXPECT_STREQ("", edited.c_str());
    }
}

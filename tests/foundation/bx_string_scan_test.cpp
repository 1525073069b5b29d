// The substring searches and the search for tags.

#include <gtest/gtest.h>

#include <climits>

#include "foundation/bx_string.h"

TEST(BXStringFindFirst, FindsTheFirstMatch) {
    EXPECT_EQ(0, BXString("abcab").findFirst("ab", false));
    EXPECT_EQ(2, BXString("abcab").findFirst("c", false));
    EXPECT_EQ(3, BXString("xyzab").findFirst("ab", false));
    EXPECT_EQ(-1, BXString("abcab").findFirst("ac", false));
}

TEST(BXStringFindFirst, FindsATextEqualToItsPattern) {
    EXPECT_EQ(0, BXString("ab").findFirst("ab", false));
    EXPECT_EQ(0, BXString("aB").findFirst("Ab", true));
}

TEST(BXStringFindFirst, FindsAMatchThatOverlapsAFailedPartialOne) {
    EXPECT_EQ(1, BXString("aaab").findFirst("aab", false));
    EXPECT_EQ(1, BXString("AaAb").findFirst("aab", true));
}

TEST(BXStringFindFirst, LooksAtTheCaseUnlessToldNotTo) {
    EXPECT_EQ(-1, BXString("xAB").findFirst("ab", false));
    EXPECT_EQ(1, BXString("xAB").findFirst("ab", true));
    EXPECT_EQ(-1, BXString("x\xC4").findFirst("\xE4", true));  // no ASCII letters
}

TEST(BXStringFindFirst, FindsNothingInAnEmptyOrShorterText) {
    EXPECT_EQ(-1, BXString("").findFirst("a", false));
    EXPECT_EQ(-1, BXString().findFirst("", false));
    EXPECT_EQ(-1, BXString("a").findFirst("ab", false));
    EXPECT_EQ(-1, BXString("a").findFirst("ab", true));
}

// Required(R16)
TEST(BXStringFindFirst, AloneFindsAnEmptyPattern) {
    const BXString s("abc");
    const BXString empty("");
    EXPECT_EQ(0, s.findFirst(empty, false));
    EXPECT_EQ(0, s.findFirst(empty, true));
    EXPECT_EQ(-1, s.findNext(empty, 0, false));
    EXPECT_EQ(-1, s.findLast(empty, false));
    EXPECT_EQ(-1, s.findPrev(empty, 2, false));
}

TEST(BXStringFindNext, FindsAMatchAtOrAfterTheStart) {
    const BXString s("abcabcxx");
    EXPECT_EQ(0, s.findNext("abc", 0, false));
    EXPECT_EQ(3, s.findNext("abc", 1, false));
    EXPECT_EQ(3, s.findNext("abc", 3, false));
    EXPECT_EQ(-1, s.findNext("abc", 4, false));
}

TEST(BXStringFindNext, FindsASingleCharacterAnywhere) {
    const BXString s("abc");
    EXPECT_EQ(0, s.findNext("a", 0, false));
    EXPECT_EQ(2, s.findNext("c", 0, false));
    EXPECT_EQ(2, s.findNext("c", 2, false));
    EXPECT_EQ(0, BXString("a").findNext("a", 0, false));
}

TEST(BXStringFindNext, FindsNothingAtTheEndButASingleCharacter) {
    EXPECT_EQ(-1, BXString("xab").findNext("ab", 0, false));
    EXPECT_EQ(2, BXString("xab").findNext("b", 0, false));
}

// Required(R01)
TEST(BXStringFindNext, MissesAMatchThatIsNotCompleteByTheLastStart) {
    EXPECT_EQ(0, BXString("abxx").findNext("ab", 0, false));
    EXPECT_EQ(0, BXString("abx").findNext("ab", 0, false));
    EXPECT_EQ(-1, BXString("ab").findNext("ab", 0, false));
    EXPECT_EQ(1, BXString("xabx").findNext("ab", 0, false));
    EXPECT_EQ(-1, BXString("xxab").findNext("ab", 0, false));
}

// Required(R01)
TEST(BXStringFindNext, MissesAMatchThatOverlapsAFailedPartialOne) {
    EXPECT_EQ(-1, BXString("aaabxxxx").findNext("aab", 0, false));
    EXPECT_EQ(1, BXString("aaabxxxx").findNext("aab", 1, false));
    EXPECT_EQ(0, BXString("aabxxxxx").findNext("aab", 0, false));
    EXPECT_EQ(1, BXString("aabxxxx").findNext("ab", 0, false));  // restarts at the second 'a'
}

// Required(R04)
TEST(BXStringFindNext, RestartsByCaseEvenWhenItIgnoresCase) {
    EXPECT_EQ(1, BXString("aabxxx").findNext("ab", 0, true));
    EXPECT_EQ(-1, BXString("aAbxxx").findNext("ab", 0, true));
    EXPECT_EQ(1, BXString("aABxxx").findNext("AB", 0, true));
}

TEST(BXStringFindNext, LooksAtTheCaseUnlessToldNotTo) {
    EXPECT_EQ(-1, BXString("xABxx").findNext("ab", 0, false));
    EXPECT_EQ(1, BXString("xABxx").findNext("ab", 0, true));
}

TEST(BXStringFindNext, FindsNothingFromBeyondTheLastPlaceForAMatch) {
    EXPECT_EQ(-1, BXString("abab").findNext("ab", 3, false));
    EXPECT_EQ(-1, BXString("abc").findNext("a", 3, false));
    EXPECT_EQ(-1, BXString("abc").findNext("a", INT_MAX, false));
    EXPECT_EQ(-1, BXString("a").findNext("ab", 0, false));
}

TEST(BXStringFindNext, TakesANegativeStartAsZero) {
    EXPECT_EQ(0, BXString("abxx").findNext("ab", -1, false));
    EXPECT_EQ(0, BXString("abxx").findNext("ab", INT_MIN, false));
}

TEST(BXStringFindLast, FindsTheLastMatch) {
    EXPECT_EQ(3, BXString("abcab").findLast("ab", false));
    EXPECT_EQ(4, BXString("a/b/c").findLast("c", false));
    EXPECT_EQ(3, BXString("a/b/c").findLast("/", false));
    EXPECT_EQ(-1, BXString("a/b/c").findLast("x", false));
}

// Required(R02)
TEST(BXStringFindLast, MissesAMatchThatBeginsBeforeTheLengthOfThePattern) {
    EXPECT_EQ(-1, BXString("abc").findLast("a", false));
    EXPECT_EQ(1, BXString("xabc").findLast("a", false));
    EXPECT_EQ(-1, BXString("ab").findLast("ab", false));
    EXPECT_EQ(-1, BXString("xabx").findLast("ab", false));
    EXPECT_EQ(2, BXString("xxab").findLast("ab", false));
}

// Required(R02)
TEST(BXStringFindLast, MissesAMatchThatOverlapsAFailedPartialOne) {
    // The third 'b' from the right fails for 'a' and is taken for the last letter of a new match.
    EXPECT_EQ(-1, BXString("xxxabbb").findLast("abb", false));
    EXPECT_EQ(3, BXString("xxxabb").findLast("abb", false));
    EXPECT_EQ(3, BXString("xxxabb").findLast("ab", false));  // restarts at the first 'b'
}

// Required(R04)
TEST(BXStringFindLast, RestartsByCaseEvenWhenItIgnoresCase) {
    EXPECT_EQ(2, BXString("xxabb").findLast("ab", true));
    EXPECT_EQ(-1, BXString("xxaBb").findLast("ab", true));
}

TEST(BXStringFindLast, LooksAtTheCaseUnlessToldNotTo) {
    EXPECT_EQ(-1, BXString("xxAB").findLast("ab", false));
    EXPECT_EQ(2, BXString("xxAB").findLast("ab", true));
}

TEST(BXStringFindLast, FindsNothingLongerThanTheText) {
    EXPECT_EQ(-1, BXString("ab").findLast("abc", false));
    EXPECT_EQ(-1, BXString().findLast("a", false));
}

TEST(BXStringFindPrev, FindsTheLastMatchAtOrBeforeTheStart) {
    const BXString s("abcabcab");
    EXPECT_EQ(6, s.findPrev("ab", 6, false));
    EXPECT_EQ(3, s.findPrev("ab", 5, false));
    EXPECT_EQ(3, s.findPrev("ab", 3, false));
    EXPECT_EQ(0, s.findPrev("ab", 2, false));
    EXPECT_EQ(-1, s.findPrev("xb", 6, false));
}

TEST(BXStringFindPrev, ReachesIndexZeroUnlikeFindLast) {
    EXPECT_EQ(0, BXString("abc").findPrev("a", 2, false));
    EXPECT_EQ(0, BXString("ab").findPrev("ab", 1, false));
    EXPECT_EQ(-1, BXString("ab").findLast("ab", false));
}

// Required(R03)
TEST(BXStringFindPrev, FindsNothingFromAStartOfZero) {
    EXPECT_EQ(0, BXString("abc").findPrev("a", 1, false));
    EXPECT_EQ(-1, BXString("abc").findPrev("a", 0, false));
    EXPECT_EQ(-1, BXString("abc").findPrev("a", -1, false));
    EXPECT_EQ(-1, BXString("abc").findPrev("a", INT_MIN, false));
}

// Required(R03)
TEST(BXStringFindPrev, MissesAMatchThatOverlapsAFailedPartialOne) {
    EXPECT_EQ(1, BXString("xabbbx").findPrev("abb", 1, false));
    EXPECT_EQ(-1, BXString("xabbbx").findPrev("abb", 2, false));
    EXPECT_EQ(1, BXString("xabbxx").findPrev("abb", 2, false));
}

// Required(R04)
TEST(BXStringFindPrev, RestartsByCaseEvenWhenItIgnoresCase) {
    EXPECT_EQ(0, BXString("abbx").findPrev("ab", 1, true));
    EXPECT_EQ(-1, BXString("aBbx").findPrev("ab", 1, true));
}

TEST(BXStringFindPrev, TakesAStartBeyondTheEndAsTheEnd) {
    EXPECT_EQ(3, BXString("abcab").findPrev("ab", 4, false));
    EXPECT_EQ(3, BXString("abcab").findPrev("ab", 5, false));
    EXPECT_EQ(3, BXString("abcab").findPrev("ab", INT_MAX, false));
    EXPECT_EQ(2, BXString("abc").findPrev("c", INT_MAX, false));
}

TEST(BXStringFindPrev, LooksAtTheCaseUnlessToldNotTo) {
    EXPECT_EQ(-1, BXString("xABx").findPrev("ab", 2, false));
    EXPECT_EQ(1, BXString("xABx").findPrev("ab", 2, true));
}

TEST(BXStringFindPrev, FindsNothingLongerThanTheText) {
    EXPECT_EQ(-1, BXString("ab").findPrev("abc", 1, false));
    EXPECT_EQ(-1, BXString().findPrev("a", 1, false));
}

namespace {

// What findFirstTag makes of "[from, to)".
struct TagResult {
    bool found;
    int from;
    int to;
    bool operator==(const TagResult& other) const {
        return found == other.found && from == other.from && to == other.to;
    }
};

std::ostream& operator<<(std::ostream& out, const TagResult& result) {
    return out << (result.found ? "found " : "not found ") << result.from << " " << result.to;
}

TagResult findTag(const BXString& text, const BXString& open, const BXString& close, int from,
                  int to, bool ignoreCase = false) {
    TagResult result{false, from, to};
    result.found = text.findFirstTag(open, close, result.from, result.to, ignoreCase);
    return result;
}

}  // namespace

TEST(BXStringFindFirstTag, FindsTheTextBetweenTheTags) {
    //                                0123456789012
    EXPECT_EQ((TagResult{true, 4, 7}), findTag("x<b>abc</b>yyyy", "<b>", "</b>", 0, 15));
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("(ab)", "(", ")", 0, 4));
}

TEST(BXStringFindFirstTag, FindsAnEmptyTextBetweenTheTags) {
    EXPECT_EQ((TagResult{true, 1, 1}), findTag("()x", "(", ")", 0, 3));
}

TEST(BXStringFindFirstTag, BringsTheRangeIntoTheText) {
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("(ab)", "(", ")", -5, 4));
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("(ab)", "(", ")", INT_MIN, INT_MAX));
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("(ab)", "(", ")", 0, 100));
}

TEST(BXStringFindFirstTag, LooksAtTheCaseUnlessToldNotTo) {
    EXPECT_EQ((TagResult{false, -1, 4}), findTag("XabYzz", "x", "y", 0, 4));
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("XabYzz", "x", "y", 0, 4, true));
}

TEST(BXStringFindFirstTag, RejectsEmptyTextsAndTagsWithoutATouch) {
    for (const BXString& empty : {BXString(), BXString("")}) {
        for (const bool ignoreCase : {false, true}) {
            EXPECT_EQ((TagResult{false, -2, 9}), findTag(empty, "(", ")", -2, 9, ignoreCase));
            EXPECT_EQ((TagResult{false, -2, 9}), findTag("(a)", empty, ")", -2, 9, ignoreCase));
            EXPECT_EQ((TagResult{false, -2, 9}), findTag("(a)", "(", empty, -2, 9, ignoreCase));
        }
    }
}

TEST(BXStringFindFirstTag, RejectsAStartBeyondTheTextWithoutATouch) {
    EXPECT_EQ((TagResult{false, 4, 9}), findTag("(ab)", "(", ")", 4, 9));
}

TEST(BXStringFindFirstTag, RejectsAnEmptyRange) {
    EXPECT_EQ((TagResult{false, 2, 2}), findTag("(ab)", "(", ")", 2, 2));
    EXPECT_EQ((TagResult{false, 2, 1}), findTag("(ab)", "(", ")", 2, 1));
    EXPECT_EQ((TagResult{false, 0, 0}), findTag("(ab)", "(", ")", -1, 0));
}

// Required(R12)
TEST(BXStringFindFirstTag, LeavesWhatItWroteBehindWhenItFails) {
    // No opening tag: from is -1, to is cut to the length.
    EXPECT_EQ((TagResult{false, -1, 4}), findTag("abcd", "(", ")", 0, 9));
    // Nothing between the opening tag and the end of the range.
    EXPECT_EQ((TagResult{false, 1, 1}), findTag("(ab)", "(", ")", 0, 1));
    // No closing tag.
    EXPECT_EQ((TagResult{false, 1, 4}), findTag("(abc", "(", ")", 0, 9));
    // The closing tag ends beyond the range; one index further it is inside.
    EXPECT_EQ((TagResult{false, 1, 3}), findTag("(ab)", "(", ")", 0, 3));
    EXPECT_EQ((TagResult{true, 1, 3}), findTag("(ab)", "(", ")", 0, 4));
}

TEST(BXStringFindFirstTag, MissesAClosingTagAtTheEndAsFindNextDoes) {
    EXPECT_EQ((TagResult{false, 3, 10}), findTag("<b>abc</b>", "<b>", "</b>", 0, 10));
}

// Required(R05)
TEST(BXStringFindLastTag, FindsNothingAndTouchesNothing) {
    const BXString s("(ab)xxxx");
    int from = 0;
    int to = 8;
    EXPECT_TRUE(s.findFirstTag("(", ")", from, to, false));
    from = -7;
    to = 99;
    EXPECT_FALSE(s.findLastTag("(", ")", from, to, false));
    EXPECT_FALSE(s.findLastTag("(", ")", from, to, true));
    EXPECT_EQ(-7, from);
    EXPECT_EQ(99, to);
}

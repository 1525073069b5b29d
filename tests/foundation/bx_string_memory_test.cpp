// How BXString takes and gives back memory.

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <utility>

#include "foundation/bx_string.h"
#include "tests/support/allocation_record.h"

namespace {

using Sizes = AllocationRecord::Sizes;

}  // namespace

TEST(BXStringMemory, TakesOneBufferOfLengthPlusOneForEachNewText) {
    const BXString abc("abc");
    BXString s("old");
    AllocationRecord record;
    s = abc;
    s = BXString("abcd");
    s.create(5, 'x');
    s.create(abc.data(), abc.data() + 2);
    s.cutTo(1);
    EXPECT_EQ((Sizes{4, 5, 6, 3, 2}), record.stop());
}

TEST(BXStringMemory, TakesOneExactBufferForAConcatenation) {
    const BXString abc("abc");
    BXString s("12345");
    AllocationRecord record;
    { const BXString sum = abc + s; }
    { const BXString sum = "ab" + abc; }
    s += abc;
    EXPECT_EQ((Sizes{9, 6, 9}), record.stop());
}

TEST(BXStringMemory, TakesOneExactBufferForAPart) {
    const BXString s("\"/a/bcd.e\"");
    AllocationRecord record;
    { const BXString part = s.subString(2, 4); }
    { const BXString part = s.unquoted(); }
    { const BXString part = s.getFileName(); }
    EXPECT_EQ((Sizes{3, 9, 4}), record.stop());
}

TEST(BXStringMemory, TakesOneExactBufferForAFormattedText) {
    BXString s;
    AllocationRecord record;
    s.print("%d", 123);
    EXPECT_EQ((Sizes{3, 4}), record.stop());  // the format's copy, then the text
}

TEST(BXStringMemory, TakesOneExactBufferForAPrintedNumber) {
    BXString s;
    AllocationRecord record;
    s.printShortCount(12399);
    s.printTime(1, true);
    s = BXString::int2String(-12);
    s = BXString::format("%s!", "abcd");
    // In pairs: a copy of the format, then the text.
    EXPECT_EQ((Sizes{7, 6, 1, 3, 4, 4, 6}), record.stop());
    EXPECT_STREQ("abcd!", s.c_str());
}

TEST(BXStringMemory, TakesOneExactBufferForAFileNameThatGrows) {
    BXString s("a9.x");
    BXString null;
    AllocationRecord record;
    s.fileNameAdvance();
    null.fileNameAdvance();
    EXPECT_EQ((Sizes{6, 2}), record.stop());
    EXPECT_STREQ("a10.x", s.c_str());
}

TEST(BXStringMemory, TakesOneByteForAnAllocatedEmptyTextAndNoneForNull) {
    AllocationRecord record;
    { const BXString null; }
    { const BXString empty(""); }
    EXPECT_EQ(1, record.releases());
    EXPECT_EQ((Sizes{1}), record.stop());
}

TEST(BXStringMemory, GivesBackAsManyBuffersAsItTakes) {
    AllocationRecord record;
    {
        BXString s("abc");
        BXString other("de");
        s += other;
        s = other;
        s = std::move(other);
        s.fileNameAdvance();
        s.print("%d", 7);
        s.create(3, 'x');
        s.create(s.data(), s.data() + 2);
        s.cutTo(1);
    }
    const Sizes sizes = record.stop();
    EXPECT_EQ(sizes.size(), static_cast<std::size_t>(record.releases()));
    EXPECT_GE(sizes.size(), 9u);
}

TEST(BXStringMemory, TakesNoneForSearchesTestsAndComparisons) {
    const BXString s("abc/def.abc");
    const BXString pat("abc");
    AllocationRecord record;
    s.findFirst(pat, true);
    s.findNext(pat, 0, true);
    s.findLast(pat, true);
    s.findPrev(pat, 11, true);
    s.findFirstCharOf(pat);
    s.findPrevCharNotOf(pat, 11);
    s.startsWith(pat, true);
    s.endsWith(pat, true);
    s.isInPath(pat);
    s.equalsNoCase(pat);
    s.convertToInt();
    s.getValidFilePath();
    int from = 0;
    int to = 11;
    s.findFirstTag(pat, pat, from, to, true);
    EXPECT_EQ(Sizes{}, record.stop());
}

TEST(BXStringMemory, TakesNoneForAMove) {
    BXString s("abc");
    AllocationRecord record;
    BXString taken(std::move(s));
    s = std::move(taken);
    s.swap(taken);
    EXPECT_EQ(Sizes{}, record.stop());
}

TEST(BXStringMemory, KeepsTheBufferWhereItWorksInPlace) {
    BXString s("file:ab19.txt/");
    const char* const buffer = s.data();
    AllocationRecord record;
    s.makePathValid();
    const BXString* const self = &s.toUpper();
    s.cutTo(0);
    EXPECT_EQ(Sizes{}, record.stop());
    EXPECT_EQ(&s, self);
    EXPECT_STREQ("AB19.TXT", s.c_str());

    s.fileNameAdvance();
    const BXString set("A");
    s.removeCharsOf(set);
    s.replaceCharsOf(set, 'b');
    EXPECT_EQ(buffer, s.data());
    EXPECT_STREQ("B20.TXT", s.c_str());
}

TEST(BXStringMemory, CopiesBeforeItFreesTheOldBuffer) {
    BXString s("abc");
    const BXString& same = s;
    const char* const old = s.data();
    s = same;
    // Both buffers were alive at the same time, so they lie at different places.
    EXPECT_NE(old, s.data());
    EXPECT_STREQ("abc", s.c_str());
}

TEST(BXStringMemory, RejectsATextThatNoIndexReachesTheEndOf) {
    BXString s("abc");
    EXPECT_THROW(s.create(INT_MAX, 'x'), std::bad_alloc);
    EXPECT_STREQ("abc", s.c_str());
}

TEST(BXStringMemory, CountsTheObjectAsOnePointer) {
    EXPECT_EQ(sizeof(void*), BXString().getMemoryUsed());
    EXPECT_EQ(sizeof(void*), BXString("abc").getMemoryUsed());
}

TEST(BXStringMemory, CountsTheBufferWithItsNul) {
    EXPECT_EQ(0u, BXString().getDynMemoryUsed());
    EXPECT_EQ(1u, BXString("").getDynMemoryUsed());
    EXPECT_EQ(4u, BXString("abc").getDynMemoryUsed());
}

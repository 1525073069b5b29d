// How BXString takes and gives back memory. The program's own array allocation functions record
// the sizes that are asked for.

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

#include "foundation/bx_string.h"

namespace {

// Plain arrays: the recording must not allocate itself.
constexpr int kMostRecords = 16;
bool recording = false;
std::size_t allocated[kMostRecords];
int allocations = 0;
int releases = 0;

// Records from its making to its stop, which returns the sizes asked for.
class AllocationRecord {
public:
    AllocationRecord() {
        allocations = 0;
        releases = 0;
        recording = true;
    }
    ~AllocationRecord() { recording = false; }

    std::vector<std::size_t> stop() {
        recording = false;
        return std::vector<std::size_t>(allocated, allocated + allocations);
    }
};

using Sizes = std::vector<std::size_t>;

}  // namespace

void* operator new[](std::size_t size) {
    if (recording && allocations < kMostRecords) allocated[allocations++] = size;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

void operator delete[](void* memory) noexcept {
    if (recording && memory) ++releases;
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    operator delete[](memory);
}

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

TEST(BXStringMemory, TakesOneByteForAnAllocatedEmptyTextAndNoneForNull) {
    AllocationRecord record;
    { const BXString null; }
    { const BXString empty(""); }
    EXPECT_EQ(1, releases);
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
    }
    const Sizes sizes = record.stop();
    EXPECT_EQ(sizes.size(), static_cast<std::size_t>(releases));
    EXPECT_GE(sizes.size(), 6u);
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
    BXString s("a1.txt");
    const char* const buffer = s.data();
    AllocationRecord record;
    s.toUpper();
    s.fileNameAdvance();
    const BXString* const self = &s.toUpper();
    s.cutTo(0);
    s.makePathValid();
    EXPECT_EQ(Sizes{}, record.stop());
    EXPECT_EQ(&s, self);
    EXPECT_EQ(buffer, s.data());

    const BXString set("A");
    s.removeCharsOf(set);
    s.replaceCharsOf(set, 'b');
    EXPECT_EQ(buffer, s.data());
    EXPECT_STREQ("2.TXT", s.c_str());
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

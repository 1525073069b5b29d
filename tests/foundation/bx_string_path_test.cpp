// What BXString does to paths and file names.

#include <gtest/gtest.h>

#include "foundation/bx_string.h"

namespace {

BXString madeValid(const char* path) {
    BXString s(path);
    s.makePathValid();
    return s;
}

BXString advanced(const char* name) {
    BXString s(name);
    s.fileNameAdvance();
    return s;
}

}  // namespace

TEST(BXStringMakePathValid, DropsTheFilePrefixAndOneTrailingSeparator) {
    EXPECT_STREQ("///Users/x", madeValid("file:///Users/x/").c_str());
    EXPECT_STREQ("/Users/x/", madeValid("/Users/x//").c_str());
    EXPECT_STREQ("/Users/x", madeValid("/Users/x\\").c_str());
}

TEST(BXStringMakePathValid, IgnoresTheCaseOfTheFilePrefix) {
    EXPECT_STREQ("/a", madeValid("FILE:/a").c_str());
    EXPECT_STREQ("/a", madeValid("File:/a").c_str());
    EXPECT_STREQ("fil:/a", madeValid("fil:/a").c_str());
}

TEST(BXStringMakePathValid, DropsTheBangPrefix) {
    EXPECT_STREQ("/a", madeValid("!:/a").c_str());
    EXPECT_STREQ("!/a", madeValid("!/a").c_str());
}

TEST(BXStringMakePathValid, DropsOnePrefixOnly) {
    EXPECT_STREQ("file:/a", madeValid("!:file:/a").c_str());
    EXPECT_STREQ("!:/a", madeValid("file:!:/a").c_str());
    EXPECT_STREQ("file:a", madeValid("file:file:a").c_str());
}

TEST(BXStringMakePathValid, LeavesEverythingElseAsItIs) {
    EXPECT_STREQ("C:\\a b//c?*", madeValid("C:\\a b//c?*").c_str());
    EXPECT_STREQ(" /a", madeValid(" /a").c_str());
    EXPECT_TRUE(madeValid("").isEmpty());
    EXPECT_TRUE(madeValid(nullptr).isNull());
}

TEST(BXStringMakePathValid, CanLeaveAnAllocatedEmptyText) {
    for (const char* const path : {"/", "\\", "file:", "file:/", "!:", "!:\\"}) {
        const BXString left = madeValid(path);
        EXPECT_TRUE(left.isEmpty()) << path;
        EXPECT_FALSE(left.isNull()) << path;
    }
    EXPECT_FALSE(madeValid("").isNull());
}

TEST(BXStringMakePathValid, DropsNoSeparatorThatThePrefixHeld) {
    EXPECT_STREQ("a", madeValid("!:a").c_str());
    EXPECT_STREQ("!:", madeValid("!:!:").c_str());
    EXPECT_STREQ("/", madeValid("!://").c_str());
}

TEST(BXStringGetValidFilePath, BeginsAtTheFirstSlashAfterTheFirstColon) {
    EXPECT_STREQ("/Users/a", BXString("Disk:/Users/a").getValidFilePath());
    EXPECT_STREQ("/bar", BXString("C:foo/bar").getValidFilePath());
    EXPECT_STREQ("/b:c", BXString("x:a/b:c").getValidFilePath());
    EXPECT_STREQ("/c", BXString("a/b:x/c").getValidFilePath());
}

TEST(BXStringGetValidFilePath, BeginsAfterTheColonWithoutASlash) {
    EXPECT_STREQ("foo", BXString("C:foo").getValidFilePath());
    EXPECT_STREQ("b", BXString("/a:b").getValidFilePath());
    EXPECT_STREQ("", BXString("C:").getValidFilePath());
}

TEST(BXStringGetValidFilePath, IsTheWholeTextWithoutBoth) {
    EXPECT_STREQ("foo", BXString("foo").getValidFilePath());
    EXPECT_STREQ("a\\b", BXString("a\\b").getValidFilePath());
    EXPECT_STREQ("/Users/a", BXString("/Users/a").getValidFilePath());
}

// Required(R17)
TEST(BXStringGetValidFilePath, CutsTheFirstFolderOfARelativePath) {
    EXPECT_STREQ("/folder", BXString("rel/folder").getValidFilePath());
    EXPECT_STREQ("rel", BXString("rel").getValidFilePath());
}

TEST(BXStringGetValidFilePath, PointsIntoTheText) {
    const BXString path("C:foo/bar");
    EXPECT_EQ(path.data() + 5, path.getValidFilePath());
    const BXString empty("");
    EXPECT_EQ(empty.data(), empty.getValidFilePath());
    EXPECT_EQ(nullptr, BXString().getValidFilePath());
}

TEST(BXStringFileNameAdvance, CountsTheStemUp) {
    EXPECT_STREQ("name1.ext", advanced("name.ext").c_str());
    EXPECT_STREQ("name2.ext", advanced("name1.ext").c_str());
    EXPECT_STREQ("name10.ext", advanced("name9.ext").c_str());
    EXPECT_STREQ("a20.txt", advanced("a19.txt").c_str());
    EXPECT_STREQ("a100.txt", advanced("a99.txt").c_str());
    EXPECT_STREQ("a9.txt", advanced("a8.txt").c_str());
    EXPECT_STREQ("a1.txt", advanced("a0.txt").c_str());
    EXPECT_STREQ("a1000.txt", advanced("a0999.txt").c_str());
}

TEST(BXStringFileNameAdvance, CountsANameWithoutAnExtensionUp) {
    EXPECT_STREQ("name1", advanced("name").c_str());
    EXPECT_STREQ("name10", advanced("name9").c_str());
    EXPECT_STREQ("dir/1", advanced("dir/").c_str());
    EXPECT_STREQ("dir\\1", advanced("dir\\").c_str());
}

TEST(BXStringFileNameAdvance, CountsTheLastPartOfAPathUp) {
    EXPECT_STREQ("/a.b/c1", advanced("/a.b/c").c_str());
    EXPECT_STREQ("/a.b\\c10.d", advanced("/a.b\\c9.d").c_str());
    EXPECT_STREQ("/a1/b1.c", advanced("/a1/b.c").c_str());
}

TEST(BXStringFileNameAdvance, CountsUpBeforeTheLastDotOnly) {
    EXPECT_STREQ("a.b1.c9", advanced("a.b.c9").c_str());
    EXPECT_STREQ("1.10", advanced("0.10").c_str());
}

TEST(BXStringFileNameAdvance, PutsAOneInFrontOfAStemOfNines) {
    EXPECT_STREQ("100.txt", advanced("99.txt").c_str());
    EXPECT_STREQ("10", advanced("9").c_str());
    EXPECT_STREQ("1.txt", advanced(".txt").c_str());
    EXPECT_STREQ("dir/100.txt", advanced("dir/99.txt").c_str());
    EXPECT_STREQ("dir/1.txt", advanced("dir/.txt").c_str());
}

TEST(BXStringFileNameAdvance, MakesAnEmptyTextOne) {
    EXPECT_STREQ("1", advanced(nullptr).c_str());
    EXPECT_STREQ("1", advanced("").c_str());
}

TEST(BXStringFileNameAdvance, CountsFarWithoutAnError) {
    BXString s("a.b");
    for (int i = 0; i < 1234; ++i) s.fileNameAdvance();
    EXPECT_STREQ("a1234.b", s.c_str());
}

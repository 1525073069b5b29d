// BXDiskServer::searchFileList

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <vector>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"
#include "tests/support/permissions.h"

namespace {

using Names = std::vector<std::string>;

struct Found {
    bool any;
    Names names;  // below the folder that was searched, in the order in which they were found
};

Found search(const TempFolder& folder, const char* filter, int depth, int stopLevels) {
    BXArray<BXString> paths;
    Found found;
    found.any = BXDiskServer::searchFileList(paths, filter, text(folder.path()), depth, stopLevels);
    for (const BXString& path : paths) {
        EXPECT_TRUE(path.startsWith(text(folder / "")));
        found.names.push_back(path.c_str() + folder.path().size() + 1);
    }
    return found;
}

// The folder's entries as the disk lists them.
Names listed(const TempFolder& folder) {
    Names names;
    DIR* const open = opendir(folder.path().c_str());
    EXPECT_NE(open, nullptr);
    while (const dirent* entry = open ? readdir(open) : nullptr) names.push_back(entry->d_name);
    if (open) closedir(open);
    return names;
}

Names sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}

// A file at each level: a.txt, 1/a.txt, 1/2/a.txt, 1/2/3/a.txt.
void makeLevels(const TempFolder& folder) {
    makeFolders(folder / "1/2/3");
    for (const char* name : {"a.txt", "1/a.txt", "1/2/a.txt", "1/2/3/a.txt"}) {
        writeFile(folder / name, "");
    }
}

}  // namespace

TEST(SearchFileList, FindsWhatMatchesInAnyLetterCase) {
    TempFolder folder;
    for (const char* name : {"a.TXT", "b.txt", "c.dat", "txt"}) writeFile(folder / name, "");
    const Found found = search(folder, "*.txt", 0, 0);
    EXPECT_TRUE(found.any);
    EXPECT_EQ(sorted(found.names), (Names{"a.TXT", "b.txt"}));
}

TEST(SearchFileList, IsFalseWhenNothingMatches) {
    TempFolder folder;
    writeFile(folder / "a", "");
    const Found found = search(folder, "b", 5, 0);
    EXPECT_FALSE(found.any);
    EXPECT_EQ(found.names, Names());
    EXPECT_FALSE(search(folder, "", 5, 0).any);
}

TEST(SearchFileList, JoinsTheFolderAsItIsGiven) {
    TempFolder folder;
    writeFile(folder / "a", "");
    BXArray<BXString> found;
    EXPECT_TRUE(BXDiskServer::searchFileList(found, "a", at(folder, ""), 0, 0));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].c_str(), folder.path() + "//a");
}

TEST(SearchFileList, AddsToWhatIsThere) {
    TempFolder folder;
    writeFile(folder / "a", "");
    BXArray<BXString> found = {"old"};
    EXPECT_TRUE(BXDiskServer::searchFileList(found, "a", text(folder.path()), 0, 0));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_STREQ(found[0].c_str(), "old");
}

// Required(R25)
TEST(SearchFileList, ReportsTheFolderAndItsParentForAStar) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_EQ(sorted(search(folder, "*", 0, 0).names), (Names{".", "..", "a"}));
    EXPECT_EQ(sorted(search(folder, "?", 0, 0).names), (Names{".", "a"}));
    EXPECT_EQ(search(folder, "?*a", 9, 0).names, Names());
}

// Required(R27)
TEST(SearchFileList, ReportsAMatchingFolderWithoutEnteringIt) {
    TempFolder folder;
    makeFolders(folder / "X.app/Below");
    makeFolders(folder / "Other");
    writeFile(folder / "X.app/inner.app", "");
    writeFile(folder / "Other/inner.app", "");
    EXPECT_EQ(search(folder, "*.app", 9, 0).names, (Names{"X.app", "Other/inner.app"}));
}

TEST(SearchFileList, NeverDescendsAtDepthZero) {
    TempFolder folder;
    makeLevels(folder);
    EXPECT_EQ(search(folder, "*.txt", 0, 0).names, (Names{"a.txt"}));
    EXPECT_EQ(search(folder, "*.txt", -1, 0).names, (Names{"a.txt"}));
}

TEST(SearchFileList, DescendsAsDeepAsItIsTold) {
    TempFolder folder;
    makeLevels(folder);
    EXPECT_EQ(search(folder, "*.txt", 1, 0).names, (Names{"a.txt", "1/a.txt"}));
    EXPECT_EQ(search(folder, "*.txt", 2, 0).names, (Names{"a.txt", "1/a.txt", "1/2/a.txt"}));
    EXPECT_EQ(search(folder, "*.txt", 9, 0).names,
              (Names{"a.txt", "1/a.txt", "1/2/a.txt", "1/2/3/a.txt"}));
}

TEST(SearchFileList, ReadsNoSubfolderAfterAMatchAtTheTopWithStopLevels1) {
    TempFolder folder;
    makeLevels(folder);
    EXPECT_EQ(search(folder, "*.txt", 9, 1).names, (Names{"a.txt"}));
}

TEST(SearchFileList, TakesTheWholeOfTheFirstSubfolderThatMatchesWithStopLevels1) {
    TempFolder folder;
    for (const char* below : {"p", "q", "r"}) {
        makeFolders(folder / below + "/deep");
        writeFile(folder / below + "/a.txt", "");
        writeFile(folder / below + "/deep/a.txt", "");
    }
    makeFolders(folder / "empty");
    const Found found = search(folder, "*.txt", 9, 1);
    EXPECT_TRUE(found.any);
    std::string first;
    for (const std::string& name : listed(folder)) {
        if (first.empty() && name.size() == 1) first = name;
    }
    EXPECT_EQ(found.names, (Names{first + "/a.txt", first + "/deep/a.txt"}));
}

TEST(SearchFileList, KeepsTheOrderInWhichTheDiskListsAFolder) {
    TempFolder folder;
    Names expected;
    for (int i = 0; i < 30; ++i) {
        const std::string below = "d" + std::to_string(i * 7 % 30);
        makeFolders(folder / below);
        writeFile(folder / below + "/x", "");
        writeFile(folder / ("x" + std::to_string(i * 11 % 30)), "");
    }
    for (const std::string& name : listed(folder)) {
        if (name[0] == 'x') expected.push_back(name);
    }
    for (const std::string& name : listed(folder)) {
        if (name[0] == 'd') expected.push_back(name + "/x");
    }
    ASSERT_EQ(expected.size(), 60u);
    EXPECT_EQ(search(folder, "x*", 1, 0).names, expected);
}

TEST(SearchFileList, FoundSomethingAlsoWhenTheLastSubfolderHasNothing) {
    for (const char* where : {"a", "p/a", "q/a", "r/a"}) {
        TempFolder folder;
        for (const char* below : {"p", "q", "r"}) makeFolders(folder / below);
        writeFile(folder / where, "");
        EXPECT_TRUE(search(folder, "a", 9, 0).any) << where;
    }
}

TEST(SearchFileList, ReadsNoSubfolderAfterAMatchAtTheTopWithStopLevels2) {
    TempFolder folder;
    makeLevels(folder);
    EXPECT_EQ(search(folder, "*.txt", 9, 2).names, (Names{"a.txt"}));
}

TEST(SearchFileList, TakesOneSubfolderThatMatchesWithStopLevels2) {
    TempFolder folder;
    for (const char* below : {"p", "q"}) {
        makeFolders(folder / below);
        writeFile(folder / below + "/a.txt", "");
    }
    EXPECT_EQ(search(folder, "*.txt", 9, 2).names.size(), 1u);
}

TEST(SearchFileList, TakesANegativeStopLevelsForNone) {
    TempFolder folder;
    makeLevels(folder);
    EXPECT_EQ(search(folder, "*.txt", 9, INT_MIN).names.size(), 4u);
}

TEST(SearchFileList, CanGoOnFromWhatItFoundBefore) {
    TempFolder folder;
    makeLevels(folder);
    BXArray<BXString> found = {at(folder, "1"), "*"};
    found.shrink_to_fit();
    EXPECT_TRUE(BXDiskServer::searchFileList(found, found[1], found[0], 9, 0));
    EXPECT_EQ(found.size(), 2u + 4u) << ". and .. and 2 and a.txt match";
}

TEST(SearchFileList, StopsOneLevelFurtherDownWithStopLevels2) {
    TempFolder folder;
    makeFolders(folder / "p/deep");
    writeFile(folder / "p/a.txt", "");
    writeFile(folder / "p/deep/a.txt", "");
    EXPECT_EQ(search(folder, "*.txt", 9, 2).names, (Names{"p/a.txt"}));
}

TEST(SearchFileList, ListsAFoldersMatchesBeforeThoseBelow) {
    TempFolder folder;
    makeFolders(folder / "a");
    writeFile(folder / "a/x1", "");
    writeFile(folder / "x2", "");
    writeFile(folder / "x3", "");
    const Names names = search(folder, "x*", 9, 0).names;
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names[2], "a/x1");
}

TEST(SearchFileList, ReportsALinkAndDoesNotFollowIt) {
    TempFolder folder;
    makeFolders(folder / "below");
    writeFile(folder / "below/a.txt", "");
    ASSERT_EQ(symlink("below", (folder / "link").c_str()), 0);
    ASSERT_EQ(symlink(".", (folder / "loop").c_str()), 0);
    ASSERT_EQ(symlink("missing", (folder / "nowhere.txt").c_str()), 0);
    EXPECT_EQ(search(folder, "*.txt", 9, 0).names, (Names{"nowhere.txt", "below/a.txt"}));
    EXPECT_EQ(search(folder, "link", 9, 0).names, (Names{"link"}));
}

TEST(SearchFileList, TakesTheFolderAsItIs) {
    TempFolder folder;
    writeFile(folder / "a", "");
    BXArray<BXString> found;
    EXPECT_FALSE(BXDiskServer::searchFileList(found, "a", text("Disk:" + folder.path()), 0, 0));
    EXPECT_FALSE(BXDiskServer::searchFileList(found, "a", BXString(), 0, 0));
    EXPECT_TRUE(found.empty());
}

TEST(SearchFileList, IsFalseForWhatIsNoFolder) {
    TempFolder folder;
    writeFile(folder / "a", "");
    BXArray<BXString> found;
    EXPECT_FALSE(BXDiskServer::searchFileList(found, "*", at(folder, "missing"), 9, 0));
    EXPECT_FALSE(BXDiskServer::searchFileList(found, "*", at(folder, "a"), 9, 0));
    EXPECT_TRUE(found.empty());
}

TEST(SearchFileList, PassesOverAFolderThatMayNotBeRead) {
    TempFolder folder;
    makeFolders(folder / "closed");
    makeFolders(folder / "open");
    writeFile(folder / "closed/a.txt", "");
    writeFile(folder / "open/a.txt", "");
    ASSERT_EQ(chmod((folder / "closed").c_str(), 0), 0);
    const ObeyPermissions obey;
    const Found found = search(folder, "*.txt", 9, 0);
    ASSERT_EQ(chmod((folder / "closed").c_str(), 0700), 0);
    EXPECT_TRUE(found.any);
    EXPECT_EQ(found.names, (Names{"open/a.txt"}));
}

TEST(SearchFileList, FindsOddNames) {
    TempFolder folder;
    const Names names = {"a b",      "it's",         "\"q\"", "100%s",
                         "\xC3\xA4", "\xE6\x97\xA5", "a\nb",  std::string(255, 'n')};
    for (const std::string& name : names) {
        makeFolders(folder / name);
        writeFile(folder / name + "/x.x", "");
    }
    const Names found = search(folder, "x.x", 1, 0).names;
    EXPECT_EQ(found.size(), names.size());
    for (const std::string& name : names) {
        EXPECT_EQ(std::count(found.begin(), found.end(), name + "/x.x"), 1) << name;
    }
}

TEST(SearchFileList, EndsWherePathsGetTooLong) {
    TempFolder folder;
    const std::string name(200, 'd');
    // Made from inside, since no path to the last of them is short enough.
    const BXString before = BXDiskServer::getCurrentPath();
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(mkdir(name.c_str(), 0700), 0);
        ASSERT_EQ(chdir(name.c_str()), 0);
    }
    writeFile("deepest", "");
    ASSERT_EQ(chdir(before.c_str()), 0);
    EXPECT_FALSE(search(folder, "deepest", 100, 0).any);
}

// BXDiskServer::deleteDirectory

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"
#include "tests/support/permissions.h"

namespace {

using Names = std::vector<std::string>;

constexpr bool kRecursive = true;
constexpr bool kFlat = false;

bool remove(const std::string& path, bool recursive) {
    return BXDiskServer::deleteDirectory(text(path), recursive, false);
}

// Everything below the folder, sorted; folders end with '/'.
Names treeOf(const TempFolder& folder) {
    namespace fs = std::filesystem;
    Names names;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
        std::string name = entry.path().string().substr(folder.path().size() + 1);
        if (entry.symlink_status().type() == fs::file_type::directory) name += '/';
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

void makeTree(const TempFolder& folder, const Names& names) {
    for (const std::string& name : names) {
        if (name.back() == '/') {
            makeFolders(folder / name);
        } else {
            writeFile(folder / name, "");
        }
    }
}

class InsideFolder {
public:
    explicit InsideFolder(const TempFolder& folder) : m_before(BXDiskServer::getCurrentPath()) {
        EXPECT_EQ(chdir(folder.path().c_str()), 0);
    }
    InsideFolder(const InsideFolder&) = delete;
    InsideFolder& operator=(const InsideFolder&) = delete;
    ~InsideFolder() { EXPECT_EQ(chdir(m_before.c_str()), 0); }

private:
    const BXString m_before;
};

}  // namespace

TEST(DeleteDirectory, RemovesAFolderWithAllThatIsInIt) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/b/", "a/b/2", "a/b/c/", "a/b/c/3", "keep"});
    EXPECT_TRUE(remove(folder / "a", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"keep"}));
}

TEST(DeleteDirectory, TakesSeparatorsBehindAFolder) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "keep"});
    EXPECT_TRUE(remove(folder / "a//", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"keep"}));
}

TEST(DeleteDirectory, IgnoresItsThirdArgument) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "b/", "b/1"});
    EXPECT_TRUE(BXDiskServer::deleteDirectory(at(folder, "a"), true, true));
    EXPECT_TRUE(BXDiskServer::deleteDirectory(at(folder, "b"), true, false));
    EXPECT_EQ(treeOf(folder), Names());
}

TEST(DeleteDirectory, RemovesAFlatFolderWithoutRecursion) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/2", "a/empty/"});
    EXPECT_TRUE(remove(folder / "a", kFlat));
    EXPECT_EQ(treeOf(folder), Names());
}

TEST(DeleteDirectory, KeepsWhatIsInSubfoldersWithoutRecursion) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/b/", "a/b/2"});
    EXPECT_FALSE(remove(folder / "a", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/b/", "a/b/2"}));
}

TEST(DeleteDirectory, EmptiesAFolderThroughAStar) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/.hidden", "a/1", "a/b/", "a/b/2"});
    EXPECT_TRUE(remove(folder / "a/*", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"a/"}));
}

TEST(DeleteDirectory, KeepsFullSubfoldersThroughAStarWithoutRecursion) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/b/", "a/b/2"});
    EXPECT_FALSE(remove(folder / "a/*", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/b/", "a/b/2"}));
}

TEST(DeleteDirectory, RemovesTheFilesThatMatch) {
    TempFolder folder;
    makeTree(folder, {"1.tmp", "2.TMP", "3.txt", "b/", "b/4.tmp"});
    EXPECT_TRUE(remove(folder / "?.tmp", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"3.txt", "b/", "b/4.tmp"}));
}

TEST(DeleteDirectory, RemovesTheFilesThatMatchInSubfoldersToo) {
    TempFolder folder;
    makeTree(folder, {"1.tmp", "3.txt", "b/", "b/4.tmp", "b/5.txt", "b/c/", "b/c/6.tmp"});
    EXPECT_TRUE(remove(folder / "*.tmp", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"3.txt", "b/", "b/5.txt", "b/c/"}));
}

TEST(DeleteDirectory, KeepsAMatchingFolderThatHoldsSomethingElse) {
    TempFolder folder;
    makeTree(folder, {"x.tmp/", "x.tmp/a.tmp", "x.tmp/keep"});
    EXPECT_FALSE(remove(folder / "*.tmp", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"x.tmp/", "x.tmp/keep"}));
}

TEST(DeleteDirectory, RemovesASingleFile) {
    TempFolder folder;
    makeTree(folder, {"a", "b"});
    EXPECT_TRUE(remove(folder / "a", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"b"}));
}

// Required(R29)
TEST(DeleteDirectory, RemovesFilesOfThatNameInAnyLetterCaseAndFurtherDown) {
    TempFolder folder;
    makeTree(folder, {"a.TXT", "b/", "b/A.txt", "c.txt"});
    EXPECT_TRUE(remove(folder / "a.txt", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"b/", "c.txt"}));
    makeTree(folder, {"a.TXT", "b/A.txt"});
    EXPECT_TRUE(remove(folder / "a.txt", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"b/", "b/A.txt", "c.txt"}));
}

TEST(DeleteDirectory, SplitsAtABackslashToo) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1.tmp", "a/2.txt"});
    EXPECT_TRUE(remove(folder / "a\\*.tmp", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/2.txt"}));
}

TEST(DeleteDirectory, IsFalseWhenThereIsNothingToDelete) {
    TempFolder folder;
    makeTree(folder, {"a", "b/"});
    EXPECT_FALSE(remove(folder / "missing", kRecursive));
    EXPECT_FALSE(remove(folder / "missing/", kRecursive));
    EXPECT_FALSE(remove(folder / "missing/*", kRecursive));
    EXPECT_FALSE(remove(folder / "b/*", kRecursive));
    EXPECT_FALSE(remove(folder / "a/*", kRecursive));
    EXPECT_FALSE(remove(folder / "a/", kRecursive)) << "a file is no folder";
    EXPECT_EQ(treeOf(folder), (Names{"a", "b/"}));
}

TEST(DeleteDirectory, AnEmptyPathDeletesNothing) {
    TempFolder folder;
    makeTree(folder, {"a", "b/", "b/c"});
    InsideFolder inside(folder);
    EXPECT_FALSE(remove("", kRecursive));
    EXPECT_FALSE(BXDiskServer::deleteDirectory(BXString(), true, false));
    EXPECT_EQ(treeOf(folder), (Names{"a", "b/", "b/c"}));
}

TEST(DeleteDirectory, LooksForANameAloneInTheWorkingFolder) {
    TempFolder folder;
    makeTree(folder, {"a", "b/", "b/a", "c.tmp", "d/", "d/e"});
    InsideFolder inside(folder);
    EXPECT_TRUE(remove("a", kFlat));
    EXPECT_TRUE(remove("*.tmp", kFlat));
    EXPECT_TRUE(remove("d", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"b/", "b/a"}));
}

TEST(DeleteDirectory, LooksForANameBehindTheFirstSeparatorInTheRoot) {
    char path[] = "/vek-test-XXXXXX";
    const int descriptor = mkstemp(path);
    if (descriptor < 0) GTEST_SKIP() << "this user may not write into the root";
    close(descriptor);
    EXPECT_TRUE(remove(path, kFlat));
    EXPECT_FALSE(fileIsThere(path));
    unlink(path);
}

TEST(DeleteDirectory, TakesThePathAsItIs) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1"});
    EXPECT_FALSE(remove("Disk:" + (folder / "a"), kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/1"}));
}

TEST(DeleteDirectory, RemovesLinksInsideAndNotWhatTheyLeadTo) {
    TempFolder folder;
    makeTree(folder, {"a/", "keep/", "keep/1"});
    ASSERT_EQ(symlink("../keep", (folder / "a/folder").c_str()), 0);
    ASSERT_EQ(symlink("../keep/1", (folder / "a/file").c_str()), 0);
    ASSERT_EQ(symlink("missing", (folder / "a/nowhere").c_str()), 0);
    ASSERT_EQ(symlink(".", (folder / "a/loop").c_str()), 0);
    EXPECT_TRUE(remove(folder / "a", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"keep/", "keep/1"}));
}

TEST(DeleteDirectory, DoesNotSearchBehindLinks) {
    TempFolder folder;
    makeTree(folder, {"a/", "keep/", "keep/1.tmp"});
    ASSERT_EQ(symlink("../keep", (folder / "a/link").c_str()), 0);
    EXPECT_FALSE(remove(folder / "a/*.tmp", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/link", "keep/", "keep/1.tmp"}));
}

TEST(DeleteDirectory, RemovesALinkThatIsThePathItself) {
    for (const char* behind : {"", "/", "///"}) {
        TempFolder folder;
        makeTree(folder, {"keep/", "keep/1"});
        ASSERT_EQ(symlink("keep", (folder / "link").c_str()), 0);
        EXPECT_TRUE(remove((folder / "link") + behind, kRecursive)) << behind;
        EXPECT_EQ(treeOf(folder), (Names{"keep/", "keep/1"})) << behind;
    }
}

TEST(DeleteDirectory, RemovesALinkWhoseNameLooksLikeAFilterAlone) {
    TempFolder folder;
    makeTree(folder, {"keep/", "keep/1", "l1", "l/", "l/l2", "L*", "sub/", "sub/l*"});
    ASSERT_EQ(symlink("keep", (folder / "l*").c_str()), 0);
    EXPECT_TRUE(remove(folder / "l*/", kRecursive));
    EXPECT_EQ(treeOf(folder),
              (Names{"L*", "keep/", "keep/1", "l/", "l/l2", "l1", "sub/", "sub/l*"}));
}

TEST(DeleteDirectory, RemovesALinkAndNothingElseOfThatName) {
    TempFolder folder;
    makeTree(folder, {"keep/", "LINK", "sub/", "sub/link"});
    ASSERT_EQ(symlink("keep", (folder / "link").c_str()), 0);
    EXPECT_TRUE(remove(folder / "link", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"LINK", "keep/", "sub/", "sub/link"}));
}

TEST(DeleteDirectory, LooksForMatchesInTheFolderThatALinkLeadsTo) {
    TempFolder folder;
    makeTree(folder, {"real/", "real/1", "real/2"});
    ASSERT_EQ(symlink("real", (folder / "link").c_str()), 0);
    EXPECT_TRUE(remove(folder / "link/*", kRecursive));
    EXPECT_EQ(treeOf(folder), (Names{"link", "real/"}));
}

TEST(DeleteDirectory, TakesAWildcardForAFilterAlsoWhereAFolderHasThatName) {
    TempFolder folder;
    makeTree(folder, {"a*/", "a*/keep", "a1", "ab/", "b"});
    EXPECT_FALSE(remove(folder / "a*", kFlat)) << "a* itself is not empty";
    EXPECT_EQ(treeOf(folder), (Names{"a*/", "a*/keep", "b"}));
}

TEST(DeleteDirectory, RemovesALinkInTheWorkingFolder) {
    TempFolder folder;
    makeTree(folder, {"keep/", "keep/1"});
    ASSERT_EQ(symlink("keep", (folder / "link").c_str()), 0);
    InsideFolder inside(folder);
    EXPECT_TRUE(remove("link/", kFlat));
    EXPECT_EQ(treeOf(folder), (Names{"keep/", "keep/1"}));
}

TEST(DeleteDirectory, RemovesALinkThatLeadsNowhere) {
    TempFolder folder;
    ASSERT_EQ(symlink("missing", (folder / "link").c_str()), 0);
    EXPECT_TRUE(remove(folder / "link", kFlat));
    EXPECT_EQ(treeOf(folder), Names());
}

TEST(DeleteDirectory, RemovesPipes) {
    TempFolder folder;
    makeTree(folder, {"a/"});
    ASSERT_EQ(mkfifo((folder / "a/pipe").c_str(), 0600), 0);
    EXPECT_TRUE(remove(folder / "a", kRecursive));
    EXPECT_EQ(treeOf(folder), Names());
}

TEST(DeleteDirectory, PassesOverAFolderThatMayNotBeRead) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/closed/", "a/closed/2"});
    ASSERT_EQ(chmod((folder / "a/closed").c_str(), 0), 0);
    const ObeyPermissions obey;
    const bool result = remove(folder / "a", kRecursive);
    ASSERT_EQ(chmod((folder / "a/closed").c_str(), 0700), 0);
    EXPECT_FALSE(result);
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/closed/", "a/closed/2"}));
}

TEST(DeleteDirectory, GoesOnAfterWhatCannotBeRemoved) {
    TempFolder folder;
    makeTree(folder, {"a/", "a/1", "a/fixed/", "a/fixed/2", "a/z/", "a/z/3"});
    ASSERT_EQ(chmod((folder / "a/fixed").c_str(), 0500), 0);
    const ObeyPermissions obey;
    const bool result = remove(folder / "a", kRecursive);
    ASSERT_EQ(chmod((folder / "a/fixed").c_str(), 0700), 0);
    EXPECT_FALSE(result);
    EXPECT_EQ(treeOf(folder), (Names{"a/", "a/fixed/", "a/fixed/2"}));
}

TEST(DeleteDirectory, RemovesOddNames) {
    TempFolder folder;
    for (const std::string name : {"a b", "it's", "\"q\"", "100%s%n", "\xC3\xA4", "\xE6\x97\xA5",
                                   "a\nb", "-rf", "\\", "[x]"}) {
        makeTree(folder, {"a/", "a/" + name + "/", "a/" + name + "/" + name});
    }
    makeTree(folder, {"a/" + std::string(255, 'n')});
    EXPECT_TRUE(remove(folder / "a", kRecursive));
    EXPECT_EQ(treeOf(folder), Names());
}

TEST(DeleteDirectory, RemovesMoreThanItsListsBeginWith) {
    TempFolder folder;
    for (int i = 0; i < 1100; ++i) {
        const std::string below = "a/" + std::to_string(i);
        makeTree(folder, {below + "/", below + "/x"});
    }
    EXPECT_TRUE(remove(folder / "a", kRecursive));
    EXPECT_EQ(treeOf(folder), Names());
}

#include "os/bx_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

// The names with whether each is a folder.
std::map<std::string, bool> entriesOf(const std::string& path) {
    BXFolder folder(path.c_str());
    BXFolder::Entry entry;
    std::map<std::string, bool> entries;
    while (folder.next(entry)) entries[entry.name] = entry.isFolder;
    return entries;
}

}  // namespace

TEST(Folder, ListsItselfAndItsParentToo) {
    TempFolder folder;
    const std::map<std::string, bool> expected = {{".", true}, {"..", true}};
    EXPECT_EQ(entriesOf(folder.path()), expected);
}

TEST(Folder, TellsFoldersFromEverythingElse) {
    TempFolder folder;
    makeFolders(folder / "below");
    writeFile(folder / "file", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(symlink("below", (folder / "link").c_str()), 0);
    ASSERT_EQ(symlink("missing", (folder / "nowhere").c_str()), 0);
    const std::map<std::string, bool> expected = {
        {".", true},     {"..", true},       {"below", true}, {"file", false},
        {"link", false}, {"nowhere", false}, {"pipe", false}};
    EXPECT_EQ(entriesOf(folder.path()), expected);
}

TEST(Folder, NextBelowPassesOverItselfAndItsParent) {
    TempFolder folder;
    writeFile(folder / "..a", "");
    BXFolder entries(folder.path().c_str());
    BXFolder::Entry entry;
    ASSERT_TRUE(entries.nextBelow(entry));
    EXPECT_STREQ(entry.name, "..a");
    EXPECT_FALSE(entries.nextBelow(entry));
}

TEST(Folder, ListsNothingWhenItCannotBeOpened) {
    TempFolder folder;
    writeFile(folder / "file", "");
    EXPECT_TRUE(entriesOf(folder / "missing").empty());
    EXPECT_TRUE(entriesOf(folder / "file").empty());
    EXPECT_FALSE(BXFolder(nullptr).isOpen());
    EXPECT_FALSE(BXFolder((folder / "missing").c_str()).isOpen());
    EXPECT_TRUE(BXFolder(folder.path().c_str()).isOpen());
}

#include "os/bx_folder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

// While this is set, the file system tells no entry's type, as some network ones do.
bool hidesTypes = false;

}  // namespace

// Stands before the C library's function of that name.
extern "C" dirent* readdir(DIR* folder) {
    using Function = dirent* (*)(DIR*);
    static const Function original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "readdir64"));
    dirent* const entry = original(folder);
    if (entry && hidesTypes) entry->d_type = DT_UNKNOWN;
    return entry;
}

namespace {

// The names with whether each is a folder.
std::map<std::string, bool> entriesOf(const std::string& path) {
    BXFolder folder(path.c_str());
    BXFolder::Entry entry;
    std::map<std::string, bool> entries;
    while (folder.next(entry)) entries[entry.name] = entry.isFolder;
    return entries;
}

// A folder, a file, a pipe, and two links, one of which leads nowhere.
void fill(const TempFolder& folder) {
    makeFolders(folder / "below");
    writeFile(folder / "file", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(symlink("below", (folder / "link").c_str()), 0);
    ASSERT_EQ(symlink("missing", (folder / "nowhere").c_str()), 0);
}
const std::map<std::string, bool> kFilled = {{".", true},     {"..", true},    {"below", true},
                                             {"file", false}, {"link", false}, {"nowhere", false},
                                             {"pipe", false}};
}  // namespace

TEST(Folder, ListsItselfAndItsParentToo) {
    TempFolder folder;
    const std::map<std::string, bool> expected = {{".", true}, {"..", true}};
    EXPECT_EQ(entriesOf(folder.path()), expected);
}

TEST(Folder, TellsFoldersFromEverythingElse) {
    TempFolder folder;
    fill(folder);
    EXPECT_EQ(entriesOf(folder.path()), kFilled);
}

TEST(Folder, TellsFoldersWhereTheFileSystemDoesNot) {
    TempFolder folder;
    fill(folder);
    hidesTypes = true;
    const std::map<std::string, bool> entries = entriesOf(folder.path());
    hidesTypes = false;
    EXPECT_EQ(entries, kFilled);
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

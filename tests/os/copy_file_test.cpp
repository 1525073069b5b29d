// BXDiskServer::copyFile

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"
#include "tests/os/full_disk.h"
#include "tests/support/permissions.h"

// The modes that files and folders were given in the running test; the linker sends calls of chmod
// here.
static std::vector<mode_t> s_modes;
extern "C" int __real_chmod(const char* path, mode_t mode);
extern "C" int __wrap_chmod(const char* path, mode_t mode);
int __wrap_chmod(const char* path, mode_t mode) {
    s_modes.push_back(mode);
    return __real_chmod(path, mode);
}

namespace {

bool copy(const std::string& from, const std::string& to) {
    return BXDiskServer::copyFile(text(from), text(to));
}

std::string bytesOf(std::size_t count) {
    std::string bytes(count, ' ');
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

int modeOf(const std::string& path) {
    return BXDiskServer::getMode(text(path)) & 07777;
}

}  // namespace

TEST(CopyFile, CopiesFilesOfAnySize) {
    TempFolder folder;
    for (const std::size_t size : {0, 1, 4096, 1048575, 1048576, 1048577, 3000000}) {
        writeFile(folder / "a", bytesOf(size));
        EXPECT_TRUE(copy(folder / "a", folder / "b")) << size;
        EXPECT_EQ(readFile(folder / "b"), bytesOf(size)) << size;
    }
}

TEST(CopyFile, ReplacesALongerFile) {
    TempFolder folder;
    writeFile(folder / "a", "new");
    writeFile(folder / "b", "much older");
    EXPECT_TRUE(copy(folder / "a", folder / "b"));
    EXPECT_EQ(readFile(folder / "b"), "new");
    EXPECT_EQ(readFile(folder / "a"), "new");
}

TEST(CopyFile, DropsVolumePrefixes) {
    TempFolder folder;
    writeFile(folder / "a", "new");
    EXPECT_TRUE(copy("Disk:" + (folder / "a"), "Disk:" + (folder / "b")));
    EXPECT_EQ(readFile(folder / "b"), "new");
}

TEST(CopyFile, RejectsASourceThatCannotBeReadAndKeepsTheTarget) {
    TempFolder folder;
    writeFile(folder / "b", "old");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(copy(folder / "missing", folder / "b"));
    EXPECT_FALSE(copy(folder.path(), folder / "b"));
    EXPECT_FALSE(copy(folder / "pipe", folder / "b"));
    EXPECT_FALSE(copy("", folder / "b"));
    EXPECT_FALSE(BXDiskServer::copyFile(BXString(), at(folder, "b")));
    EXPECT_EQ(readFile(folder / "b"), "old");
}

TEST(CopyFile, RejectsATargetThatCannotBeWritten) {
    TempFolder folder;
    writeFile(folder / "a", "new");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(copy(folder / "a", folder.path()));
    EXPECT_FALSE(copy(folder / "a", folder / "missing/b"));
    EXPECT_FALSE(copy(folder / "a", folder / "pipe"));
    EXPECT_FALSE(copy(folder / "a", ""));
    EXPECT_FALSE(BXDiskServer::copyFile(at(folder, "a"), BXString()));
}

TEST(CopyFile, RejectsAFileOntoItself) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    ASSERT_EQ(link((folder / "a").c_str(), (folder / "hard").c_str()), 0);
    ASSERT_EQ(symlink("a", (folder / "soft").c_str()), 0);
    EXPECT_FALSE(copy(folder / "a", folder / "a"));
    EXPECT_FALSE(copy(folder / "a", folder / "hard"));
    EXPECT_FALSE(copy(folder / "soft", folder / "a"));
    EXPECT_EQ(readFile(folder / "a"), "old");
}

TEST(CopyFile, CopiesAFileThatDoesNotTellItsSize) {
    TempFolder folder;
    EXPECT_TRUE(copy("/proc/self/status", folder / "b"));
    EXPECT_NE(readFile(folder / "b").find("Pid:"), std::string::npos);
}

TEST(CopyFile, RestoresTheModeOfAFolderWhenTheTargetStillCannotBeWritten) {
    TempFolder folder;
    writeFile(folder / "a", "new");
    makeFolders(folder / "x/b");
    ASSERT_EQ(chmod((folder / "x").c_str(), 0555), 0);
    EXPECT_FALSE(copy(folder / "a", folder / "x/b")) << "a folder is in its place";
    EXPECT_EQ(modeOf(folder / "x"), 0555);
    ASSERT_EQ(chmod((folder / "x").c_str(), 0755), 0);
}

// A folder "x" that may not be written until the test ends, and a file "a" beside it.
class CopyFileReadOnly : public testing::Test {
protected:
    CopyFileReadOnly() {
        writeFile(folder / "a", "new");
        makeFolders(folder / "x/y");
        EXPECT_EQ(chmod((folder / "x/y").c_str(), 0750), 0);
        EXPECT_EQ(chmod((folder / "x").c_str(), 0555), 0);
        s_modes.clear();
    }
    ~CopyFileReadOnly() override { EXPECT_EQ(chmod((folder / "x").c_str(), 0755), 0); }

    const TempFolder folder;
    const ObeyPermissions obey;
};

TEST_F(CopyFileReadOnly, WritesIntoItAndRestoresItsMode) {
    EXPECT_TRUE(copy(folder / "a", folder / "x/b"));
    EXPECT_EQ(modeOf(folder / "x"), 0555);
    EXPECT_EQ(readFile(folder / "x/b"), "new");
}

TEST_F(CopyFileReadOnly, IsMadeWritableForEverybodyForTheMoment) {
    EXPECT_TRUE(copy(folder / "a", folder / "x/b"));
    EXPECT_EQ(s_modes, (std::vector<mode_t>{0777, 0555}));
}

// "x/y\\b" is a file of x here, but its folder is taken to be x/y.
TEST_F(CopyFileReadOnly, IsThatBeforeABackslashToo) {
    EXPECT_FALSE(copy(folder / "a", folder / "x/y\\b"));
    EXPECT_EQ(s_modes, (std::vector<mode_t>{0772, 0750}));
    EXPECT_EQ(modeOf(folder / "x/y"), 0750);
}

// The volume is dropped from the target and not from its folder, which so is not found.
TEST_F(CopyFileReadOnly, StaysAsItIsBehindAVolumePrefix) {
    EXPECT_FALSE(copy(folder / "a", "Disk:" + (folder / "x/b")));
    EXPECT_FALSE(fileIsThere(folder / "x/b"));
    EXPECT_EQ(modeOf(folder / "x"), 0555);
}

TEST_F(CopyFileReadOnly, StaysAsItIsForANameAlone) {
    EXPECT_EQ(chdir((folder / "x").c_str()), 0);
    const bool copied = copy(folder / "a", "b");
    EXPECT_EQ(chdir("/"), 0);
    EXPECT_FALSE(copied);
    EXPECT_TRUE(s_modes.empty());
}

TEST_F(CopyFileReadOnly, LosesAPartialTarget) {
    writeFile(folder / "a", bytesOf(3000000));
    EXPECT_TRUE(whereFilesEndAt(2000000, [&] { return !copy(folder / "a", folder / "x/b"); }));
    EXPECT_FALSE(fileIsThere(folder / "x/b"));
    EXPECT_EQ(modeOf(folder / "x"), 0555);
    EXPECT_TRUE(whereFilesEndAt(3000000, [&] { return copy(folder / "a", folder / "x/b"); }));
}

TEST(CopyFile, RemovesAPartialTarget) {
    TempFolder folder;
    writeFile(folder / "a", bytesOf(3000000));
    EXPECT_TRUE(whereFilesEndAt(2000000, [&] { return !copy(folder / "a", folder / "b"); }));
    EXPECT_FALSE(fileIsThere(folder / "b"));
}

TEST(CopyFile, RemovesAPartialTargetFromAFullDisk) {
    if (!hasTinyDisk()) GTEST_SKIP() << "there is no tiny disk outside a private view";
    TempFolder folder;
    TempFolder tiny(tinyDisk());
    writeFile(folder / "a", bytesOf(200000));
    EXPECT_FALSE(copy(folder / "a", tiny / "b"));
    EXPECT_FALSE(fileIsThere(tiny / "b"));
}

TEST(CopyFile, CopiesOddNames) {
    TempFolder folder;
    for (const std::string name :
         {"a b", "it's", "\"q\"", "100%s%n", "\xC3\xA4", "\xE6\x97\xA5", "-rf"}) {
        writeFile(folder / name, name);
        EXPECT_TRUE(copy(folder / name, folder / name + ".copy")) << name;
        EXPECT_EQ(readFile(folder / name + ".copy"), name);
    }
}

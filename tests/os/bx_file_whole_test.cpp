// BXFile's operations on whole files.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "os/bx_file.h"
#include "tests/os/full_disk.h"
#include "tests/support/temp_folder.h"

namespace {

bool overwrite(const std::string& path, const std::string& bytes) {
    return BXFile::overwrite(path.c_str(), bytes.data(), bytes.size());
}

bool append(const std::string& path, const std::string& bytes) {
    return BXFile::append(path.c_str(), bytes.data(), bytes.size());
}

std::string letters(std::size_t count, char first) {
    std::string text(count, ' ');
    for (std::size_t i = 0; i < count; ++i) text[i] = static_cast<char>(first + i % 23);
    return text;
}

struct stat statusOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
}

// A file of zeros that takes no room on the disk.
void makeHole(const std::string& path, std::int64_t size) {
    writeFile(path, "");
    ASSERT_TRUE(BXFile(path.c_str(), BXFile::Access::ReadWrite).truncate(size));
}

// Takes all the room that is left on the tiny disk.
void fillUp(const std::string& path) {
    while (append(path, std::string(512, 'f'))) {
    }
}

}  // namespace

TEST(ReadWhole, AppendsTheFile) {
    TempFolder folder;
    writeFile(folder / "a", std::string("b\0\r\n", 4));
    std::string contents = "a";
    EXPECT_TRUE(BXFile::readWhole((folder / "a").c_str(), contents));
    EXPECT_EQ(contents, std::string("ab\0\r\n", 5));
}

TEST(ReadWhole, ReadsAnEmptyFile) {
    TempFolder folder;
    writeFile(folder / "a", "");
    std::string contents = "a";
    EXPECT_TRUE(BXFile::readWhole((folder / "a").c_str(), contents));
    EXPECT_EQ(contents, "a");
}

TEST(ReadWhole, RejectsAMissingFileAndKeepsTheContents) {
    TempFolder folder;
    std::string contents = "a";
    EXPECT_FALSE(BXFile::readWhole((folder / "missing").c_str(), contents));
    EXPECT_EQ(contents, "a");
}

TEST(ReadWhole, RejectsOneByteMoreThanTheLimit) {
    TempFolder folder;
    writeFile(folder / "a", "12345");
    std::string contents = "a";
    EXPECT_FALSE(BXFile::readWhole((folder / "a").c_str(), contents, 4));
    EXPECT_EQ(contents, "a");
    EXPECT_TRUE(BXFile::readWhole((folder / "a").c_str(), contents, 5));
    EXPECT_EQ(contents, "a12345");
}

TEST(ReadWhole, RejectsAFileThatTheBuildCannotAddress) {
    if (sizeof(void*) > 4) GTEST_SKIP() << "a 64-bit build can address any file";
    TempFolder folder;
    // As a 32-bit count this would be 5.
    makeHole(folder / "a", (std::int64_t{4} << 30) + 5);
    std::string contents = "a";
    EXPECT_FALSE(BXFile::readWhole((folder / "a").c_str(), contents));
    EXPECT_EQ(contents, "a");
}

TEST(ReadAll, LeavesRoomAroundTheBytes) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    std::size_t size = 0;
    const auto bytes = BXFile((folder / "a").c_str(), BXFile::Access::Read).readAll(size, 2, 1);
    ASSERT_TRUE(bytes);
    ASSERT_EQ(size, 3u);
    bytes[0] = bytes[1] = bytes[5] = '.';
    EXPECT_EQ(std::string(bytes.get(), 6), "..abc.");
}

TEST(ReadAll, ReadsAFileThatIsNotOpenAsEmpty) {
    std::size_t size = 1;
    EXPECT_TRUE(BXFile().readAll(size));
    EXPECT_EQ(size, 0u);
}

TEST(ReadAll, RejectsAFileThatTheBuildCannotAddress) {
    if (sizeof(void*) > 4) GTEST_SKIP() << "a 64-bit build can address any file";
    TempFolder folder;
    makeHole(folder / "a", (std::int64_t{4} << 30) + 5);
    std::size_t size = 0;
    EXPECT_FALSE(BXFile((folder / "a").c_str(), BXFile::Access::Read).readAll(size));
}

TEST(Overwrite, CreatesAMissingFile) {
    TempFolder folder;
    EXPECT_TRUE(overwrite(folder / "a", "abc"));
    EXPECT_EQ(readFile(folder / "a"), "abc");
}

TEST(Overwrite, LeavesExactlyTheNewBytesWhateverTheLengths) {
    TempFolder folder;
    const std::size_t lengths[] = {0, 1, 2, 4095, 4096, 4097, 10000};
    for (const std::size_t before : lengths) {
        for (const std::size_t after : lengths) {
            writeFile(folder / "a", letters(before, 'A'));
            EXPECT_TRUE(overwrite(folder / "a", letters(after, 'a')));
            EXPECT_EQ(readFile(folder / "a"), letters(after, 'a')) << before << " to " << after;
        }
    }
}

TEST(Overwrite, KeepsTheFileItself) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    ASSERT_EQ(chmod((folder / "a").c_str(), 0640), 0);
    const auto before = statusOf(folder / "a");
    EXPECT_TRUE(overwrite(folder / "a", "newer"));
    const auto after = statusOf(folder / "a");
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
}

TEST(Overwrite, WritesThroughALink) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    ASSERT_EQ(symlink("a", (folder / "link").c_str()), 0);
    EXPECT_TRUE(overwrite(folder / "link", "newer"));
    EXPECT_EQ(readFile(folder / "a"), "newer");
}

TEST(Overwrite, WritesAFileThatMayNotBeRead) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    ASSERT_EQ(chmod((folder / "a").c_str(), 0200), 0);
    EXPECT_TRUE(overwrite(folder / "a", "newer"));
    ASSERT_EQ(chmod((folder / "a").c_str(), 0600), 0);
    EXPECT_EQ(readFile(folder / "a"), "newer");
}

TEST(Overwrite, RejectsAMissingFolder) {
    TempFolder folder;
    EXPECT_FALSE(overwrite(folder / "missing/a", "abc"));
}

TEST(Overwrite, TellsWhetherTheFileCouldBeOpened) {
    TempFolder folder;
    bool opened = false;
    EXPECT_TRUE(BXFile::overwrite((folder / "a").c_str(), "abc", 3, opened));
    EXPECT_TRUE(opened);
    EXPECT_FALSE(BXFile::overwrite(folder.path().c_str(), "abc", 3, opened));
    EXPECT_FALSE(opened);
}

TEST(Overwrite, KeepsTheOldBytesWhenTheNewOnesDoNotFit) {
    TempFolder folder;
    writeFile(folder / "a", letters(1000, 'A'));
    EXPECT_TRUE(whereFilesEndAt(4096, [&] {
        bool opened = false;
        const std::string bytes = letters(5000, 'a');
        return !BXFile::overwrite((folder / "a").c_str(), bytes.data(), bytes.size(), opened) &&
               opened;
    }));
    EXPECT_EQ(readFile(folder / "a"), letters(1000, 'A'));
}

TEST(Overwrite, LeavesANewFileEmptyWhenTheBytesDoNotFit) {
    TempFolder folder;
    EXPECT_TRUE(
        whereFilesEndAt(4096, [&] { return !overwrite(folder / "a", letters(5000, 'a')); }));
    EXPECT_EQ(readFile(folder / "a"), "");
}

TEST(Overwrite, KeepsTheOldBytesOnAFullDisk) {
    if (!hasTinyDisk()) GTEST_SKIP() << "there is no tiny disk outside a private view";
    TempFolder folder(tinyDisk());
    writeFile(folder / "a", letters(5000, 'A'));
    fillUp(folder / "filler");
    EXPECT_FALSE(overwrite(folder / "a", letters(20000, 'a')));
    EXPECT_EQ(readFile(folder / "a"), letters(5000, 'A'));
}

TEST(Overwrite, StillWritesWhatFitsOnAFullDisk) {
    if (!hasTinyDisk()) GTEST_SKIP() << "there is no tiny disk outside a private view";
    TempFolder folder(tinyDisk());
    writeFile(folder / "a", letters(5000, 'A'));
    fillUp(folder / "filler");
    EXPECT_TRUE(overwrite(folder / "a", letters(4000, 'a')));
    EXPECT_EQ(readFile(folder / "a"), letters(4000, 'a'));
}

TEST(Append, CreatesAMissingFile) {
    TempFolder folder;
    EXPECT_TRUE(append(folder / "a", "abc"));
    EXPECT_EQ(readFile(folder / "a"), "abc");
}

TEST(Append, AddsAtTheEnd) {
    TempFolder folder;
    writeFile(folder / "a", "ab");
    EXPECT_TRUE(append(folder / "a", "c\n"));
    EXPECT_TRUE(append(folder / "a", ""));
    EXPECT_TRUE(append(folder / "a", "d"));
    EXPECT_EQ(readFile(folder / "a"), "abc\nd");
}

TEST(Append, RejectsWhatDoesNotFit) {
    TempFolder folder;
    writeFile(folder / "a", "ab");
    EXPECT_TRUE(whereFilesEndAt(2, [&] { return !append(folder / "a", "c"); }));
    EXPECT_EQ(readFile(folder / "a"), "ab");
    EXPECT_TRUE(whereFilesEndAt(4, [&] { return !append(folder / "a", "cdef"); }));
    EXPECT_EQ(readFile(folder / "a"), "ab") << "not even what would have fitted";
}

TEST(OpenStream, TakesTheModesOfFopen) {
    TempFolder folder;
    struct Case {
        const char* mode;
        const char* after;  // the file that held "old", after an 'x' was written
    };
    const Case cases[] = {{"wb", "x"},    {"w+b", "x"},   {"ab", "oldx"},
                          {"a+", "oldx"}, {"r+b", "xld"}, {"rb+", "xld"}};
    for (const Case& each : cases) {
        writeFile(folder / "a", "old");
        std::FILE* const stream = BXFile::openStream((folder / "a").c_str(), each.mode);
        ASSERT_NE(stream, nullptr) << each.mode;
        EXPECT_EQ(std::fputc('x', stream), 'x') << each.mode;
        std::fclose(stream);
        EXPECT_EQ(readFile(folder / "a"), each.after) << each.mode;
    }
}

TEST(OpenStream, ReadsWithoutWriting) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    std::FILE* const stream = BXFile::openStream((folder / "a").c_str(), "rb");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fgetc(stream), 'o');
    EXPECT_EQ(std::fputc('x', stream), EOF);
    std::fclose(stream);
    EXPECT_EQ(readFile(folder / "a"), "old");
}

TEST(OpenStream, MakesAFileOfItsOwnWhereTheModeSaysExclusive) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    EXPECT_EQ(BXFile::openStream((folder / "a").c_str(), "wbx"), nullptr);
    EXPECT_EQ(readFile(folder / "a"), "old");
    std::FILE* const stream = BXFile::openStream((folder / "new").c_str(), "wbx");
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
    EXPECT_EQ(readFile(folder / "new"), "");
}

TEST(OpenStream, RejectsUnknownModes) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    EXPECT_EQ(BXFile::openStream((folder / "a").c_str(), ""), nullptr);
    EXPECT_EQ(BXFile::openStream((folder / "a").c_str(), "q"), nullptr);
    EXPECT_EQ(readFile(folder / "a"), "old");
}

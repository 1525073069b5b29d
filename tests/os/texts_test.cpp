// BXDiskServer: small text files, whole and line by line.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>
#include <vector>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"
#include "tests/os/full_disk.h"

namespace {

using Lines = std::vector<std::string>;

// What readFileAsString makes of a file with these bytes.
std::string readBack(const std::string& bytes) {
    TempFolder folder;
    writeFile(folder / "a", bytes);
    BXString result("old");
    EXPECT_TRUE(BXDiskServer::readFileAsString(at(folder, "a"), result));
    return result.c_str();
}

// What readFileAsStringLines makes of it.
Lines linesOf(const std::string& bytes) {
    TempFolder folder;
    writeFile(folder / "a", bytes);
    BXArray<BXString> lines = {"old", "older"};
    EXPECT_TRUE(BXDiskServer::readFileAsStringLines(at(folder, "a"), lines));
    Lines result;
    for (const BXString& line : lines) result.push_back(line.c_str());
    return result;
}

// The loop as it is said: the byte of the last read that worked is looked at once more.
Lines slowLinesOf(const std::string& bytes) {
    Lines lines;
    std::string line;
    for (std::size_t i = 0; !bytes.empty() && i <= bytes.size(); ++i) {
        const char byte = i < bytes.size() ? bytes[i] : bytes.back();
        if (byte == '\n' || byte == '\r') {
            lines.push_back(line);
            line.clear();
        } else {
            line += byte;
        }
    }
    if (!line.empty()) lines.push_back(line);
    return lines;
}

}  // namespace

TEST(ReadFileAsString, DropsControlCharactersAtTheEnd) {
    EXPECT_EQ(readBack("Maya\r\n"), "Maya");
    EXPECT_EQ(readBack("Maya\n\t\x01\x7F\x1F"), "Maya");
    EXPECT_EQ(readBack(std::string("Maya\n\0\0\n", 8)), "Maya");
    EXPECT_EQ(readBack("\n\r\n"), "");
}

TEST(ReadFileAsString, KeepsBlanksAtTheEnd) {
    EXPECT_EQ(readBack("Maya  \n"), "Maya  ");
    EXPECT_EQ(readBack("Maya \n "), "Maya \n ");
}

TEST(ReadFileAsString, KeepsControlCharactersBeforeTheEnd) {
    EXPECT_EQ(readBack("\n\ta\r\nb"), "\n\ta\r\nb");
}

TEST(ReadFileAsString, KeepsBytesBeyondAscii) {
    EXPECT_EQ(readBack("\xC3\xA4\xFF\x80\n"), "\xC3\xA4\xFF\x80");
}

TEST(ReadFileAsString, EndsAtANul) {
    EXPECT_EQ(readBack(std::string("ab\n\0cd\n", 7)), "ab\n") << "what is at the end is after it";
    EXPECT_EQ(readBack(std::string("\0cd", 3)), "");
}

TEST(ReadFileAsString, ReadsAnEmptyFile) {
    EXPECT_EQ(readBack(""), "");
}

TEST(ReadFileAsString, Reads4096Bytes) {
    EXPECT_EQ(readBack(std::string(4096, 'x')), std::string(4096, 'x'));
}

TEST(ReadFileAsString, Rejects4097BytesAndKeepsTheText) {
    TempFolder folder;
    writeFile(folder / "a", std::string(4097, '\n'));
    BXString result("old");
    EXPECT_FALSE(BXDiskServer::readFileAsString(at(folder, "a"), result));
    EXPECT_STREQ(result.c_str(), "old");
}

TEST(ReadFileAsString, RejectsWhatCannotBeReadAndKeepsTheText) {
    TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    BXString result("old");
    EXPECT_FALSE(BXDiskServer::readFileAsString(at(folder, "missing"), result));
    EXPECT_FALSE(BXDiskServer::readFileAsString(text(folder.path()), result));
    EXPECT_FALSE(BXDiskServer::readFileAsString(at(folder, "pipe"), result));
    EXPECT_FALSE(BXDiskServer::readFileAsString(BXString(), result));
    EXPECT_STREQ(result.c_str(), "old");
}

TEST(ReadFileAsString, DropsAVolumePrefix) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    BXString result;
    EXPECT_TRUE(BXDiskServer::readFileAsString(text("Disk:" + (folder / "a")), result));
    EXPECT_STREQ(result.c_str(), "abc");
}

TEST(ReadFileAsString, CanReadIntoItsOwnPath) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    BXString path = at(folder, "a");
    EXPECT_TRUE(BXDiskServer::readFileAsString(path, path));
    EXPECT_STREQ(path.c_str(), "abc");
}

TEST(WriteFileFromString, WritesTheText) {
    TempFolder folder;
    EXPECT_TRUE(BXDiskServer::writeFileFromString(text("Disk:" + (folder / "a")), "a\r\nb "));
    EXPECT_EQ(readFile(folder / "a"), "a\r\nb ");
    EXPECT_TRUE(BXDiskServer::writeFileFromString(at(folder, "a"), "c"));
    EXPECT_EQ(readFile(folder / "a"), "c");
}

// Required(R23)
TEST(WriteFileFromString, EmptiesTheFileForAnEmptyOrTooLongText) {
    TempFolder folder;
    for (const std::size_t length : {std::size_t{0}, std::size_t{4097}, std::size_t{100000}}) {
        writeFile(folder / "a", "old");
        EXPECT_FALSE(
            BXDiskServer::writeFileFromString(at(folder, "a"), text(std::string(length, 'x'))));
        EXPECT_EQ(readFile(folder / "a"), "") << length;
    }
    for (const std::size_t length : {std::size_t{1}, std::size_t{4096}}) {
        EXPECT_TRUE(
            BXDiskServer::writeFileFromString(at(folder, "a"), text(std::string(length, 'x'))));
        EXPECT_EQ(readFile(folder / "a"), std::string(length, 'x'));
    }
}

TEST(WriteFileFromString, CreatesTheFileForAnEmptyTextToo) {
    TempFolder folder;
    EXPECT_FALSE(BXDiskServer::writeFileFromString(at(folder, "a"), BXString()));
    EXPECT_EQ(readFile(folder / "a"), "");
}

TEST(WriteFileFromString, RejectsWhatCannotBeWritten) {
    TempFolder folder;
    EXPECT_FALSE(BXDiskServer::writeFileFromString(text(folder.path()), "a"));
    EXPECT_FALSE(BXDiskServer::writeFileFromString(at(folder, "missing/a"), "a"));
    EXPECT_FALSE(BXDiskServer::writeFileFromString(BXString(), "a"));
}

TEST(WriteFileFromString, RejectsATextThatDoesNotFitOnTheDisk) {
    TempFolder folder;
    EXPECT_TRUE(whereFilesEndAt(100, [&] {
        return !BXDiskServer::writeFileFromString(at(folder, "a"), text(std::string(101, 'x')));
    }));
}

TEST(ReadFileAsStringLines, GivesTheLinesOfMixedBreaks) {
    EXPECT_EQ(linesOf("x\r\ny"), (Lines{"x", "", "yy"}));
    EXPECT_EQ(linesOf("a\rb\nc\n"), (Lines{"a", "b", "c", ""}));
    EXPECT_EQ(linesOf("\n\na\n"), (Lines{"", "", "a", ""}));
}

// Required(R24)
TEST(ReadFileAsStringLines, CountsTheLastByteTwice) {
    EXPECT_EQ(linesOf("a\nb"), (Lines{"a", "bb"}));
    EXPECT_EQ(linesOf("a\n"), (Lines{"a", ""}));
    EXPECT_EQ(linesOf("a\r\n"), (Lines{"a", "", ""}));
    EXPECT_EQ(linesOf("a"), (Lines{"aa"}));
    EXPECT_EQ(linesOf("\n"), (Lines{"", ""}));
}

TEST(ReadFileAsStringLines, GivesAnEmptyListForAnEmptyFile) {
    EXPECT_EQ(linesOf(""), Lines());
}

TEST(ReadFileAsStringLines, KeepsBlanksAndTabs) {
    EXPECT_EQ(linesOf(" a\t\n\t\n"), (Lines{" a\t", "\t", ""}));
}

TEST(ReadFileAsStringLines, ShowsALineUpToItsNul) {
    EXPECT_EQ(linesOf(std::string("a\0b\nc\n", 6)), (Lines{"a", "c", ""}));
}

TEST(ReadFileAsStringLines, ReadsFilesOverTheLimitOfSmallTexts) {
    Lines expected;
    std::string bytes;
    for (int i = 0; i < 20000; ++i) {
        expected.push_back("line " + std::to_string(i));
        bytes += expected.back() + '\n';
    }
    expected.push_back("");
    EXPECT_EQ(linesOf(bytes), expected);
}

TEST(ReadFileAsStringLines, ReadsManyLinesThatEndWithReturnsAlone) {
    std::string bytes;
    for (int i = 0; i < 2000000; ++i) bytes += "12345678\r";
    EXPECT_EQ(linesOf(bytes).size(), 2000001u);
}

TEST(ReadFileAsStringLines, AgreesWithTheLoopOnRandomBytes) {
    std::mt19937 random(24);
    const char letters[] = {'a', 'b', '\n', '\r', ' ', '\xFF'};
    for (int i = 0; i < 500; ++i) {
        std::string bytes(random() % 12, ' ');
        for (char& c : bytes) c = letters[random() % sizeof letters];
        ASSERT_EQ(linesOf(bytes), slowLinesOf(bytes)) << testing::PrintToString(bytes);
    }
}

TEST(ReadFileAsStringLines, DropsAVolumePrefix) {
    TempFolder folder;
    writeFile(folder / "a", "x\n");
    BXArray<BXString> lines;
    EXPECT_TRUE(BXDiskServer::readFileAsStringLines(text("Disk:" + (folder / "a")), lines));
    EXPECT_EQ(lines.size(), 2u);
}

TEST(ReadFileAsStringLines, RejectsWhatCannotBeReadAndKeepsTheLines) {
    TempFolder folder;
    BXArray<BXString> lines = {"old"};
    EXPECT_FALSE(BXDiskServer::readFileAsStringLines(at(folder, "missing"), lines));
    EXPECT_FALSE(BXDiskServer::readFileAsStringLines(text(folder.path()), lines));
    EXPECT_FALSE(BXDiskServer::readFileAsStringLines(BXString(), lines));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_STREQ(lines[0].c_str(), "old");
}

// Rewriting one key.

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "tests/config/config_file.h"
#include "tests/os/full_disk.h"
#include "tests/support/permissions.h"

namespace {

using Parser = BXGenericConfigFileParser;

// Whether it could be opened for writing.
bool replaceIn(const std::string& path, const char* key, const char* value) {
    return Parser::replaceTokenInConfigFile(path.c_str(), key, value, nullptr);
}

}  // namespace

// Required(R31)
TEST(ReplaceToken, MovesTheKeyToTheTopInUpperCase) {
    const ConfigFile file("a=1\nPath=\"/x y\"\n");
    EXPECT_TRUE(file.replace("PATH", "\"/z\""));
    EXPECT_EQ(file.bytes(), "PATH = \"/z\"\na=1\n");
    EXPECT_TRUE(file.replace("a", "2"));
    EXPECT_EQ(file.bytes(), "A = 2\nPATH = \"/z\"\n");
    EXPECT_FALSE(file.replace("b", "3"));
    EXPECT_EQ(file.bytes(), "B = 3\nA = 2\nPATH = \"/z\"\n");
}

TEST(ReplaceToken, DropsEveryOlderLineOfTheKey) {
    const ConfigFile file("k=1\na=1\n K = 2\nk\nkk=3\nk=4");
    EXPECT_TRUE(file.replace("k", "5"));
    EXPECT_EQ(file.bytes(), "K = 5\na=1\nkk=3\n");
}

TEST(ReplaceToken, CreatesAMissingFile) {
    const ConfigFile file;
    EXPECT_FALSE(file.replace("Path", "/x y"));
    EXPECT_EQ(file.bytes(), "PATH = /x y\n");
}

TEST(ReplaceToken, FillsAnEmptyFile) {
    const ConfigFile file("");
    EXPECT_FALSE(file.replace("a", "1"));
    EXPECT_EQ(file.bytes(), "A = 1\n");
}

TEST(ReplaceToken, KeepsTheOtherLinesByteForByte) {
    const std::string others = "# x\r\n\r\n  b\t=  2 \rc=3\n\n\xC3\xA4\xFF=%s\nd";
    const ConfigFile file(others);
    EXPECT_FALSE(file.replace("a", "1"));
    EXPECT_EQ(file.bytes(), "A = 1\n" + others);
}

TEST(ReplaceToken, DropsALineUpToTheNextOne) {
    const ConfigFile file("\n\nb=1\na=1\r\n\r\n\nc=2");
    EXPECT_TRUE(file.replace("a", "2"));
    EXPECT_EQ(file.bytes(), "A = 2\n\n\nb=1\nc=2");
}

TEST(ReplaceToken, WritesTheValueExactlyAsGiven) {
    for (const char* value : {"", " x ", "\"", "a=b", "%s%n", "a\nb", "\xE6\x97\xA5", "'"}) {
        const ConfigFile file("k=old\n");
        EXPECT_TRUE(file.replace("k", value));
        EXPECT_EQ(file.bytes(), std::string("K = ") + value + "\n");
    }
}

TEST(ReplaceToken, WritesAnEmptyKeyWithoutFindingIt) {
    const ConfigFile file("= 1\na=1\n");
    EXPECT_FALSE(file.replace("", "2"));
    EXPECT_EQ(file.bytes(), " = 2\n= 1\na=1\n");
}

TEST(ReplaceToken, LosesNothingBehindANul) {
    const ConfigFile file(std::string("b=2\0\na=3\0x\nc=4\0", 15));
    EXPECT_TRUE(file.replace("a", "5"));
    EXPECT_EQ(file.bytes(), std::string("A = 5\nb=2\0\nc=4\0", 15));
}

TEST(ReplaceToken, ShortensAFileToItsNewLength) {
    const ConfigFile file("k=" + std::string(10000, 'x') + "\na=1\n");
    EXPECT_TRUE(file.replace("k", "y"));
    EXPECT_EQ(file.bytes(), "K = y\na=1\n");
}

TEST(ReplaceToken, NeedsNoFound) {
    const ConfigFile file("a=1\n");
    EXPECT_TRUE(replaceIn(file.path(), "a", "2"));
    EXPECT_EQ(file.bytes(), "A = 2\n");
}

TEST(ReplaceToken, DropsAVolumePrefix) {
    const ConfigFile file;
    EXPECT_TRUE(replaceIn("Disk:" + file.path(), "a", "1"));
    EXPECT_EQ(file.bytes(), "A = 1\n");
}

TEST(ReplaceToken, RejectsWhatCannotBeWritten) {
    TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    bool found = true;
    EXPECT_FALSE(Parser::replaceTokenInConfigFile(folder.path().c_str(), "a", "1", &found));
    EXPECT_FALSE(found);
    EXPECT_FALSE(replaceIn(folder / "missing/a", "a", "1"));
    EXPECT_FALSE(replaceIn(folder / "pipe", "a", "1"));
    EXPECT_FALSE(replaceIn("", "a", "1"));
    EXPECT_FALSE(Parser::replaceTokenInConfigFile(BXString(), "a", "1", nullptr));
}

TEST(ReplaceToken, RejectsAReadOnlyFileAndKeepsIt) {
    const ConfigFile file("a=1\n");
    ASSERT_EQ(chmod(file.path().c_str(), 0400), 0);
    const ObeyPermissions obey;
    EXPECT_FALSE(replaceIn(file.path(), "a", "2"));
    EXPECT_EQ(file.bytes(), "a=1\n");
}

TEST(ReplaceToken, RejectsAFileThatMayNotBeReadAndKeepsItsLines) {
    const ConfigFile file("a=1\n");
    ASSERT_EQ(chmod(file.path().c_str(), 0200), 0);
    {
        const ObeyPermissions obey;
        EXPECT_FALSE(replaceIn(file.path(), "b", "2"));
    }
    ASSERT_EQ(chmod(file.path().c_str(), 0600), 0);
    EXPECT_EQ(file.bytes(), "a=1\n");
}

TEST(ReplaceToken, DoesNotReportAFullDiskAndKeepsTheFile) {
    const ConfigFile file("a=1\n");
    EXPECT_TRUE(whereFilesEndAt(
        100, [&] { return replaceIn(file.path(), "b", std::string(200, 'x').c_str()); }));
    EXPECT_EQ(file.bytes(), "a=1\n");
}

TEST(ReplaceToken, RejectsAFileThatTheBuildCannotAddress) {
    if (sizeof(void*) > 4) GTEST_SKIP() << "a 64-bit build can address any file";
    const ConfigFile file("a=1\n");
    const off_t size = (off_t{4} << 30) + 5;
    ASSERT_EQ(truncate(file.path().c_str(), size), 0);
    EXPECT_FALSE(replaceIn(file.path(), "a", "2"));
    struct stat status = {};
    ASSERT_EQ(stat(file.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_size, size);
    EXPECT_EQ(file.find("a"), "(none)");
}

TEST(ReplaceToken, WritesFilesWithOddNames) {
    TempFolder folder;
    const std::string names[] = {
        "a b", "it's", "\"q\"", "100%s%n", "\xC3\xA4", "\xE6\x97\xA5", std::string(255, 'n')};
    for (const std::string& name : names) {
        EXPECT_TRUE(replaceIn(folder / name, "a", "1")) << name;
        EXPECT_EQ(readFile(folder / name), "A = 1\n") << name;
    }
}

TEST(ReplaceToken, RoundTripsThroughFind) {
    for (const char* value : {"1", "a=b", "\"x\"y", "%n", "\xC3\xA4", "x y"}) {
        const ConfigFile file("b=0\nkey=\"old\"\nkey=older\n");
        file.replace("Key", value);
        EXPECT_EQ(file.find("kEY"), value);
        EXPECT_EQ(file.find("b"), "0");
        file.replace("Key", ("\"" + std::string(value) + "\"").c_str());
        EXPECT_EQ(file.find("kEY"), value) << "in quotes";
    }
}

TEST(ReplaceToken, KeepsTheRestOfAMillionLines) {
    std::string lines;
    for (int i = 0; i < 1000000; ++i) lines += "k" + std::to_string(i) + "=v\n";
    const ConfigFile file(lines);
    EXPECT_TRUE(file.replace("K500000", "new"));
    lines.replace(lines.find("k500000=v\n"), 10, "");
    EXPECT_EQ(file.bytes(), "K500000 = new\n" + lines);
}

TEST(ReplaceToken, AgreesWithTheRuleOnRandomBytes) {
    std::mt19937 random(33);
    const char letters[] = {'a', 'A', 'b', '=', ' ', '\t', '\n', '\r', '"', '\0'};
    int dropped = 0;
    TempFolder folder;
    for (int i = 0; i < 3000; ++i) {
        std::string bytes(random() % 24, ' ');
        for (char& c : bytes) {
            c = i % 8 == 7 ? static_cast<char>(random()) : letters[random() % sizeof letters];
        }
        writeFile(folder / "a", bytes);
        bool found = false;
        ASSERT_TRUE(Parser::replaceTokenInConfigFile((folder / "a").c_str(), "a", "1", &found));

        std::string expected = "A = 1\n";
        bool expectedFound = false;
        BXString key, value;
        for (std::size_t begin = 0; begin < bytes.size();) {
            const std::size_t end = nextLine(bytes, begin);
            const bool drop = Parser::parseALine(&bytes[begin], &bytes[0] + end, key, value) &&
                              key.equalsNoCase("A");
            if (!drop) expected += bytes.substr(begin, end - begin);
            expectedFound |= drop;
            begin = end;
        }
        ASSERT_EQ(readFile(folder / "a"), expected) << testing::PrintToString(bytes);
        ASSERT_EQ(found, expectedFound) << testing::PrintToString(bytes);
        dropped += found;
    }
    EXPECT_GT(dropped, 300);
}

TEST(ReplaceToken, MakesNoFolder) {
    const TempFolder folder;
    EXPECT_FALSE(replaceIn(folder / "missing/a", "a", "1"));
    EXPECT_FALSE(fileIsThere(folder / "missing"));
}

TEST(ReplaceToken, KeepsBlankLinesWhenTheKeyIsEmpty) {
    const ConfigFile file("a=1\n \nb=2\n");
    EXPECT_FALSE(file.replace("", "x"));
    EXPECT_EQ(file.bytes(), " = x\na=1\n \nb=2\n");
}

TEST(ReplaceToken, KeepsAFileThatIsTheBeginningOfTheKey) {
    const ConfigFile file("pat");
    EXPECT_FALSE(file.replace("path", "x"));
    EXPECT_EQ(file.bytes(), "PATH = x\npat");
}

TEST(ReplaceToken, FindsWhatItWroteInRandomFiles) {
    std::mt19937 random(3);
    const ConfigFile file;
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(random() % 200, '\0');
        for (char& byte : bytes) byte = "kK=x \t\r\n\"\xFF\0"[random() % (i % 2 ? 11 : 10)];
        writeFile(file.path(), bytes);
        found += file.replace("k", "value");
        ASSERT_EQ(file.find("K"), "value") << i;
        const std::string once = file.bytes();
        ASSERT_EQ(once.substr(0, 10), "K = value\n");
        // Writing it again drops it with the empty lines that follow it, and nothing else.
        const std::size_t rest = once.find_first_not_of("\r\n", 10);
        file.replace("k", "other");
        ASSERT_EQ(file.bytes(),
                  "K = other\n" + (rest == std::string::npos ? "" : once.substr(rest)));
    }
    EXPECT_GT(found, 200);
}

// Splitting lines for a lookup, and looking up one key.

#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "tests/config/config_file.h"
#include "tests/support/permissions.h"

namespace {

using Parser = BXGenericConfigFileParser;

// "key|value", or "(no key)" with both outputs untouched.
std::string split(const std::string& line) {
    BXString key("old key");
    BXString value("old value");
    if (Parser::parseALine(line.data(), line.data() + line.size(), key, value)) {
        return std::string(key.c_str()) + "|" + value.c_str();
    }
    EXPECT_STREQ(key.c_str(), "old key");
    EXPECT_STREQ(value.c_str(), "old value");
    return "(no key)";
}

}  // namespace

TEST(ParseALine, SplitsAtTheFirstEquals) {
    EXPECT_EQ(split("a=1"), "a|1");
    EXPECT_EQ(split("a=1=2"), "a|1=2");
    EXPECT_EQ(split("a==2"), "a|=2");
}

TEST(ParseALine, DropsBlanksAroundKeyAndValue) {
    EXPECT_EQ(split(" \t a b \t = \t 1 2 \t\r\n"), "a b|1 2");
    EXPECT_EQ(split("a = 1"), split("a=1"));
}

TEST(ParseALine, TakesALineWithoutEqualsAsAKey) {
    EXPECT_EQ(split("a b"), "a b|");
    EXPECT_EQ(split("a="), "a|");
    EXPECT_EQ(split("a = \t\n"), "a|");
}

TEST(ParseALine, RejectsALineWithoutAKey) {
    EXPECT_EQ(split(""), "(no key)");
    EXPECT_EQ(split(" \t\r\n"), "(no key)");
    EXPECT_EQ(split("=1"), "(no key)");
    EXPECT_EQ(split(" \t = 1"), "(no key)");
}

TEST(ParseALine, RejectsNoLine) {
    const char* const text = "a=1";
    BXString key, value;
    EXPECT_FALSE(Parser::parseALine(nullptr, text, key, value));
    EXPECT_FALSE(Parser::parseALine(text + 1, text, key, value));
    EXPECT_FALSE(Parser::parseALine(text, text, key, value));
    EXPECT_FALSE(Parser::parseALine(text, nullptr, key, value));
}

TEST(ParseALine, EndsAtTheEndItIsGiven) {
    const char* const text = "a=123";
    BXString key, value;
    EXPECT_TRUE(Parser::parseALine(text, text + 3, key, value));
    EXPECT_STREQ(value.c_str(), "1");
    EXPECT_TRUE(Parser::parseALine(text, text + 1, key, value));
    EXPECT_STREQ(value.c_str(), "");
}

TEST(ParseALine, KeepsQuotesAndBreaksInside) {
    EXPECT_EQ(split("a=\"1\"\n"), "a|\"1\"");
    EXPECT_EQ(split("\na=1"), "\na|1");
}

// Required(R34)
TEST(ConfigDialects, OnlyTheDispatcherSeparatesAtBlanksAndColons) {
    const BXGenericConfigFileToken token(
        "a",
        [](const char* parameter, void* value) { *static_cast<std::string*>(value) = parameter; },
        nullptr);
    for (const char* line : {"a 1", "a:1", "a\t1"}) {
        std::string value;
        EXPECT_TRUE(token.parseLine(line, &value));
        EXPECT_EQ(value, "1") << line;
        EXPECT_EQ(split(line), std::string(line) + "|") << "all key";
    }
    std::string value;
    EXPECT_TRUE(token.parseLine("a=1", &value));
    EXPECT_EQ(value, "1");
    EXPECT_EQ(split("a=1"), "a|1");
}

TEST(FindToken, FindsAKeyInAnyLetterCaseWithoutItsQuotes) {
    const ConfigFile file("a=1\nPath=\"/x y\"\n");
    EXPECT_EQ(file.find("path"), "/x y");
    EXPECT_EQ(file.find("PATH"), "/x y");
    EXPECT_EQ(file.find("A"), "1");
}

TEST(FindToken, TakesTheFirstLineOfTheKey) {
    const ConfigFile file("b=0\na=1\nA=2\n");
    EXPECT_EQ(file.find("a"), "1");
}

TEST(FindToken, ComparesTheWholeKey) {
    const ConfigFile file("path2=2\npat=0\nmy path=3\n");
    EXPECT_EQ(file.find("path"), "(none)");
    EXPECT_EQ(file.find("my path"), "3");
    EXPECT_EQ(file.find(""), "(none)");
}

TEST(FindToken, FindsAKeyWithoutAValue) {
    const ConfigFile file("a\nb=\n");
    EXPECT_EQ(file.find("a"), "");
    EXPECT_EQ(file.find("b"), "");
}

TEST(FindToken, TakesOnlyOnePairOfQuotesOff) {
    const ConfigFile file("a=\"\"x\"\"\nb=\"\nc=\"\"\nd=\"x\ne=x\"\nf=\"x\" y\n");
    EXPECT_EQ(file.find("a"), "\"x\"");
    EXPECT_EQ(file.find("b"), "\"");
    EXPECT_EQ(file.find("c"), "");
    EXPECT_EQ(file.find("d"), "\"x");
    EXPECT_EQ(file.find("e"), "x\"");
    EXPECT_EQ(file.find("f"), "\"x\" y");
}

TEST(FindToken, ReadsEveryKindOfBreak) {
    const ConfigFile file("\r\n\na=1\rb=2\r\n\r\nc=3\n\rd=4");
    EXPECT_EQ(file.find("a"), "1");
    EXPECT_EQ(file.find("b"), "2");
    EXPECT_EQ(file.find("c"), "3");
    EXPECT_EQ(file.find("d"), "4");
}

TEST(FindToken, FoldsAsciiLettersAlone) {
    const ConfigFile file("\xC3\xA4=1\n[=2\n");
    EXPECT_EQ(file.find("\xC3\xA4"), "1");
    EXPECT_EQ(file.find("\xC3\x84"), "(none)");
    EXPECT_EQ(file.find("{"), "(none)");
}

TEST(FindToken, ReadsAValueUpToItsNul) {
    const ConfigFile file(std::string("a=1\nb=\"2\"\0x\nc=3\n", 16));
    EXPECT_EQ(file.find("a"), "1");
    EXPECT_EQ(file.find("b"), "2");
    EXPECT_EQ(file.find("c"), "3");
}

TEST(FindToken, ReadsAKeyUpToItsNul) {
    const ConfigFile file(std::string("ab\0c=1\n", 7));
    EXPECT_EQ(file.find("ab"), "1");
    EXPECT_EQ(file.find("a"), "(none)");
}

TEST(FindToken, FindsNothingInAFileThatIsEmptyOrCannotBeRead) {
    EXPECT_EQ(ConfigFile("").find("a"), "(none)");
    EXPECT_EQ(ConfigFile().find("a"), "(none)");
    const ConfigFile folder;
    makeFolders(folder.path());
    EXPECT_EQ(folder.find("a"), "(none)");
    const ConfigFile pipe;
    ASSERT_EQ(mkfifo(pipe.path().c_str(), 0600), 0);
    EXPECT_EQ(pipe.find("a"), "(none)");
    bool found = true;
    EXPECT_TRUE(Parser::findTokenInConfigFile(BXString(), "a", &found).isEmpty());
    EXPECT_FALSE(found);
}

TEST(FindToken, FindsNothingInAFileThatMayNotBeRead) {
    const ConfigFile file("a=1\n");
    ASSERT_EQ(chmod(file.path().c_str(), 0), 0);
    const ObeyPermissions obey;
    EXPECT_EQ(file.find("a"), "(none)");
}

TEST(FindToken, NeedsNoFound) {
    const ConfigFile file("a=1\n");
    EXPECT_STREQ(Parser::findTokenInConfigFile(file.path().c_str(), "a", nullptr).c_str(), "1");
    EXPECT_TRUE(Parser::findTokenInConfigFile(file.path().c_str(), "b", nullptr).isEmpty());
}

TEST(FindToken, DropsAVolumePrefix) {
    const ConfigFile file("a=1\n");
    const std::string path = "Disk:" + file.path();
    EXPECT_STREQ(Parser::findTokenInConfigFile(path.c_str(), "a", nullptr).c_str(), "1");
}

TEST(FindToken, AgreesWithParseALineOnRandomBytes) {
    std::mt19937 random(32);
    const char letters[] = {'a', 'A', 'b', '=', ' ', '\t', '\n', '\r', '"', '\0'};
    int matches = 0;
    TempFolder folder;
    for (int i = 0; i < 3000; ++i) {
        std::string bytes(1 + random() % 24, ' ');
        for (char& c : bytes) {
            c = i % 8 == 7 ? static_cast<char>(random()) : letters[random() % sizeof letters];
        }
        writeFile(folder / "a", bytes);
        bool found = false;
        const BXString value = Parser::findTokenInConfigFile((folder / "a").c_str(), "a", &found);

        // The lines one after the other, each split and compared as texts.
        bool expected = false;
        BXString key, expectedValue;
        for (std::size_t begin = 0; begin < bytes.size() && !expected;) {
            const std::size_t end = nextLine(bytes, begin);
            expected = Parser::parseALine(&bytes[begin], &bytes[0] + end, key, expectedValue) &&
                       key.equalsNoCase("A");
            begin = end;
        }
        ASSERT_EQ(found, expected) << testing::PrintToString(bytes);
        if (expected && expectedValue.length() >= 2) expectedValue = expectedValue.unquoted();
        if (expected) {
            ASSERT_EQ(value, expectedValue) << testing::PrintToString(bytes);
        }
        matches += found;
    }
    EXPECT_GT(matches, 300);
}

TEST(FindToken, SeparatesAtAnEqualsSignAlone) {
    const ConfigFile file("a: 1\nb 2\n");
    EXPECT_EQ(file.find("a"), "(none)");
    EXPECT_EQ(file.find("a: 1"), "");
    EXPECT_EQ(file.find("b 2"), "");
}

TEST(FindToken, FindsNoEmptyKey) {
    EXPECT_EQ(ConfigFile("a=1\n \nb=2\n").find(""), "(none)");
    EXPECT_EQ(ConfigFile("\n\na=1\n").find(""), "(none)");
    EXPECT_EQ(ConfigFile("= 1\n").find(""), "(none)");
}

TEST(FindToken, FindsNoKeyThatTheFileOnlyBegins) {
    EXPECT_EQ(ConfigFile("pat").find("path"), "(none)");
    EXPECT_EQ(ConfigFile("a=b").find("a=b"), "(none)");
}

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/temp_folder.h"

namespace {

using Parser = BXGenericConfigFileParser;

class ConfigFileTokens : public testing::Test {
protected:
    std::string path() const { return m_folder / "file.txt"; }
    BXString file() const { return path().c_str(); }

    // The value found, or "none".
    std::string find(const char* key) {
        bool found = true;
        const BXString value = Parser::findTokenInConfigFile(file(), key, &found);
        return found ? value.c_str() : "none";
    }

    std::string replaced(const std::string& before, const char* key, const char* value) {
        writeFile(path(), before);
        EXPECT_TRUE(Parser::replaceTokenInConfigFile(file(), key, value, &m_found));
        return readFile(path());
    }

    TempFolder m_folder;
    bool m_found = false;
};

const std::string kTwoLines = "a=1\nPath= \"/x y\"\n";

}  // namespace

TEST_F(ConfigFileTokens, AreFoundInAnyLetterCaseWithoutTheirQuotes) {
    writeFile(path(), kTwoLines);
    EXPECT_EQ(find("path"), "/x y");
    EXPECT_EQ(find("A"), "1");
    EXPECT_EQ(find("b"), "none");
}

// Required(R31)
TEST_F(ConfigFileTokens, MoveToTheTopInUpperCaseWhenReplaced) {
    EXPECT_EQ(replaced(kTwoLines, "PATH", "\"/z\""), "PATH = \"/z\"\na=1\n");
    EXPECT_TRUE(m_found);
    EXPECT_EQ(replaced("x = 1\n", "new_Key", "v"), "NEW_KEY = v\nx = 1\n");
    EXPECT_FALSE(m_found);
}

TEST_F(ConfigFileTokens, AreWrittenOnceWhereTheyStoodTwice) {
    EXPECT_EQ(replaced("k = 1\nx\nK=2\ny\n k \n", "k", "3"), "K = 3\nx\ny\n");
    EXPECT_TRUE(m_found);
}

TEST_F(ConfigFileTokens, CreateAMissingFile) {
    EXPECT_TRUE(Parser::replaceTokenInConfigFile(file(), "k", "v", &m_found));
    EXPECT_EQ(readFile(path()), "K = v\n");
    EXPECT_FALSE(m_found);
}

TEST_F(ConfigFileTokens, KeepOtherLinesByteForByte) {
    const std::string others("\r\n x = 1 \r\ny\t=2\r\r\nz\0z\nlast", 27);
    EXPECT_EQ(replaced(others, "k", "v"), "K = v\n" + others);
    EXPECT_EQ(replaced("a\r\nk=1\r\nb", "k", "v"), "K = v\na\r\nb");
}

TEST_F(ConfigFileTokens, TakeTheirFirstLineWhenLookedUp) {
    writeFile(path(), "k = 1\nk = 2\n");
    EXPECT_EQ(find("k"), "1");
}

TEST_F(ConfigFileTokens, AreSeparatedByAnEqualsSignAlone) {
    writeFile(path(), "a: 1\nb 2\nc\t=\t3\n");
    EXPECT_EQ(find("a"), "none");
    EXPECT_EQ(find("b"), "none");
    EXPECT_EQ(find("c"), "3");
    EXPECT_EQ(find("b 2"), "");
}

TEST_F(ConfigFileTokens, LoseOnePairOfQuotesAndNoHalfOfOne) {
    writeFile(path(), "a = \"\"x\"\"\nb = \"\nc = \"\"\nd = \"x\n");
    EXPECT_EQ(find("a"), "\"x\"");
    EXPECT_EQ(find("b"), "\"");
    EXPECT_EQ(find("c"), "");
    EXPECT_EQ(find("d"), "\"x");
}

TEST_F(ConfigFileTokens, AreNotFoundInAMissingOrEmptyFile) {
    EXPECT_EQ(find("k"), "none");
    writeFile(path(), "");
    EXPECT_EQ(find("k"), "none");
    EXPECT_TRUE(Parser::findTokenInConfigFile(file(), "k", nullptr).isEmpty());
}

TEST_F(ConfigFileTokens, AreNotWrittenWhereTheFileCannotBeOpened) {
    m_found = true;
    EXPECT_FALSE(
        Parser::replaceTokenInConfigFile((m_folder / "no/file").c_str(), "k", "v", &m_found));
    EXPECT_FALSE(m_found);
    EXPECT_FALSE(Parser::replaceTokenInConfigFile(m_folder.path().c_str(), "k", "v", nullptr));
    EXPECT_FALSE(Parser::replaceTokenInConfigFile(BXString(), "k", "v", nullptr));
    EXPECT_FALSE(fileIsThere(m_folder / "no"));
}

TEST_F(ConfigFileTokens, PassTheirPathThroughTheValidOne) {
    writeFile(path(), "k = 1\n");
    EXPECT_EQ(Parser::findTokenInConfigFile(("Disk:" + path()).c_str(), "k", nullptr),
              BXString("1"));
}

TEST_F(ConfigFileTokens, FindWhatTheyWroteInRandomFiles) {
    std::mt19937 random(3);
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(random() % 200, '\0');
        for (char& byte : bytes) byte = "kK=x \t\r\n\"\xFF\0"[random() % (i % 2 ? 11 : 10)];
        replaced(bytes, "k", "value");
        found += m_found;
        ASSERT_EQ(find("K"), "value") << i;
        ASSERT_EQ(readFile(path()).substr(0, 10), "K = value\n");
        // Writing it again drops it with the empty lines that follow it, and nothing else.
        const std::string once = readFile(path());
        const std::size_t rest = once.find_first_not_of("\r\n", 10);
        const std::string kept = rest == std::string::npos ? "" : once.substr(rest);
        ASSERT_EQ(replaced(once, "k", "other"), "K = other\n" + kept) << i;
    }
    EXPECT_GT(found, 200);
}

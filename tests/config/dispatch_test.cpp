#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/temp_folder.h"

namespace {

using Calls = std::vector<std::string>;

template <char tag>
void note(const char* parameter, void* calls) {
    static_cast<Calls*>(calls)->push_back(std::string(1, tag) + ":" + parameter);
}

class Dispatch : public testing::Test {
protected:
    Calls parse(const std::string& text) {
        writeFile(m_folder / "file", text);
        Calls calls;
        m_read = m_parser.parseFile((m_folder / "file").c_str(), &calls);
        return calls;
    }

    TempFolder m_folder;
    BXGenericConfigFileParser m_parser;
    bool m_read = false;
};

}  // namespace

TEST_F(Dispatch, GivesALongerKeyItsLineWhenItWasAddedLast) {
    m_parser.addToken("NAME", note<'n'>);
    m_parser.addToken("NAMESPACE", note<'s'>);
    EXPECT_EQ(parse("NAMESPACE x\n"), Calls{"s:x"});
}

// Required(R30)
TEST_F(Dispatch, GivesALongerKeysLineToTheShorterOneAddedLast) {
    m_parser.addToken("NAMESPACE", note<'s'>);
    m_parser.addToken("NAME", note<'n'>);
    EXPECT_EQ(parse("NAMESPACE x\n"), Calls{"n:SPACE x"});
    EXPECT_EQ(parse("NAMES 3\n"), Calls{"n:S 3"});
}

// Required(R30)
TEST_F(Dispatch, CallsForAKeyAloneAndNotForAKeyWithSeparatorsOnly) {
    m_parser.addToken("NAME", note<'n'>);
    EXPECT_EQ(parse("NAME\n"), Calls{"n:"});
    EXPECT_EQ(parse("NAME =\n"), Calls{});
    EXPECT_EQ(parse("NAME:\n"), Calls{});
}

TEST_F(Dispatch, SkipsEverySeparatorAfterTheKey) {
    m_parser.addToken("NAME", note<'n'>);
    EXPECT_EQ(parse("NAME =:\t= a = b\n"), Calls{"n:a = b"});
    EXPECT_EQ(parse("name:x"), Calls{"n:x"});
}

TEST_F(Dispatch, TrimsLinesAndTakesEveryKindOfBreak) {
    m_parser.addToken("A", note<'a'>);
    EXPECT_EQ(parse(" \tA 1 \t\r\nA 2\rA 3\n\n\nA 4"), (Calls{"a:1", "a:2", "a:3", "a:4"}));
}

TEST_F(Dispatch, IgnoresLinesThatNoKeyTakes) {
    m_parser.addToken("A", note<'a'>);
    EXPECT_EQ(parse("# comment\n\nB 1\n"), Calls{});
    EXPECT_TRUE(m_read);
}

TEST_F(Dispatch, EndsAtANul) {
    m_parser.addToken("A", note<'a'>);
    EXPECT_EQ(parse(std::string("A 1\n\0A 2\n", 9)), Calls{"a:1"});
}

TEST_F(Dispatch, RejectsAMissingAndAnEmptyFileAndAFolder) {
    EXPECT_FALSE(m_parser.parseFile("/no/such/file", nullptr));
    parse("");
    EXPECT_FALSE(m_read);
    EXPECT_FALSE(m_parser.parseFile(m_folder.path().c_str(), nullptr));
    EXPECT_FALSE(m_parser.parseFile(BXString(), nullptr));
}

TEST_F(Dispatch, CopiesItsKeysInTheirOrder) {
    m_parser.addToken("NAME", note<'n'>);
    m_parser.addToken("NAMESPACE", note<'s'>);
    BXGenericConfigFileParser copy(m_parser), assigned;
    assigned.addToken("X", note<'x'>);
    assigned = copy;
    writeFile(m_folder / "file", "NAMESPACE a\nNAME b\nX c\n");
    for (BXGenericConfigFileParser* parser : {&copy, &assigned}) {
        Calls calls;
        EXPECT_TRUE(parser->parseFile((m_folder / "file").c_str(), &calls));
        EXPECT_EQ(calls, (Calls{"s:a", "n:b"}));
    }
}

TEST_F(Dispatch, SurvivesRandomBytes) {
    m_parser.addToken("A", note<'a'>);
    std::mt19937 random(7);
    std::size_t calls = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(1 + random() % 300, '\0');
        for (char& byte : bytes) byte = "Aa=: \t\r\n\xFFx\0"[random() % (i % 2 ? 11 : 10)];
        calls += parse(bytes).size();
    }
    EXPECT_GT(calls, 2000u);
}

TEST(ConfigLines, EndAtANulOrABreak) {
    const char* const text = "ab\r\n\ncd";
    EXPECT_EQ(BXGenericConfigFileParser::findEndOfLine(text), text + 2);
    EXPECT_EQ(BXGenericConfigFileParser::findEndOfLine(text + 5), text + 7);
    EXPECT_EQ(BXGenericConfigFileParser::findEndOfLine(nullptr), nullptr);
    EXPECT_EQ(BXGenericConfigFileParser::findNextLine(text), text + 5);
    EXPECT_EQ(BXGenericConfigFileParser::findNextLine(text + 5), nullptr);
    EXPECT_EQ(BXGenericConfigFileParser::findNextLine("ab\n"), nullptr);
    EXPECT_EQ(BXGenericConfigFileParser::findNextLine(nullptr), nullptr);
}

TEST(ConfigLines, SplitAtTheirFirstEqualsSign) {
    const auto split = [](const std::string& line) {
        BXString key("old"), value("old");
        if (!BXGenericConfigFileParser::parseALine(line.data(), line.data() + line.size(), key,
                                                   value)) {
            return std::string("no key");
        }
        return std::string(key.c_str()) + "|" + value.c_str();
    };
    EXPECT_EQ(split(" key \t=  a = b \r\n"), "key|a = b");
    EXPECT_EQ(split("key=value"), "key|value");
    EXPECT_EQ(split("key word"), "key word|");
    EXPECT_EQ(split("key ="), "key|");
    EXPECT_EQ(split("= value"), "no key");
    EXPECT_EQ(split(" \t\r\n"), "no key");
    EXPECT_EQ(split(""), "no key");
    EXPECT_EQ(split("key:a\tb"), "key:a\tb|");
    BXString key, value;
    EXPECT_FALSE(BXGenericConfigFileParser::parseALine(nullptr, nullptr, key, value));
}

TEST_F(Dispatch, FoldsAsciiLettersAndNoOtherByte) {
    m_parser.addToken("a[", note<'b'>);
    m_parser.addToken("a@", note<'a'>);
    m_parser.addToken("a\xC3\xA4", note<'u'>);
    EXPECT_EQ(parse("A[ 1\nA@ 2\nA\xC3\xA4 3\n"), (Calls{"b:1", "a:2", "u:3"}));
    EXPECT_EQ(parse("a{ 1\na` 2\na\xC3\x84 3\n"), Calls{});
}

TEST_F(Dispatch, ReadsTheFirstLineBehindALeadingBreak) {
    m_parser.addToken("A", note<'a'>);
    EXPECT_EQ(parse("\nA 1\n"), Calls{"a:1"});
    EXPECT_EQ(parse("\r\n\r\nA 1\n"), Calls{"a:1"});
    const char* const text = "\nab\ncd";
    EXPECT_EQ(BXGenericConfigFileParser::findNextLine(text), text + 1);
}

TEST_F(Dispatch, KeepsWhatIsNoSeparatorInTheParameter) {
    m_parser.addToken("A", note<'a'>);
    EXPECT_EQ(parse("A ,1\nA;2\nA .3\nA \"4\n"), (Calls{"a:,1", "a:;2", "a:.3", "a:\"4"}));
}

// One key and one line, and what of dispatching whole files hangs on the lines.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/temp_folder.h"

namespace {

using Calls = std::vector<std::string>;
using Parser = BXGenericConfigFileParser;

void note(const char* key, const char* parameter, void* userData) {
    static_cast<Calls*>(userData)->push_back(std::string(key) + "<" + parameter + ">");
}

void onName(const char* parameter, void* userData) {
    note("NAME", parameter, userData);
}

void onNamespace(const char* parameter, void* userData) {
    note("NAMESPACE", parameter, userData);
}

void onOther(const char* parameter, void* userData) {
    note("other", parameter, userData);
}

// The calls that a file with these bytes leads to.
Calls callsFor(const Parser& parser, const std::string& bytes) {
    TempFolder folder;
    writeFile(folder / "a", bytes);
    Calls calls;
    EXPECT_EQ(parser.parseFile((folder / "a").c_str(), &calls), !bytes.empty());
    return calls;
}

Calls nameCallsFor(const std::string& bytes) {
    Parser parser;
    parser.addToken("NAME", onName);
    return callsFor(parser, bytes);
}

// What the token NAME makes of one line; "not mine" when it leaves it.
std::string nameCallFor(const char* line) {
    const BXGenericConfigFileToken token("Name", onName, nullptr);
    Calls calls;
    if (!token.parseLine(line, &calls)) return calls.empty() ? "not mine" : "called";
    return calls.empty() ? "no call" : calls[0];
}

}  // namespace

TEST(ConfigToken, HoldsWhatItIsGiven) {
    BXGenericConfigFileToken last("b", onOther, nullptr);
    const BXGenericConfigFileToken first("a", onName, &last);
    EXPECT_STREQ(first.name.c_str(), "a");
    EXPECT_EQ(first.callback, &onName);
    EXPECT_EQ(first.next, &last);
}

TEST(ConfigToken, TakesItsKeyInAnyLetterCase) {
    EXPECT_EQ(nameCallFor("NAME x"), "NAME<x>");
    EXPECT_EQ(nameCallFor("name x"), "NAME<x>");
    EXPECT_EQ(nameCallFor("NaMe x"), "NAME<x>");
}

TEST(ConfigToken, LeavesOtherLines) {
    EXPECT_EQ(nameCallFor(""), "not mine");
    EXPECT_EQ(nameCallFor("NAM"), "not mine");
    EXPECT_EQ(nameCallFor("NAM x"), "not mine");
    EXPECT_EQ(nameCallFor(" NAME x"), "not mine");
    EXPECT_EQ(nameCallFor(nullptr), "not mine");
}

TEST(ConfigToken, SkipsEveryKindOfSeparator) {
    EXPECT_EQ(nameCallFor("NAME=x"), "NAME<x>");
    EXPECT_EQ(nameCallFor("NAME:x"), "NAME<x>");
    EXPECT_EQ(nameCallFor("NAME\tx"), "NAME<x>");
    EXPECT_EQ(nameCallFor("NAME \t:= =:x = y"), "NAME<x = y>");
}

TEST(ConfigToken, CallsForTheKeyAlone) {
    EXPECT_EQ(nameCallFor("NAME"), "NAME<>");
}

// Required(R30)
TEST(ConfigToken, NeedsNoSeparatorAfterTheKey) {
    EXPECT_EQ(nameCallFor("NAMES 3"), "NAME<S 3>");
    EXPECT_EQ(nameCallFor("NAME3"), "NAME<3>");
    EXPECT_EQ(nameCallFor("NAME\"x\""), "NAME<\"x\">");
    EXPECT_EQ(nameCallFor("NAM ES 3"), "not mine");
}

// Required(R30)
TEST(ConfigToken, TakesAKeyWithSeparatorsAloneWithoutACall) {
    for (const char* line : {"NAME ", "NAME =", "NAME=", "NAME:", "NAME\t : ="}) {
        EXPECT_EQ(nameCallFor(line), "no call") << line;
    }
    EXPECT_EQ(nameCallFor("NAME"), "NAME<>");
    EXPECT_EQ(nameCallFor("NAME= ;"), "NAME<;>");
}

TEST(ConfigParser, StopsAtTheFirstKeyThatTakesALine) {
    Parser parser;
    parser.addToken("NAME", onName);
    parser.addToken("NAME", onOther);
    EXPECT_EQ(callsFor(parser, "NAME x"), (Calls{"other<x>"}));
    // Taken without a call is taken too.
    EXPECT_EQ(callsFor(parser, "NAME ="), Calls());
}

TEST(ConfigParser, TrimsALineBeforeItAsks) {
    // The blank is gone by then, so the key stands alone.
    EXPECT_EQ(nameCallsFor("NAME \t\n"), (Calls{"NAME<>"}));
    EXPECT_EQ(nameCallsFor(" \t NAME = x y \t\n"), (Calls{"NAME<x y>"}));
}

TEST(ConfigParser, HandsBytesBeyondAsciiOn) {
    EXPECT_EQ(nameCallsFor("NAME=\xC3\xA4\xE6\x97\xA5\xFF%s\n"),
              (Calls{"NAME<\xC3\xA4\xE6\x97\xA5\xFF%s>"}));
}

TEST(ConfigParser, RejectsAFileThatIsEmptyOrCannotBeRead) {
    TempFolder folder;
    writeFile(folder / "empty", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    Parser parser;
    parser.addToken("", onName);
    Calls calls;
    EXPECT_FALSE(parser.parseFile((folder / "empty").c_str(), &calls));
    EXPECT_FALSE(parser.parseFile((folder / "missing").c_str(), &calls));
    EXPECT_FALSE(parser.parseFile((folder / "pipe").c_str(), &calls));
    EXPECT_FALSE(parser.parseFile(folder.path().c_str(), &calls));
    EXPECT_FALSE(parser.parseFile(BXString(), &calls));
    EXPECT_EQ(calls, Calls());
}

TEST(ConfigParser, DropsAVolumePrefix) {
    TempFolder folder;
    writeFile(folder / "a", "NAME x");
    Parser parser;
    parser.addToken("NAME", onName);
    Calls calls;
    EXPECT_TRUE(parser.parseFile(("Disk:" + (folder / "a")).c_str(), &calls));
    EXPECT_EQ(calls, (Calls{"NAME<x>"}));
}

TEST(ConfigParser, AssignmentReplacesTheKeys) {
    Parser one;
    one.addToken("NAME", onName);
    Parser other;
    other.addToken("NAME", onOther);
    other = one;
    EXPECT_EQ(callsFor(other, "NAME y"), (Calls{"NAME<y>"}));
    const Parser& same = other;
    other = same;
    EXPECT_EQ(callsFor(other, "NAME y"), (Calls{"NAME<y>"}));
    other = Parser();
    EXPECT_EQ(callsFor(other, "NAME y"), Calls());
}

TEST(ConfigParser, CopiesHaveTheirOwnKeysInTheSameOrder) {
    Parser original;
    original.addToken("NAME", onName);
    original.addToken("NAMESPACE", onNamespace);
    Parser copy(original);
    original.addToken("NAME", onOther);
    EXPECT_EQ(callsFor(copy, "NAMESPACE x\nNAME y"), (Calls{"NAMESPACE<x>", "NAME<y>"}));
    EXPECT_EQ(callsFor(original, "NAME y"), (Calls{"other<y>"}));
}

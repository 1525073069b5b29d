#include "config/line_walker.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text) {
    Lines lines;
    BXLineWalker walker(text.data(), text.data() + text.size());
    const char* begin;
    const char* end;
    while (walker.next(begin, end)) lines.emplace_back(begin, end);
    return lines;
}

// The rule, byte by byte.
Lines slowLinesOf(const std::string& text) {
    const auto isBreak = [&](std::size_t i) { return text[i] == '\n' || text[i] == '\r'; };
    Lines lines;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t next = begin;
        while (next < text.size() && !isBreak(next)) ++next;
        while (next < text.size() && isBreak(next)) ++next;
        lines.push_back(text.substr(begin, next - begin));
        begin = next;
    }
    return lines;
}

std::string trimmed(const std::string& text) {
    const char* begin = text.data();
    const char* end = begin + text.size();
    return trimLine(begin, end) ? std::string(begin, end) : "nothing";
}

}  // namespace

TEST(LineWalker, RunsALineUpToTheStartOfTheNext) {
    EXPECT_EQ(linesOf("a\nb\r\n\r\nc"), (Lines{"a\n", "b\r\n\r\n", "c"}));
    EXPECT_EQ(linesOf("\n\na\r"), (Lines{"\n\n", "a\r"}));
    EXPECT_EQ(linesOf(""), Lines{});
}

TEST(LineWalker, TakesANulForACharacter) {
    const std::string text("a\n\0b\nc\0\n", 8);
    EXPECT_EQ(linesOf(text), (Lines{"a\n", text.substr(2, 3), text.substr(5)}));
}

TEST(LineWalker, TrimsBreaksAtTheEndAndBlanksAtBothEnds) {
    EXPECT_EQ(trimmed(" \ta b \t\r\n"), "a b");
    EXPECT_EQ(trimmed("\na"), "\na");
    EXPECT_EQ(trimmed(" \r\n"), "nothing");
    EXPECT_EQ(trimmed(""), "nothing");
}

TEST(LineWalker, FindsNoLineInNoText) {
    BXLineWalker walker(nullptr, nullptr);
    const char* begin;
    const char* end;
    EXPECT_FALSE(walker.next(begin, end));
}

TEST(LineWalker, StopsAtTheEndItIsGiven) {
    const std::string text = "a\nbc\n";
    BXLineWalker walker(text.data(), text.data() + 3);
    const char* begin;
    const char* end;
    ASSERT_TRUE(walker.next(begin, end));
    ASSERT_TRUE(walker.next(begin, end));
    EXPECT_EQ(std::string(begin, end), "b");
    EXPECT_FALSE(walker.next(begin, end));
}

TEST(LineWalker, AgreesWithTheRuleOnRandomBytes) {
    std::mt19937 random(30);
    const char letters[] = {'a', '\n', '\r', '=', ' ', '\0', '\xFF'};
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 16, ' ');
        for (char& c : text) c = letters[random() % (i % 2 ? 4 : sizeof letters)];
        ASSERT_EQ(linesOf(text), slowLinesOf(text)) << testing::PrintToString(text);
    }
}

TEST(LineWalker, WalksManyLinesOfEitherBreakInOnePass) {
    // Searched to its end for every line, this much text would outlast any patience.
    constexpr int kLines = 4000000;
    for (const char* lineBreak : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (int i = 0; i < kLines; ++i) text.append("x").append(lineBreak);
        BXLineWalker walker(text.data(), text.data() + text.size());
        const char* begin;
        const char* end;
        int lines = 0;
        while (walker.next(begin, end)) ++lines;
        EXPECT_EQ(lines, kLines);
    }
}

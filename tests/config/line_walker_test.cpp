#include "config/line_walker.h"

#include <gtest/gtest.h>

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

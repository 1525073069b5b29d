#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/locale.h"

using Parser = BXGenericConfigFileParser;

TEST(ConfigParams, ReadOnlyTheWordsForNoAsFalse) {
    for (const char* no : {"No", "0", "False", "#f", "NO", "no", "FALSE", "#F"}) {
        EXPECT_FALSE(Parser::paramToBool(no)) << no;
    }
}

// Required(R32)
TEST(ConfigParams, ReadUnknownWordsAndTheEmptyTextAsTrue) {
    for (const char* yes : {"", "Yes", "1", "word", "00", "No ", "nope", "off"}) {
        EXPECT_TRUE(Parser::paramToBool(yes)) << yes;
    }
    EXPECT_TRUE(Parser::paramToBool(nullptr));
    EXPECT_FALSE(Parser::paramToBool("no"));
}

TEST(ConfigParams, LeaveUnknownWordsToTheDefault) {
    for (const char* no : {"No", "0", "FALSE", "#f"}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(no), 0) << no;
    }
    for (const char* yes : {"Yes", "1", "TRUE", "#T"}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(yes), 1) << yes;
    }
    for (const char* other : {"", "word", "2", "Yes "}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(other), -1) << other;
    }
}

TEST(ConfigParams, CutNumbersTowardZero) {
    EXPECT_EQ(Parser::paramToInt("3.9"), 3);
    EXPECT_EQ(Parser::paramToInt("-3.9"), -3);
    EXPECT_EQ(Parser::paramToInt("  12abc"), 12);
    EXPECT_EQ(Parser::paramToInt("1e3"), 1000);
}

TEST(ConfigParams, HoldNumbersInTheIntegerRange) {
    EXPECT_EQ(Parser::paramToInt("1e30"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("-1e30"), INT_MIN);
    EXPECT_EQ(Parser::paramToInt("2147483648"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("-2147483648"), INT_MIN);
    EXPECT_EQ(Parser::paramToInt("inf"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("nan"), 0);
}

TEST(ConfigParams, GiveZeroForATextThatStartsWithNoNumber) {
    for (const char* text : {"", "word", "-", "."}) {
        EXPECT_EQ(Parser::paramToInt(text), 0) << text;
        EXPECT_EQ(Parser::paramToFloat(text), 0.0f) << text;
    }
    EXPECT_EQ(Parser::paramToInt(nullptr), 0);
    EXPECT_EQ(Parser::paramToFloat(nullptr), 0.0f);
}

TEST(ConfigParams, ReadAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_EQ(Parser::paramToFloat("2.75"), 2.75f);
    EXPECT_EQ(Parser::paramToFloat("2,75"), 2.0f);
}

TEST(ConfigParams, TakeTheQuotesOffAText) {
    EXPECT_EQ(Parser::paramToString("\"a b\""), BXString("a b"));
    EXPECT_EQ(Parser::paramToString("\"open"), BXString("open"));
    EXPECT_EQ(Parser::paramToString("close\""), BXString("close\""));
    EXPECT_EQ(Parser::paramToString("plain"), BXString("plain"));
    EXPECT_EQ(Parser::paramToString("\"\"\"x\"\""), BXString("\"\"x\""));
}

TEST(ConfigParams, TakeALoneQuoteForTheEmptyText) {
    for (const char* text : {"\"", "", "\"\""}) {
        EXPECT_TRUE(Parser::paramToString(text).isEmpty()) << text;
    }
    EXPECT_TRUE(Parser::paramToString(nullptr).isEmpty());
}

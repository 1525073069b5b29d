// The conversions of a parameter's text.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/locale.h"

using Parser = BXGenericConfigFileParser;

TEST(ParamToBool, IsFalseForTheWordsOfNo) {
    for (const char* word : {"No", "0", "False", "#f", "NO", "no", "FALSE", "fAlSe", "#F"}) {
        EXPECT_FALSE(Parser::paramToBool(word)) << word;
    }
}

// Required(R32)
TEST(ParamToBool, IsTrueForEverythingElse) {
    for (const char* word : {"", "Yes", "1", "2", "00", "0.0", "off", "Nope", "N", " No", "No ",
                             "f", "#", "#ff", "\"No\"", "\xFF"}) {
        EXPECT_TRUE(Parser::paramToBool(word)) << word;
    }
    EXPECT_TRUE(Parser::paramToBool(nullptr));
    EXPECT_FALSE(Parser::paramToBool("no"));
}

TEST(ParamToBoolOrDefault, KnowsTheWordsOfBoth) {
    for (const char* word : {"No", "0", "False", "#f", "NO", "false", "#F"}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(word), 0) << word;
    }
    for (const char* word : {"Yes", "1", "True", "#t", "YES", "true", "#T"}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(word), 1) << word;
    }
}

TEST(ParamToBoolOrDefault, LeavesAnyOtherWordToTheDefault) {
    for (const char* word : {"", "maybe", "2", "01", "on", "Yes ", " 1", "truth", "y"}) {
        EXPECT_EQ(Parser::paramToBoolOrDefault(word), -1) << word;
    }
    EXPECT_EQ(Parser::paramToBoolOrDefault(nullptr), -1);
}

TEST(ParamToInt, TruncatesTowardZero) {
    EXPECT_EQ(Parser::paramToInt("3.9"), 3);
    EXPECT_EQ(Parser::paramToInt("-3.9"), -3);
    EXPECT_EQ(Parser::paramToInt("-0.9"), 0);
}

TEST(ParamToInt, ReadsWhatFloatsAreWrittenAs) {
    EXPECT_EQ(Parser::paramToInt("12"), 12);
    EXPECT_EQ(Parser::paramToInt(" \t+12 apples"), 12);
    EXPECT_EQ(Parser::paramToInt("1e3"), 1000);
    EXPECT_EQ(Parser::paramToInt("0x10"), 16);
    EXPECT_EQ(Parser::paramToInt(".5"), 0);
}

TEST(ParamToInt, HasTheDigitsOfAFloat) {
    EXPECT_EQ(Parser::paramToInt("16777216"), 16777216);
    EXPECT_EQ(Parser::paramToInt("16777217"), 16777216);
}

TEST(ParamToInt, StaysWithinAnInt) {
    EXPECT_EQ(Parser::paramToInt("2147483520"), 2147483520) << "the largest float that fits";
    EXPECT_EQ(Parser::paramToInt("2147483647"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("2147483648"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("-2147483648"), INT_MIN);
    EXPECT_EQ(Parser::paramToInt("-2147483904"), INT_MIN);
    EXPECT_EQ(Parser::paramToInt("1e30"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("-1e30"), INT_MIN);
    EXPECT_EQ(Parser::paramToInt("1e999"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("inf"), INT_MAX);
    EXPECT_EQ(Parser::paramToInt("-inf"), INT_MIN);
}

TEST(ParamToInt, IsZeroForWhatIsNoNumber) {
    for (const char* text : {"", "x", "nan", "-", ".", "\"3\"", "--3", "=3"}) {
        EXPECT_EQ(Parser::paramToInt(text), 0) << text;
    }
    EXPECT_EQ(Parser::paramToInt(nullptr), 0);
}

TEST(ParamToFloat, ReadsANumber) {
    EXPECT_EQ(Parser::paramToFloat("0.1"), 0.1f);
    EXPECT_EQ(Parser::paramToFloat(" -2.5e2x"), -250.0f);
    EXPECT_EQ(Parser::paramToFloat("1e39"), std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::signbit(Parser::paramToFloat("-0")));
    EXPECT_TRUE(std::isnan(Parser::paramToFloat("nan")));
}

TEST(ParamToFloat, IsZeroForWhatIsNoNumber) {
    for (const char* text : {"", "x", "-", ".", ",5", "\"3\""}) {
        EXPECT_EQ(Parser::paramToFloat(text), 0.0f) << text;
    }
    EXPECT_EQ(Parser::paramToFloat(nullptr), 0.0f);
}

TEST(ParamToFloat, ReadsAPointAndNoCommaInAnyLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_EQ(Parser::paramToFloat("1.5"), 1.5f);
    EXPECT_EQ(Parser::paramToFloat("1,5"), 1.0f);
    EXPECT_EQ(Parser::paramToInt("-3.9e1"), -39);
}

TEST(ParamToString, TakesTheQuotesOff) {
    EXPECT_STREQ(Parser::paramToString("\"a b\"").c_str(), "a b");
    EXPECT_STREQ(Parser::paramToString("\"\"").c_str(), "");
    EXPECT_STREQ(Parser::paramToString("\"\"\"").c_str(), "\"");
    EXPECT_STREQ(Parser::paramToString("\"a\" \"b\"").c_str(), "a\" \"b");
}

TEST(ParamToString, TakesAQuoteInFrontOffThatHasNoPartner) {
    EXPECT_STREQ(Parser::paramToString("\"a b").c_str(), "a b");
    EXPECT_STREQ(Parser::paramToString("\"a\" ").c_str(), "a\" ");
}

TEST(ParamToString, IsEmptyForALoneQuoteAndForNothing) {
    EXPECT_TRUE(Parser::paramToString("\"").isEmpty());
    EXPECT_TRUE(Parser::paramToString("").isEmpty());
    EXPECT_TRUE(Parser::paramToString(nullptr).isEmpty());
}

TEST(ParamToString, KeepsAnyOtherText) {
    for (const char* text : {"a", " a ", "a\"", "'a'", " \"a\"", "a \"b\" c", "\xC3\xA4%s"}) {
        EXPECT_STREQ(Parser::paramToString(text).c_str(), text);
    }
}

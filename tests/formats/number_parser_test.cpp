#include "formats/number_parser.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "tests/support/locale.h"

namespace {

// What is read, and how much of the text it takes.
struct IntRead {
    int value;
    int length;
    bool operator==(const IntRead& other) const {
        return value == other.value && length == other.length;
    }
};

std::ostream& operator<<(std::ostream& out, const IntRead& read) {
    return out << read.value << " in " << read.length;
}

IntRead readInt(const std::string& text) {
    int value = 12345;
    const char* const end = parseMayaInt(text.c_str(), value);
    return {value, end ? static_cast<int>(end - text.c_str()) : -1};
}

float readFloat(const std::string& text) {
    float value = 12345.0f;
    EXPECT_NE(parseMayaFloat(text.c_str(), value), nullptr) << text;
    return value;
}

int lengthOfFloat(const std::string& text) {
    float value = 12345.0f;
    const char* const end = parseMayaFloat(text.c_str(), value);
    if (!end) {
        EXPECT_EQ(value, 12345.0f);
    }
    return end ? static_cast<int>(end - text.c_str()) : -1;
}

// The nearest float, by the C library.
float nearest(const std::string& text) {
    return std::strtof(text.c_str(), nullptr);
}

}  // namespace

TEST(MayaInt, IsASignAndDigits) {
    EXPECT_EQ(readInt("0"), (IntRead{0, 1}));
    EXPECT_EQ(readInt("-12 "), (IntRead{-12, 3}));
    EXPECT_EQ(readInt("+7;"), (IntRead{7, 2}));
    EXPECT_EQ(readInt("007"), (IntRead{7, 3}));
    EXPECT_EQ(readInt("12.5"), (IntRead{12, 2}));
    EXPECT_EQ(readInt("3e5"), (IntRead{3, 1}));
    for (const char* none : {"", "-", "+", "x", "-x", " 1", ".5", "--1"}) {
        EXPECT_EQ(readInt(none), (IntRead{12345, -1})) << none;
    }
}

TEST(MayaInt, IsHeldAtTheEndsOfItsRange) {
    EXPECT_EQ(readInt("2147483647"), (IntRead{INT_MAX, 10}));
    EXPECT_EQ(readInt("2147483648"), (IntRead{INT_MAX, 10}));
    EXPECT_EQ(readInt("-2147483648"), (IntRead{INT_MIN, 11}));
    EXPECT_EQ(readInt("-2147483649"), (IntRead{INT_MIN, 11}));
    EXPECT_EQ(readInt("99999999999999999999999"), (IntRead{INT_MAX, 23}));
    EXPECT_EQ(readInt("0000000000000000000000042"), (IntRead{42, 25}));
    EXPECT_EQ(readInt("999999999"), (IntRead{999999999, 9}));
    EXPECT_EQ(readInt("-1000000000"), (IntRead{-1000000000, 11}));
}

TEST(MayaFloat, IsASignDigitsAndAPoint) {
    EXPECT_EQ(readFloat("0"), 0.0f);
    EXPECT_EQ(readFloat("1.5"), 1.5f);
    EXPECT_EQ(readFloat("-1.5;"), -1.5f);
    EXPECT_EQ(readFloat("+.25 "), 0.25f);
    EXPECT_EQ(readFloat("3."), 3.0f);
    EXPECT_TRUE(std::signbit(readFloat("-0.0")));
    EXPECT_EQ(lengthOfFloat("1.5.5"), 3);
    EXPECT_EQ(lengthOfFloat("3.;"), 2);
    for (const char* none : {"", "-", ".", "-.", "+", "x", "e5", "nan", "inf", " 1"}) {
        EXPECT_EQ(lengthOfFloat(none), -1) << none;
    }
}

// Required(R62)
TEST(MayaFloat, IsReadUpToTheLetterEOnly) {
    EXPECT_EQ(readFloat("1e-05"), 1.0f);
    EXPECT_EQ(lengthOfFloat("1e-05"), 1);
    EXPECT_EQ(readFloat("0.5e3"), 0.5f);
    EXPECT_EQ(readFloat("-2.25E+08"), -2.25f);
    EXPECT_EQ(readFloat("5.9e-008"), 5.9f);
    EXPECT_EQ(readFloat("1f"), 1.0f);
}

TEST(MayaFloat, IsRoundedOnce) {
    // Half way between two floats, and as near to it as 19 digits come.
    EXPECT_EQ(readFloat("1.000000059604644775"), nearest("1.000000059604644775"));
    EXPECT_EQ(readFloat("1.000000059604644776"), nearest("1.000000059604644776"));
    EXPECT_EQ(readFloat("16777217"), 16777216.0f) << "a tie goes to the even one";
    EXPECT_EQ(readFloat("16777219"), 16777220.0f);
    // As a double, this lies half way between two floats; the digits do not.
    EXPECT_EQ(readFloat("16777217.00000000001"), nearest("16777217.00000000001"));
}

TEST(MayaFloat, IsTheNearestOfAnyNumberOfUpTo19Digits) {
    std::mt19937_64 random(3);
    for (int round = 0; round < 200000; ++round) {
        std::string text = random() % 3 ? "" : "-";
        const int whole = static_cast<int>(random() % 10);
        const int places = static_cast<int>(random() % 10);
        for (int i = 0; i < whole; ++i) text += static_cast<char>('0' + random() % 10);
        if (whole == 0 && places == 0) text += '7';
        if (places > 0) text += '.';
        for (int i = 0; i < places; ++i) text += static_cast<char>('0' + random() % 10);
        ASSERT_EQ(readFloat(text), nearest(text)) << text;
    }
}

TEST(MayaFloat, IsTheNearestOfWhatPrintsEveryFloat) {
    std::mt19937 random(4);
    for (int round = 0; round < 100000; ++round) {
        const float value =
            std::ldexp(static_cast<float>(random()), -40 + static_cast<int>(random() % 40));
        char text[80];
        std::snprintf(text, sizeof text, "%.12f", static_cast<double>(value));
        if (std::string(text).size() > 20) continue;
        ASSERT_EQ(readFloat(text), nearest(text)) << text;
    }
}

TEST(MayaFloat, TakesTheFirst19DigitsOfALongerNumber) {
    EXPECT_EQ(readFloat("1234567890123456789012345"), nearest("1234567890123456789000000"));
    EXPECT_EQ(readFloat("0.1234567890123456789999"), nearest("0.1234567890123456789"));
    EXPECT_EQ(readFloat("00000000000000000000000000.5"), 0.5f);
    EXPECT_EQ(readFloat("0.00000000000000000000000000000123"), nearest("1.23e-30"));
    EXPECT_EQ(readFloat("123456789.01234567890123"), nearest("123456789.0123456789"));
    EXPECT_EQ(lengthOfFloat("123456789.01234567890123 "), 24);
}

TEST(MayaFloat, OfTooManyDigitsIsInfiniteOrNothing) {
    EXPECT_EQ(readFloat(std::string(500, '9')), std::numeric_limits<float>::infinity());
    EXPECT_EQ(readFloat("-1" + std::string(50, '0')), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(readFloat("0." + std::string(500, '0') + "1"), 0.0f);
    EXPECT_EQ(readFloat(std::string(500, '0')), 0.0f);
}

TEST(MayaFloat, HasAPointWhateverTheLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_EQ(readFloat("1.5"), 1.5f);
    EXPECT_EQ(readFloat("0.12345678901234567"), 0.123456791f);
}

#include "formats/number_formatter.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "tests/support/locale.h"

namespace {

std::string intText(int value) {
    char text[kMostIntChars];
    return std::string(text, formatInt(text, value));
}

std::string fixed5(float value) {
    char text[kMostFixed5Chars];
    return std::string(text, formatFixed5(text, value));
}

std::string printed(float value) {
    char text[kMostFixed5Chars + 1];
    std::snprintf(text, sizeof text, "%.5f", static_cast<double>(value));
    return text;
}

float fromBits(std::uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace

TEST(FormatInt, PrintsEveryNumberOfDigits) {
    EXPECT_EQ(intText(0), "0");
    EXPECT_EQ(intText(INT_MAX), "2147483647");
    EXPECT_EQ(intText(INT_MIN), "-2147483648");
    for (long long power = 1; power <= INT_MAX; power *= 10) {
        for (const long long near : {power - 1, power, power + 1}) {
            const int value = static_cast<int>(near);
            EXPECT_EQ(intText(value), std::to_string(value));
            EXPECT_EQ(intText(-value), std::to_string(-value));
        }
    }
}

TEST(FormatInt, PrintsWhatTheStandardLibraryPrints) {
    std::mt19937 random(1);
    for (int i = 0; i < 200000; ++i) {
        const int value = static_cast<int>(random() >> random() % 32);
        ASSERT_EQ(intText(value), std::to_string(value));
        ASSERT_EQ(intText(~value), std::to_string(~value));
    }
}

TEST(FormatFixed5, RoundsTiesToTheEvenDigit) {
    EXPECT_EQ(fixed5(0.0f), "0.00000");
    EXPECT_EQ(fixed5(-0.0f), "-0.00000");
    EXPECT_EQ(fixed5(1.0f), "1.00000");
    EXPECT_EQ(fixed5(0.5f / 64), "0.00781");
    EXPECT_EQ(fixed5(0.015625f), "0.01562") << "0.015625 lies half way";
    EXPECT_EQ(fixed5(0.046875f), "0.04688") << "so does 0.046875";
    EXPECT_EQ(fixed5(-0.000001f), "-0.00000");
    EXPECT_EQ(fixed5(0.999999f), "1.00000");
    EXPECT_EQ(fixed5(4e9f), "4000000000.00000");
    EXPECT_EQ(fixed5(3999999744.0f), "3999999744.00000");
}

TEST(FormatFixed5, PrintsWhatIsNoNumberAsTheStandardLibraryDoes) {
    for (const float value :
         {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
          std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::max(),
          -std::numeric_limits<float>::max(), std::numeric_limits<float>::denorm_min()}) {
        EXPECT_EQ(fixed5(value), printed(value));
    }
}

TEST(FormatFixed5, PrintsEveryMultipleOfA64thAsTheStandardLibraryDoes) {
    for (int i = 0; i < 4096 * 64; ++i) {
        const float value = static_cast<float>(i) / 64.0f;
        ASSERT_EQ(fixed5(value), printed(value));
        ASSERT_EQ(fixed5(-value), printed(-value));
    }
}

TEST(FormatFixed5, WritesAPointWhateverTheLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_EQ(fixed5(1.5f), "1.50000");
    EXPECT_EQ(fixed5(5e9f), "5000000000.00000");
}

// Every 97th bit pattern, in eight parts of the range that run side by side.
class FormatFixed5Patterns : public testing::TestWithParam<int> {};

TEST_P(FormatFixed5Patterns, ArePrintedAsTheStandardLibraryDoes) {
    const std::uint64_t part = std::uint64_t{1} << 29;
    const std::uint64_t begin = static_cast<std::uint64_t>(GetParam()) * part;
    char expected[64], found[64] = {};
    for (std::uint64_t bits = (begin + 96) / 97 * 97; bits < begin + part; bits += 97) {
        const float value = fromBits(static_cast<std::uint32_t>(bits));
        const int length =
            std::snprintf(expected, sizeof expected, "%.5f", static_cast<double>(value));
        const char* const end = formatFixed5(found, value);
        if (end - found != length ||
            std::memcmp(found, expected, static_cast<std::size_t>(length)) != 0) {
            FAIL() << expected << ", not "
                   << std::string(found, static_cast<std::size_t>(end - found));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Eighths, FormatFixed5Patterns, testing::Range(0, 8));

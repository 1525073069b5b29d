// Lines of bits combined in narrow and in wide registers, against bytes combined one by one.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "foundation/bit_lines.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes randomBytes(int count, unsigned int seed) {
    std::mt19937 random(seed);
    Bytes bytes(static_cast<std::size_t>(count));
    for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
    return bytes;
}

template <class Operation>
class BitLines : public testing::Test {};

using Operations = testing::Types<Or, And, AndNot, Xor>;
TYPED_TEST_SUITE(BitLines, Operations);

constexpr int kLines = 5;
constexpr int kMargin = kLineBytes;

// Combines kLines lines that begin `at` bytes into a larger buffer.
template <class Combine>
Bytes combined(int at, Combine combine) {
    Bytes to = randomBytes(kMargin + kLines * kLineBytes + kMargin, 1);
    const Bytes from = randomBytes(kMargin + kLines * kLineBytes + kMargin, 2);
    combine(to.data() + at, from.data() + at);
    return to;
}

}  // namespace

TYPED_TEST(BitLines, AreTheBytesWhereverTheyBeginInNarrowRegisters) {
    for (int at = 0; at < kMargin; ++at) {
        const Bytes expected = combined(at, [](unsigned char* to, const unsigned char* from) {
            combineBytesOneByOne<TypeParam>(to, from, kLines * kLineBytes);
        });
        const Bytes found = combined(at, [](unsigned char* to, const unsigned char* from) {
            combineLines<TypeParam, Registers>(to, from, kLines);
        });
        ASSERT_EQ(expected, found) << at;
    }
}

TYPED_TEST(BitLines, AreTheBytesWhereverTheyBeginInWideRegisters) {
    if (!__builtin_cpu_supports("avx2")) GTEST_SKIP() << "this processor has no wide registers";
    for (int at = 0; at < kMargin; ++at) {
        const Bytes expected = combined(at, [](unsigned char* to, const unsigned char* from) {
            combineBytesOneByOne<TypeParam>(to, from, kLines * kLineBytes);
        });
        const Bytes found = combined(at, [](unsigned char* to, const unsigned char* from) {
            combineLinesInWideRegisters<TypeParam>(to, from, kLines);
        });
        ASSERT_EQ(expected, found) << at;
    }
}

TYPED_TEST(BitLines, EndWhereTheBytesDo) {
    for (int at = 0; at < kMargin; ++at) {
        for (int bytes = 0; bytes <= 3 * kLineBytes; ++bytes) {
            const Bytes expected =
                combined(at, [bytes](unsigned char* to, const unsigned char* from) {
                    combineBytesOneByOne<TypeParam>(to, from, bytes);
                });
            const Bytes found = combined(at, [bytes](unsigned char* to, const unsigned char* from) {
                combineBytes<TypeParam>(to, from, bytes);
            });
            ASSERT_EQ(expected, found) << at << ' ' << bytes;
        }
    }
}

TEST(BitOperations, AreThoseOfTheirNames) {
    unsigned char to[4] = {12, 12, 12, 12};
    const unsigned char from = 10;
    combineBytesOneByOne<Or>(to, &from, 1);
    combineBytesOneByOne<And>(to + 1, &from, 1);
    combineBytesOneByOne<AndNot>(to + 2, &from, 1);
    combineBytesOneByOne<Xor>(to + 3, &from, 1);
    EXPECT_EQ(14, to[0]);
    EXPECT_EQ(8, to[1]);
    EXPECT_EQ(4, to[2]);
    EXPECT_EQ(6, to[3]);
}

#include "formats/bx_binary_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <numeric>
#include <string>
#include <thread>
#include <type_traits>

#include "formats/bx_vek_file.h"
#include "tests/support/allocation_record.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::string_literals;

using Ints = BXArray<int>;
using Shorts = BXArray<unsigned short>;
using Bytes = BXArray<unsigned char>;

class BinaryFile : public testing::Test {
protected:
    std::string path() const { return m_folder / "file"; }
    BXString file() const { return path().c_str(); }

    // The bytes of a file to which `write` wrote.
    template <class Write>
    std::string written(Write write) {
        BXBinaryFile stream(file(), "wb");
        EXPECT_TRUE(stream.isOpen());
        EXPECT_TRUE(write(stream));
        stream.close();
        return readFile(path());
    }

    // The bytes of one item.
    template <class Item>
    std::string item(const Item& value, bool pack = true) {
        return written([&](BXBinaryFile& stream) {
            stream.m_packArrays = pack;
            return stream.write(value);
        });
    }

    // Whether the item can be read from these bytes, and that all of them were used.
    template <class Item>
    bool reads(const std::string& bytes, Item& value, bool pack = true) {
        writeFile(path(), bytes);
        BXBinaryFile stream(file(), "rb");
        stream.m_packArrays = pack;
        const bool came = stream.read(value);
        if (came) {
            EXPECT_EQ(ftello(stream.m_file), static_cast<off_t>(bytes.size()));
        }
        return came;
    }

    TempFolder m_folder;
};

BXBoolArray bitsOf(int count, std::initializer_list<int> set) {
    BXBoolArray bits(count, false);
    for (const int i : set) bits.set(i);
    return bits;
}

std::string row(const BXBoolArray& bits) {
    std::string text;
    for (int i = 0; i < bits.count(); ++i) text += bits.get(i) ? '1' : '0';
    return text;
}

}  // namespace

TEST_F(BinaryFile, WritesNumbersLittleEndian) {
    EXPECT_EQ(item(0x01020304), "\x04\x03\x02\x01"s);
    EXPECT_EQ(item(-2), "\xFE\xFF\xFF\xFF"s);
    EXPECT_EQ(item(1.0f), "\x00\x00\x80\x3F"s);
    EXPECT_EQ(item(-0.0f), "\x00\x00\x00\x80"s);
}

TEST_F(BinaryFile, WritesTheEmptyAndTheNullTextAlike) {
    EXPECT_EQ(item(BXString("")), "\x01\0\0\0\0\0\0\0"s);
    EXPECT_EQ(item(BXString()), "\x01\0\0\0\0\0\0\0"s);
}

TEST_F(BinaryFile, WritesATextWithItsNulAndZerosUpToFours) {
    EXPECT_EQ(item(BXString("abc")), "\x04\0\0\0abc\0"s);
    EXPECT_EQ(item(BXString("abcd")), "\x05\0\0\0abcd\0\0\0\0"s);
    EXPECT_EQ(item(BXString("ab"), false), "\x03\0\0\0ab\0\0"s);
    EXPECT_EQ(item(BXString("a")), "\x02\0\0\0a\0\0\0"s) << "whatever m_packArrays says";
}

TEST_F(BinaryFile, WritesArraysOfEveryKind) {
    EXPECT_EQ(item(Ints{1, -1}), "\x02\0\0\0\x01\0\0\0\xFF\xFF\xFF\xFF"s);
    EXPECT_EQ(item(BXArray<unsigned int>{0xFFFFFFFEu}), "\x01\0\0\0\xFE\xFF\xFF\xFF"s);
    EXPECT_EQ(item(Shorts{0x0102, 0xFFFE}), "\x02\0\0\0\x02\x01\xFE\xFF"s);
    EXPECT_EQ(item(Bytes{7, 255}), "\x02\0\0\0\x07\xFF"s);
    EXPECT_EQ(item(BXArray<BXVector2f>{{1.0f, -2.0f}}), "\x01\0\0\0\0\0\x80\x3F\0\0\0\xC0"s);
    EXPECT_EQ(item(BXArray<BXVector3f>{{1.0f, -2.0f, 0.5f}}),
              "\x01\0\0\0\0\0\x80\x3F\0\0\0\xC0\0\0\0\x3F"s);
}

TEST_F(BinaryFile, WritesAnEmptyArrayAsItsCountAlone) {
    for (const bool pack : {true, false}) {
        EXPECT_EQ(item(Ints(), pack), "\0\0\0\0"s);
        EXPECT_EQ(item(Shorts(), pack), "\0\0\0\0"s);
        EXPECT_EQ(item(Bytes(), pack), "\0\0\0\0"s);
        EXPECT_EQ(item(BXArray<BXVector2f>(), pack), "\0\0\0\0"s);
        EXPECT_EQ(item(BXArray<BXVector3f>(), pack), "\0\0\0\0"s);
        EXPECT_EQ(item(BXBoolArray(), pack), "\0\0\0\0"s);
    }
}

TEST_F(BinaryFile, PadsArraysOfShortElementsUnlessTheyArePacked) {
    const Shorts three = {1, 2, 3};
    EXPECT_EQ(item(three, true), "\x03\0\0\0\x01\0\x02\0\x03\0"s);
    EXPECT_EQ(item(three, false), "\x03\0\0\0\x01\0\x02\0\x03\0\0\0"s);
    EXPECT_EQ(item(Bytes{9}, false), "\x01\0\0\0\x09\0\0\0"s);
    EXPECT_EQ(item(Bytes{9, 8, 7, 6}, false), "\x04\0\0\0\x09\x08\x07\x06"s);
    EXPECT_EQ(item(Ints{5}, false), "\x01\0\0\0\x05\0\0\0"s);
}

TEST_F(BinaryFile, PacksArraysUnlessItIsToldOtherwise) {
    EXPECT_TRUE(BXBinaryFile().m_packArrays);
    EXPECT_TRUE(BXBinaryFile(file(), "rb").m_packArrays);
    EXPECT_TRUE(BXVekFile().m_packArrays);
    EXPECT_TRUE(BXVekFile(file(), "rb").m_packArrays);
    EXPECT_EQ(item(Bytes{9}), "\x01\0\0\0\x09"s);
}

TEST_F(BinaryFile, WritesABitArrayAsABytePerBit) {
    const BXBoolArray bits = bitsOf(10, {0, 9});
    EXPECT_EQ(item(bits), "\x0A\0\0\0\x01\0\0\0\0\0\0\0\0\x01"s);
    EXPECT_EQ(item(bits, false), "\x0A\0\0\0\x01\0\0\0\0\0\0\0\0\x01\0\0"s);
}

TEST_F(BinaryFile, WritesTheCharactersOfAnAsciiTextAlone) {
    const auto ascii = [&](const BXString& text) {
        return written([&](BXBinaryFile& stream) { return stream.writeAsciiString(text); });
    };
    EXPECT_EQ(ascii("abc"), "abc");
    EXPECT_EQ(ascii(""), "");
    EXPECT_EQ(ascii(BXString()), "");
}

TEST_F(BinaryFile, PadsByTheLengthOfThePayloadAlone) {
    const int zeros[] = {0, 3, 2, 1, 0, 3, 2, 1, 0};
    for (int n = 0; n <= 8; ++n) {
        const auto padding = [&](BXBinaryFile& stream) {
            return stream.writeAsciiString("x") && stream.writeAlignData(n);
        };
        EXPECT_EQ(written(padding).size(), static_cast<std::size_t>(1 + zeros[n])) << n;
    }
}

TEST_F(BinaryFile, PadsNothingBelowZeroThatTheRuleDoesNotGive) {
    // ((n + 3) / 4) * 4 - n with division toward zero.
    const auto padding = [&](int n) {
        return written([&](BXBinaryFile& stream) { return stream.writeAlignData(n); });
    };
    EXPECT_EQ(padding(-1), "\0"s);
    EXPECT_EQ(padding(-4), "\0\0\0\0"s);
    EXPECT_EQ(padding(-7), "\0\0\0"s);
    EXPECT_EQ(padding(INT_MIN), "\0\0\0\0"s);
}

TEST_F(BinaryFile, PadsTheLargestPayloadsToo) {
    const int zeros[] = {1, 2, 3, 0};
    for (int below = 0; below < 4; ++below) {
        const auto padding = [&](BXBinaryFile& stream) {
            return stream.writeAlignData(INT_MAX - below);
        };
        EXPECT_EQ(written(padding).size(), static_cast<std::size_t>(zeros[below])) << below;
    }
}

TEST_F(BinaryFile, ReadsBackWhatItWrote) {
    BXString text("old");
    EXPECT_TRUE(reads(item(BXString("abcd")), text));
    EXPECT_EQ(text, BXString("abcd"));
    EXPECT_TRUE(reads(item(BXString()), text));
    EXPECT_TRUE(text.isEmpty());
    int integer = 0;
    EXPECT_TRUE(reads(item(-7), integer));
    EXPECT_EQ(integer, -7);
    float real = 0.0f;
    EXPECT_TRUE(reads(item(2.5f), real));
    EXPECT_EQ(real, 2.5f);
    for (const bool pack : {true, false}) {
        Ints ints = {9, 9, 9};
        EXPECT_TRUE(reads(item(Ints{1, -2}, pack), ints, pack));
        EXPECT_EQ(ints, (Ints{1, -2}));
        BXArray<unsigned int> unsigneds;
        EXPECT_TRUE(reads(item(BXArray<unsigned int>{4000000000u}, pack), unsigneds, pack));
        EXPECT_EQ(unsigneds, BXArray<unsigned int>{4000000000u});
        Shorts shorts;
        EXPECT_TRUE(reads(item(Shorts{1, 65535, 3}, pack), shorts, pack));
        EXPECT_EQ(shorts, (Shorts{1, 65535, 3}));
        Bytes bytes;
        EXPECT_TRUE(reads(item(Bytes{1, 255, 0, 3, 4}, pack), bytes, pack));
        EXPECT_EQ(bytes, (Bytes{1, 255, 0, 3, 4}));
        BXArray<BXVector2f> points;
        EXPECT_TRUE(reads(item(BXArray<BXVector2f>{{1, 2}, {3, 4}}, pack), points, pack));
        EXPECT_EQ(points, (BXArray<BXVector2f>{{1, 2}, {3, 4}}));
        BXArray<BXVector3f> places;
        EXPECT_TRUE(reads(item(BXArray<BXVector3f>{{1, 2, 3}}, pack), places, pack));
        EXPECT_EQ(places, (BXArray<BXVector3f>{{1, 2, 3}}));
        BXBoolArray bits;
        EXPECT_TRUE(reads(item(bitsOf(21, {0, 9, 20}), pack), bits, pack));
        EXPECT_EQ(row(bits), "100000000100000000001");
    }
}

TEST_F(BinaryFile, ReadsItemsOneAfterTheOther) {
    written([](BXBinaryFile& stream) {
        return stream.write(BXString("name")) && stream.write(3) && stream.write(Bytes{1, 2, 3}) &&
               stream.writeAlignData(3) && stream.write(1.5f);
    });
    const BXBinaryFile stream(file(), "rb");
    BXString name;
    int number = 0;
    Bytes bytes;
    float real = 0.0f;
    EXPECT_TRUE(stream.read(name) && stream.read(number) && stream.read(bytes) &&
                stream.readAlignData(3) && stream.read(real));
    EXPECT_EQ(name, BXString("name"));
    EXPECT_EQ(number, 3);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
    EXPECT_EQ(real, 1.5f);
    EXPECT_FALSE(stream.read(number));
}

TEST_F(BinaryFile, EndsATextAtItsFirstNul) {
    BXString text;
    EXPECT_TRUE(reads("\x06\0\0\0ab\0cd\0\0\0"s, text));
    EXPECT_STREQ(text.c_str(), "ab");
    EXPECT_TRUE(reads("\x03\0\0\0abc\x77"s, text)) << "no NUL among the bytes";
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_TRUE(reads("\0\0\0\0"s, text));
    EXPECT_TRUE(text.isNull());
}

TEST_F(BinaryFile, RejectsATextThatIsCutOff) {
    BXString text;
    EXPECT_FALSE(reads("\x04\0\0"s, text));
    EXPECT_FALSE(reads("\x04\0\0\0ab"s, text));
    EXPECT_STREQ(text.c_str(), "ab");
    EXPECT_FALSE(reads("\x05\0\0\0abcd\0\0\0"s, text)) << "the zeros behind it are cut off";
    EXPECT_STREQ(text.c_str(), "abcd");
}

TEST_F(BinaryFile, FillsAnArrayThatIsCutOffWithZeros) {
    Ints ints = {5, 5, 5, 5, 5, 5};
    EXPECT_FALSE(reads("\x03\0\0\0\x01\0\0\0\x02\0"s, ints));
    EXPECT_EQ(ints, (Ints{1, 2, 0}));
    BXArray<BXVector3f> points(1, BXVector3f(7, 7, 7));
    EXPECT_FALSE(reads("\x01\0\0\0\0\0\x80\x3F\0\0\x80\x3F\0\0"s, points));
    EXPECT_EQ(points, (BXArray<BXVector3f>{{1, 1, 0}}));
    Shorts shorts = {9};
    EXPECT_FALSE(reads("\x02\0\0\0\x01\0\x02"s, shorts));
    EXPECT_EQ(shorts, (Shorts{1, 2}));
    Bytes bytes;
    EXPECT_FALSE(reads("\x02\0\0\0\x01\x02\0"s, bytes, false)) << "the zeros are cut off";
    EXPECT_EQ(bytes, (Bytes{1, 2}));
}

TEST_F(BinaryFile, LeavesAnArrayAloneWhoseCountIsMissingOrNegative) {
    for (const std::string& bytes : {""s, "\x01\0\0"s, "\xFF\xFF\xFF\xFF"s, "\0\0\0\x80zzzz"s}) {
        Ints ints = {5};
        EXPECT_FALSE(reads(bytes, ints));
        EXPECT_EQ(ints, Ints{5});
        Bytes shorts = {6};
        EXPECT_FALSE(reads(bytes, shorts));
        EXPECT_EQ(shorts, Bytes{6});
        BXString text("old");
        EXPECT_FALSE(reads(bytes, text));
        EXPECT_EQ(text, BXString("old"));
        BXBoolArray bits = bitsOf(3, {1});
        EXPECT_FALSE(reads(bytes, bits));
        EXPECT_EQ(row(bits), "010");
    }
}

TEST_F(BinaryFile, EmptiesAnArrayForACountOfZero) {
    Ints ints = {5};
    EXPECT_TRUE(reads(item(0), ints));
    EXPECT_TRUE(ints.empty());
    Bytes bytes = {6};
    EXPECT_TRUE(reads(item(0), bytes, false));
    EXPECT_TRUE(bytes.empty());
    BXBoolArray bits = bitsOf(3, {1});
    EXPECT_TRUE(reads(item(0), bits));
    EXPECT_EQ(bits.count(), 0);
}

TEST_F(BinaryFile, AllocatesNothingForANegativeCountAndOnceForAnArray) {
    const std::string head = item(-1) + item(-2) + item(-3);
    writeFile(path(), head + item(100000) + std::string(400000, 'x'));
    const BXBinaryFile stream(file(), "rb");
    Ints ints;
    BXString text;
    BXBoolArray bits;
    AllocationRecord negative;
    EXPECT_FALSE(stream.read(ints));
    EXPECT_FALSE(stream.read(text));
    EXPECT_FALSE(stream.read(bits));
    EXPECT_TRUE(negative.stop().empty());
    AllocationRecord array;
    EXPECT_TRUE(stream.read(ints));
    const AllocationRecord::Sizes sizes = array.stop();
    EXPECT_EQ(sizes, (AllocationRecord::Sizes{400000}));
}

TEST_F(BinaryFile, KeepsTextsOfAnyLength) {
    const std::string longest(1000001, 'x');
    BXString text;
    EXPECT_TRUE(reads(item(BXString(longest.c_str())), text));
    EXPECT_EQ(text.c_str(), longest);
}

TEST_F(BinaryFile, HasAllElementsOfAShortArrayThatIsCutOff) {
    Ints ints;
    EXPECT_FALSE(reads("\x0A\0\0\0\x01\0\0\0"s, ints));
    EXPECT_EQ(ints, (Ints{1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    const int aMebibyte = 1 << 18;
    EXPECT_FALSE(reads(item(aMebibyte) + item(1), ints));
    EXPECT_EQ(ints.size(), static_cast<std::size_t>(aMebibyte));
    EXPECT_FALSE(reads(item(aMebibyte + 1) + item(1), ints));
    EXPECT_EQ(ints, Ints{1});
}

TEST_F(BinaryFile, TakesNoMemoryForACountThatTheFileCannotHold) {
    const std::string most = "\xFF\xFF\xFF\x7F"s;
    Ints ints = {5};
    EXPECT_FALSE(reads(most + "\x01\0\0\0\x02\0\0\0\x03"s, ints));
    EXPECT_EQ(ints, (Ints{1, 2, 3}));
    EXPECT_LT(ints.capacity(), 100u);
    BXArray<BXVector3f> points;
    EXPECT_FALSE(reads(most, points));
    EXPECT_TRUE(points.empty());
    EXPECT_LE(points.capacity(), 1u);
    Bytes bytes;
    EXPECT_FALSE(reads(most + "xyz", bytes));
    EXPECT_EQ(bytes, (Bytes{'x', 'y', 'z'}));
    BXString text;
    EXPECT_FALSE(reads(most + "xyz", text));
    EXPECT_EQ(text, BXString("xyz"));
    BXBoolArray bits = bitsOf(3, {1});
    EXPECT_FALSE(reads(most + "xyz", bits));
    EXPECT_EQ(row(bits), "010");
}

TEST_F(BinaryFile, TakesAnyByteButZeroForASetBit) {
    BXBoolArray bits;
    EXPECT_TRUE(reads("\x04\0\0\0\x02\0\xFF\0"s, bits));
    EXPECT_EQ(row(bits), "1010");
}

TEST_F(BinaryFile, LeavesBitsAloneThatAreCutOff) {
    BXBoolArray bits = bitsOf(3, {2});
    EXPECT_FALSE(reads("\x04\0\0\0\x01\x01"s, bits));
    EXPECT_EQ(row(bits), "001");
    EXPECT_FALSE(reads("\x03\0\0\0\x01\x01\x01"s, bits, false)) << "the zero is cut off";
    EXPECT_EQ(row(bits), "001");
}

TEST_F(BinaryFile, ReadsPaddingWhateverItsBytes) {
    writeFile(path(), "abc");
    const BXBinaryFile stream(file(), "rb");
    EXPECT_TRUE(stream.readAlignData(4));
    EXPECT_EQ(ftello(stream.m_file), 0);
    EXPECT_TRUE(stream.readAlignData(2));
    EXPECT_EQ(ftello(stream.m_file), 2);
    EXPECT_FALSE(stream.readAlignData(1));
    EXPECT_EQ(ftello(stream.m_file), 3);
}

TEST_F(BinaryFile, DoesNothingWithoutAnOpenFile) {
    BXBinaryFile stream;
    EXPECT_FALSE(stream.isOpen());
    EXPECT_EQ(stream.m_file, BXDiskServer::s_invalidFile);
    int number = 5;
    float real = 5.0f;
    BXString text("old");
    Ints ints = {5};
    BXBoolArray bits = bitsOf(2, {1});
    EXPECT_FALSE(stream.read(number) || stream.read(real) || stream.read(text) ||
                 stream.read(ints) || stream.read(bits) || stream.readAlignData(1));
    EXPECT_FALSE(stream.write(1) || stream.write(1.0f) || stream.write(BXString("x")) ||
                 stream.write(BXString()) || stream.write(Ints{1}) || stream.write(Ints()) ||
                 stream.write(bits) || stream.writeAlignData(1) || stream.writeAsciiString("x") ||
                 stream.writeAsciiString(""));
    EXPECT_TRUE(stream.writeAlignData(4) && stream.readAlignData(4)) << "there is nothing to do";
    EXPECT_EQ(number, 5);
    EXPECT_EQ(real, 5.0f);
    EXPECT_EQ(text, BXString("old"));
    EXPECT_EQ(ints, Ints{5});
    EXPECT_EQ(row(bits), "01");
    stream.close();
    EXPECT_FALSE(stream.isOpen());
}

TEST_F(BinaryFile, LeavesNoFileOpenWhereItCannotOpen) {
    writeFile(path(), "abcd");
    BXBinaryFile stream(file(), "rb");
    EXPECT_TRUE(stream.isOpen());
    EXPECT_FALSE(stream.open((m_folder / "missing").c_str(), "rb"));
    EXPECT_EQ(stream.m_file, BXDiskServer::s_invalidFile);
    EXPECT_FALSE(stream.open(m_folder.path().c_str(), "rb"));
    EXPECT_FALSE(stream.open(file(), "nonsense"));
    EXPECT_FALSE(stream.open(BXString(), "rb"));
    EXPECT_TRUE(stream.open(("Disk:" + path()).c_str(), "rb"));
    int number = 0;
    EXPECT_TRUE(stream.read(number));
}

TEST_F(BinaryFile, ClosesWhatItOwns) {
    int freeAfter = 0, freeBefore = open("/dev/null", O_RDONLY);
    close(freeBefore);
    {
        BXBinaryFile stream(file(), "wb");
        EXPECT_TRUE(stream.open(file(), "wb"));
        stream.close();
        stream.close();
        EXPECT_TRUE(stream.open(file(), "wb"));
    }
    freeAfter = open("/dev/null", O_RDONLY);
    close(freeAfter);
    EXPECT_EQ(freeAfter, freeBefore);
    static_assert(!std::is_copy_constructible_v<BXBinaryFile>);
    static_assert(!std::is_move_constructible_v<BXBinaryFile>);
    static_assert(!std::is_copy_assignable_v<BXBinaryFile>);
    static_assert(!std::is_polymorphic_v<BXBinaryFile>);
}

TEST_F(BinaryFile, RejectsEveryItemThatCannotBeWritten) {
    writeFile(path(), "");
    BXBinaryFile stream(file(), "rb");
    EXPECT_FALSE(stream.write(1));
    EXPECT_FALSE(stream.write(BXString("abc")));
    EXPECT_FALSE(stream.write(BXString()));
    EXPECT_FALSE(stream.write(Ints{1}));
    EXPECT_FALSE(stream.write(Shorts{1}));
    EXPECT_FALSE(stream.write(bitsOf(9, {1})));
    EXPECT_FALSE(stream.writeAlignData(1));
    EXPECT_FALSE(stream.writeAsciiString("a"));
    stream.close();
    EXPECT_EQ(readFile(path()), "");
}

TEST_F(BinaryFile, RejectsCountsWhoseBytesWrapAroundA32BitSize) {
    Ints ints;
    EXPECT_FALSE(reads(item(0x40000000), ints));
    EXPECT_TRUE(ints.empty());
    EXPECT_FALSE(reads(item(0x40000001) + item(7), ints));
    EXPECT_EQ(ints, Ints{7});
    Shorts shorts;
    EXPECT_FALSE(reads(item(INT_MAX) + item(0x00020001), shorts));
    EXPECT_EQ(shorts, (Shorts{1, 2}));
    BXArray<BXVector2f> points;
    EXPECT_FALSE(reads(item(0x20000001) + item(1.0f) + item(2.0f), points));
    EXPECT_EQ(points, (BXArray<BXVector2f>{{1, 2}}));
    BXArray<BXVector3f> places;
    EXPECT_FALSE(reads(item(0x15555556) + item(1.0f) + item(2.0f), places));
    EXPECT_EQ(places, (BXArray<BXVector3f>{{1, 2, 0}}));
}

TEST_F(BinaryFile, FailsToAllocateWhatNoMemoryHolds) {
    if (sizeof(void*) > 4) GTEST_SKIP() << "only in 32 bits can a file hold more than the memory";
    writeFile(path(), item(0x40000000));
    ASSERT_EQ(truncate(path().c_str(), off_t{5} << 30), 0);
    const BXBinaryFile stream(file(), "rb");
    Ints ints = {5};
    EXPECT_THROW(stream.read(ints), std::bad_alloc);
    EXPECT_EQ(ints, Ints{5});
}

TEST_F(BinaryFile, ReadsArraysOfSeveralPiecesWhole) {
    Ints written(200000);
    std::iota(written.begin(), written.end(), 0);
    const std::string bytes = item(written);
    Ints larger(300000, 9), smaller(3, 9), fresh;
    for (Ints* const ints : {&larger, &smaller, &fresh}) {
        EXPECT_TRUE(reads(bytes, *ints));
        EXPECT_EQ(*ints, written);
    }
    // Cut off in the second of them.
    Ints expected(written);
    std::fill(expected.begin() + 100000, expected.end(), 0);
    for (Ints* const ints : {&larger, &fresh}) {
        ints->assign(300000, 9);
        EXPECT_FALSE(reads(bytes.substr(0, 4 + 400000), *ints));
        EXPECT_EQ(*ints, expected);
    }
    fresh = Ints();
    EXPECT_FALSE(reads(bytes.substr(0, 4 + 400000), fresh));
    EXPECT_EQ(fresh, expected);
}

TEST_F(BinaryFile, ReadsAStreamThatHasNoSize) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const Ints written(300000, 7);
    const std::string bytes = item(written);
    std::thread writer([&] {
        EXPECT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(ends[1]);
    });
    BXBinaryFile stream;
    stream.m_file = fdopen(ends[0], "rb");
    Ints ints;
    EXPECT_TRUE(stream.read(ints));
    EXPECT_EQ(ints, written);
    stream.close();
    writer.join();
}

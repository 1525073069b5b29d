#include "os/executable_header.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace {

using namespace std::string_literals;
using Kinds = BXArray<long>;

Kinds of(const std::string& head) {
    const std::vector<char> exact(head.begin(), head.end());
    return bxArchitecturesOf(exact.data(), exact.size());
}

std::string big(std::size_t number) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(number >> shift);
    return text;
}

// Fat, with parts of these kinds.
std::string fat(const std::vector<std::size_t>& kinds) {
    std::string head = "\xCA\xFE\xBA\xBE"s + big(kinds.size());
    for (const std::size_t kind : kinds) head += big(kind) + std::string(16, '\1');
    return head;
}

}  // namespace

TEST(ExecutableHeader, OfAThinMachONamesOneKindInEitherByteOrder) {
    EXPECT_EQ(of("\xCF\xFA\xED\xFE\7\0\0\1rest"s), Kinds{0x01000007});
    EXPECT_EQ(of("\xCE\xFA\xED\xFE\7\0\0\0"s), Kinds{7});
    EXPECT_EQ(of("\xFE\xED\xFA\xCF\1\0\0\x12"s), Kinds{0x01000012});
    EXPECT_EQ(of("\xFE\xED\xFA\xCE\0\0\0\x12"s), Kinds{18});
}

TEST(ExecutableHeader, OfAFatMachONamesTheKindOfEachPart) {
    EXPECT_EQ(of(fat({7, 0x01000007})), (Kinds{7, 0x01000007}));
    EXPECT_EQ(of(fat({})), Kinds());
    const std::string wide = "\xCA\xFE\xBA\xBF"s + big(2) + big(7) + std::string(28, '\0') +
                             big(0x0100000C) + std::string(28, '\0');
    EXPECT_EQ(of(wide), (Kinds{7, 0x0100000C}));
}

TEST(ExecutableHeader, OfAFatMachONamesOnlyPartsThatAreThere) {
    const std::string whole = fat({7, 0x01000007});
    EXPECT_EQ(of(whole.substr(0, 47)), Kinds{7});
    EXPECT_EQ(of(whole.substr(0, 27)), Kinds());
    EXPECT_EQ(of("\xCA\xFE\xBA\xBE\0\0\0\x34"s + std::string(4000, '\1')), Kinds())
        << "a Java class file";
}

TEST(ExecutableHeader, OfAnElfNamesTheKindThatMachOHasForIt) {
    const auto elf = [](char order, char low, char high) {
        return "\x7F"
               "ELF\2"s +
               order + std::string(12, '\0') + low + high;
    };
    EXPECT_EQ(of(elf(1, 62, 0)), Kinds{0x01000007});
    EXPECT_EQ(of(elf(1, 3, 0)), Kinds{7});
    EXPECT_EQ(of(elf(2, 0, 21)), Kinds{0x01000012});
    EXPECT_EQ(of(elf(1, '\xB7', 0)), Kinds{0x0100000C});
    EXPECT_EQ(of(elf(1, 62, 1)), Kinds());
    EXPECT_EQ(of(elf(1, 62, 0).substr(0, 19)), Kinds());
    EXPECT_EQ(of(readFile("/proc/self/exe").substr(0, 64)).size(), 1u);
}

TEST(ExecutableHeader, OfAnythingElseNamesNone) {
    for (const std::string& head :
         {""s, "\xCF\xFA\xED\xFE"s, "#!/bin/sh\n"s, std::string(100, 'x')}) {
        EXPECT_EQ(of(head), Kinds());
    }
}

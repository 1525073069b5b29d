#include "tools/validate/mach_o.h"

#include <gtest/gtest.h>

namespace {

std::string record(char top) {
    return std::string{top, 0, 0, 7} + std::string(16, '\0');
}

std::string fat(const std::string& records) {
    const char count = static_cast<char>(records.size() / 20);
    return "\xCA\xFE\xBA\xBE" + std::string{0, 0, 0, count} + records;
}

}  // namespace

TEST(MachO, TellsTheWordSizeOfOneLibrary) {
    EXPECT_TRUE(machOSizes("\xCF\xFA\xED\xFE").has64);
    EXPECT_FALSE(machOSizes("\xCF\xFA\xED\xFE").has32);
    EXPECT_TRUE(machOSizes("\xCE\xFA\xED\xFE").has32);
    EXPECT_FALSE(machOSizes("").has32 || machOSizes("").has64);
    EXPECT_FALSE(machOSizes("text").has32 || machOSizes("text").has64);
}

TEST(MachO, TellsTheWordSizesOfAllThatAFileHolds) {
    const MachOSizes both = machOSizes(fat(record(0) + record(1)));
    EXPECT_TRUE(both.has32 && both.has64);
    const MachOSizes one = machOSizes(fat(record(1)));
    EXPECT_TRUE(one.has64 && !one.has32);
    // It says that there are two, and ends before the second.
    const MachOSizes cut = machOSizes(fat(record(1) + record(0)).substr(0, 28));
    EXPECT_TRUE(cut.has64 && !cut.has32);
    const MachOSizes other = machOSizes(std::string("\xCA\xFE\xBA\xBE\0\0\0\x34\1\0\0\7", 12));
    EXPECT_FALSE(other.has32 || other.has64);
}

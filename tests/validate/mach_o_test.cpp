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

// The head of a file of this type.
std::string thin(char magic, char type) {
    return std::string{magic, '\xFA', '\xED', '\xFE'} + std::string(8, '\0') +
           std::string{type, 0, 0, 0};
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

TEST(MachO, TellsALibraryFromAnObjectFileAndAProgram) {
    EXPECT_EQ(machOKind(thin('\xCF', 6), 64), MachOKind::Library);
    EXPECT_EQ(machOKind(thin('\xCE', 8), 32), MachOKind::Library);
    EXPECT_EQ(machOKind(thin('\xCF', 1), 64), MachOKind::Object);
    EXPECT_EQ(machOKind(thin('\xCE', 2), 32), MachOKind::Program);
    EXPECT_EQ(machOKind(thin('\xCF', 10), 64), MachOKind::Other);
    EXPECT_EQ(machOKind(thin('\xCF', 6), 32), MachOKind::Other);
    EXPECT_EQ(machOKind("", 64), MachOKind::Other);
}

TEST(MachO, TellsWhatAFileOfManyHoldsForEachWordSize) {
    // The second begins behind the first; where each is stands in its record.
    std::string first = record(0), second = record(1);
    first[11] = 48;
    second[11] = 64;
    const std::string file = fat(first + second) + thin('\xCE', 2) + thin('\xCF', 6);
    EXPECT_EQ(machOKind(file, 32), MachOKind::Program);
    EXPECT_EQ(machOKind(file, 64), MachOKind::Library);
    EXPECT_EQ(machOKind(fat(second), 32), MachOKind::Other);
}

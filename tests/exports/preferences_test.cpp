#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>

#include "tests/support/host.h"
#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"

namespace {

class Preferences : public testing::Test {
protected:
    std::string file() const { return m_folder / "my prefs.txt"; }

    float write(const char* name, const std::string& key, std::int32_t value) {
        return m_library.preference(name, file(), key, &value);
    }
    float write(const char* name, const std::string& key, float value) {
        return m_library.preference(name, file(), key, &value);
    }
    float writeText(const std::string& key, std::string value) {
        return m_library.preference("WriteConfigPrefAsString", file(), key, value.data());
    }
    template <class Value>
    float read(const char* name, const std::string& key, Value& value) {
        return m_library.preference(name, file(), key, &value);
    }

    TempFolder m_folder;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(Preferences, CreateAMissingFileWithTheOneLine) {
    EXPECT_EQ(write("WriteConfigPrefAsInt", "my_Key", 42), 0.0f);
    EXPECT_EQ(readFile(file()), "MY_KEY = 42\n");
    EXPECT_EQ(write("WriteConfigPrefAsInt", "my_Key", 42), 1.0f);
    EXPECT_EQ(readFile(file()), "MY_KEY = 42\n");
}

TEST_F(Preferences, CutANumberTowardZeroForAnInteger) {
    writeFile(file(), "a = 7.9\nb = -7.9\nc = word\n");
    std::int32_t value = 0;
    EXPECT_EQ(read("ReadConfigPrefAsInt", "A", value), 1.0f);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(read("ReadConfigPrefAsInt", "b", value), 1.0f);
    EXPECT_EQ(value, -7);
    EXPECT_EQ(read("ReadConfigPrefAsInt", "c", value), 1.0f);
    EXPECT_EQ(value, 0);
}

TEST_F(Preferences, WriteAFloatWithSixDecimals) {
    EXPECT_EQ(write("WriteConfigPrefAsFloat", "f", 0.5f), 0.0f);
    EXPECT_EQ(readFile(file()), "F = 0.500000\n");
    float value = 0.0f;
    EXPECT_EQ(read("ReadConfigPrefAsFloat", "f", value), 1.0f);
    EXPECT_EQ(value, 0.5f);
}

TEST_F(Preferences, ReadNoAsFalseAndStoreNothingForAnEmptyValue) {
    writeFile(file(), "a = nO\nb =\nc = Yes\n");
    std::int32_t value = 77;
    EXPECT_EQ(read("ReadConfigPrefAsBool", "a", value), 1.0f);
    EXPECT_EQ(value, 0);
    value = 77;
    EXPECT_EQ(read("ReadConfigPrefAsBool", "b", value), 1.0f);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(read("ReadConfigPrefAsBool", "c", value), 1.0f);
    EXPECT_EQ(value, 1);
}

TEST_F(Preferences, StoreNothingForAnEmptyValueWhateverTheType) {
    writeFile(file(), "b =\n");
    std::int32_t integer = 77;
    float real = 7.5f;
    OutText text;
    EXPECT_EQ(read("ReadConfigPrefAsInt", "b", integer), 1.0f);
    EXPECT_EQ(read("ReadConfigPrefAsFloat", "b", real), 1.0f);
    EXPECT_EQ(m_library.preference("ReadConfigPrefAsString", file(), "b", text.block()), 1.0f);
    EXPECT_EQ(integer, 77);
    EXPECT_EQ(real, 7.5f);
    EXPECT_TRUE(text.untouched());
}

TEST_F(Preferences, ReadATextWithoutItsQuotes) {
    writeFile(file(), "k = \"a b\"\n");
    OutText text;
    EXPECT_EQ(m_library.preference("ReadConfigPrefAsString", file(), "K", text.block()), 1.0f);
    EXPECT_EQ(text.text(), "a b");
}

TEST_F(Preferences, WriteATextAsItStands) {
    EXPECT_EQ(writeText("k", "a \"b\" = c"), 0.0f);
    EXPECT_EQ(readFile(file()), "K = a \"b\" = c\n");
}

TEST_F(Preferences, KeepATextOfAnyLength) {
    std::string longText;
    while (longText.size() < 5000) longText += "100%s %n ";
    longText += '.';
    EXPECT_EQ(writeText("k", longText), 0.0f);
    EXPECT_EQ(readFile(file()), "K = " + longText + "\n");
    OutText text;
    EXPECT_EQ(m_library.preference("ReadConfigPrefAsString", file(), "k", text.block()), 1.0f);
    EXPECT_EQ(text.text(), longText);
}

TEST_F(Preferences, WriteTheEmptyTextForANullBlock) {
    EXPECT_EQ(m_library.preference("WriteConfigPrefAsString", file(), "s", nullptr), 0.0f);
    EXPECT_EQ(readFile(file()), "S = \n");
}

TEST_F(Preferences, TakeANullKeyForTheEmptyOne) {
    std::string value = "v";
    std::string path = file();
    writeFile(path, "a = 1\n");
    const auto write = reinterpret_cast<VekExport>(m_library.symbol("WriteConfigPrefAsString"));
    const float withNull = write(path.data(), 0.0, nullptr, 0, value.data(), 0, nullptr);
    const std::string afterNull = readFile(path);
    writeFile(path, "a = 1\n");
    EXPECT_EQ(writeText("", "v"), withNull);
    EXPECT_EQ(readFile(path), afterNull);
    EXPECT_EQ(afterNull.substr(0, 5), " = v\n");
}

TEST_F(Preferences, ReadAnyOtherWordAsTrue) {
    writeFile(file(), "a = maybe\n");
    std::int32_t value = 77;
    EXPECT_EQ(read("ReadConfigPrefAsBool", "a", value), 1.0f);
    EXPECT_EQ(value, 1);
}

// Required(R87)
TEST_F(Preferences, ReadAnIntegerAsTheFloatNextToIt) {
    write("WriteConfigPrefAsInt", "a", 16777217);
    write("WriteConfigPrefAsInt", "b", 16777216);
    std::int32_t value = 0;
    EXPECT_EQ(read("ReadConfigPrefAsInt", "a", value), 1.0f);
    EXPECT_EQ(value, 16777216);
    EXPECT_EQ(read("ReadConfigPrefAsInt", "b", value), 1.0f);
    EXPECT_EQ(value, 16777216);
}

TEST_F(Preferences, WriteATruthAsAWord) {
    write("WriteConfigPrefAsBool", "a", 0);
    EXPECT_EQ(readFile(file()), "A = FALSE\n");
    write("WriteConfigPrefAsBool", "a", -5);
    EXPECT_EQ(readFile(file()), "A = TRUE\n");
}

TEST_F(Preferences, KeepTheEndsOfTheIntegerRangeAsText) {
    write("WriteConfigPrefAsInt", "a", INT_MIN);
    EXPECT_EQ(readFile(file()), "A = -2147483648\n");
    write("WriteConfigPrefAsInt", "a", INT_MAX);
    EXPECT_EQ(readFile(file()), "A = 2147483647\n");
}

TEST_F(Preferences, ReportOnlyWhetherTheKeyWasThere) {
    std::int32_t value = 1;
    const std::string nowhere = m_folder / "no folder/prefs.txt";
    EXPECT_EQ(m_library.preference("WriteConfigPrefAsInt", nowhere, "k", &value), 0.0f);
    EXPECT_FALSE(fileIsThere(m_folder / "no folder"));
    EXPECT_EQ(m_library.preference("ReadConfigPrefAsInt", nowhere, "k", &value), 0.0f);
    EXPECT_EQ(value, 1);
}

TEST_F(Preferences, LeaveTheBlockForAKeyThatIsNotThere) {
    writeFile(file(), "other = 5\n");
    std::int32_t value = 77;
    for (const char* name : {"ReadConfigPrefAsInt", "ReadConfigPrefAsBool", "ReadConfigPrefAsFloat",
                             "ReadConfigPrefAsString"}) {
        EXPECT_EQ(read(name, "k", value), 0.0f);
    }
    EXPECT_EQ(value, 77);
}

TEST_F(Preferences, SkipTheStoreForANullBlock) {
    writeFile(file(), "k = 5\n");
    for (const char* name : {"ReadConfigPrefAsInt", "ReadConfigPrefAsBool", "ReadConfigPrefAsFloat",
                             "ReadConfigPrefAsString"}) {
        EXPECT_EQ(m_library.preference(name, file(), "k", nullptr), 1.0f) << name;
    }
}

TEST_F(Preferences, WriteNoNumberForANullBlock) {
    for (const char* name :
         {"WriteConfigPrefAsInt", "WriteConfigPrefAsBool", "WriteConfigPrefAsFloat"}) {
        EXPECT_EQ(m_library.preference(name, file(), "k", nullptr), 0.0f) << name;
    }
    EXPECT_FALSE(fileIsThere(file()));
}

TEST_F(Preferences, PackNumbersInFourBytes) {
    writeFile(file(), "k = 5\n");
    unsigned char block[6] = {9, 9, 9, 9, 9, 9};
    m_library.preference("ReadConfigPrefAsInt", file(), "k", block + 1);
    EXPECT_EQ(block[0], 9);
    EXPECT_EQ(block[1], 5);
    EXPECT_EQ(block[4], 0);
    EXPECT_EQ(block[5], 9);
}

TEST_F(Preferences, ReadAndWriteWithAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    write("WriteConfigPrefAsFloat", "f", 1234.5f);
    EXPECT_EQ(readFile(file()), "F = 1234.500000\n");
    float real = 0.0f;
    read("ReadConfigPrefAsFloat", "f", real);
    EXPECT_EQ(real, 1234.5f);
    writeFile(file(), "f = 2.75\n");
    read("ReadConfigPrefAsFloat", "f", real);
    EXPECT_EQ(real, 2.75f);
}

TEST_F(Preferences, WriteNumbersThatAreNone) {
    write("WriteConfigPrefAsFloat", "f", INFINITY);
    EXPECT_EQ(readFile(file()), "F = inf\n");
    std::int32_t value = 0;
    read("ReadConfigPrefAsInt", "f", value);
    EXPECT_EQ(value, INT_MAX);
}

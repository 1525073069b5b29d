// Transfers of the binary stream that fail, one by one.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "formats/bx_binary_file.h"
#include "tests/formats/failing_transfers.h"
#include "tests/support/temp_folder.h"

namespace {

class BinaryFileFaults : public testing::Test {
protected:
    ~BinaryFileFaults() override {
        failStreamReadAt(0);
        failStreamWriteAt(0);
    }

    // How many writes there are when the n-th one fails; the result has to be false.
    int writesWhenFailing(int n, const std::function<bool(BXBinaryFile&)>& write) {
        BXBinaryFile stream((m_folder / "file").c_str(), "wb");
        failStreamWriteAt(n);
        EXPECT_FALSE(write(stream)) << n;
        EXPECT_TRUE(transferFailed()) << n;
        const int writes = streamWrites();
        failStreamWriteAt(0);
        return writes;
    }

    // As above, reading from these bytes.
    int readsWhenFailing(int n, const std::string& bytes,
                         const std::function<bool(BXBinaryFile&)>& read) {
        writeFile(m_folder / "file", bytes);
        BXBinaryFile stream((m_folder / "file").c_str(), "rb");
        failStreamReadAt(n);
        EXPECT_FALSE(read(stream)) << n;
        EXPECT_TRUE(transferFailed()) << n;
        const int reads = streamReads();
        failStreamReadAt(0);
        return reads;
    }

    TempFolder m_folder;
};

}  // namespace

TEST_F(BinaryFileFaults, StopAnArrayAtItsCount) {
    const auto write = [](BXBinaryFile& s) { return s.write(BXArray<int>{1, 2}); };
    EXPECT_EQ(writesWhenFailing(1, write), 1);
    EXPECT_EQ(writesWhenFailing(2, write), 2);
}

TEST_F(BinaryFileFaults, StopAPaddedArrayAtItsElements) {
    const auto write = [](BXBinaryFile& s) {
        s.m_packArrays = false;
        return s.write(BXArray<unsigned char>{1});
    };
    EXPECT_EQ(writesWhenFailing(1, write), 1);
    EXPECT_EQ(writesWhenFailing(2, write), 2);
    for (int zero = 3; zero <= 5; ++zero) EXPECT_EQ(writesWhenFailing(zero, write), 5);
}

TEST_F(BinaryFileFaults, StopATextAtItsLengthOrItsBytesAndGoOnWithItsZeros) {
    const auto write = [](BXBinaryFile& s) { return s.write(BXString("abcd")); };
    EXPECT_EQ(writesWhenFailing(1, write), 1);
    EXPECT_EQ(writesWhenFailing(2, write), 2);
    for (int zero = 3; zero <= 5; ++zero) EXPECT_EQ(writesWhenFailing(zero, write), 5);
}

TEST_F(BinaryFileFaults, StopAnEmptyTextAtItsLength) {
    const auto write = [](BXBinaryFile& s) { return s.write(BXString()); };
    EXPECT_EQ(writesWhenFailing(1, write), 1);
    EXPECT_EQ(writesWhenFailing(2, write), 2);
}

TEST_F(BinaryFileFaults, StopABitArrayAtItsCount) {
    const auto write = [](BXBinaryFile& s) { return s.write(BXBoolArray(9, true)); };
    EXPECT_EQ(writesWhenFailing(1, write), 1);
    EXPECT_EQ(writesWhenFailing(2, write), 2);
}

TEST_F(BinaryFileFaults, OfPaddingAreToldWhenAllOfItHasBeenTried) {
    for (int n = 1; n <= 3; ++n) {
        EXPECT_EQ(writesWhenFailing(n, [](BXBinaryFile& s) { return s.writeAlignData(1); }), 3);
        EXPECT_EQ(readsWhenFailing(n, "abcd", [](BXBinaryFile& s) { return s.readAlignData(1); }),
                  3);
    }
}

TEST_F(BinaryFileFaults, StopAnArrayThatIsReadAtItsCount) {
    BXArray<int> array = {5};
    const auto read = [&](BXBinaryFile& s) { return s.read(array); };
    const std::string bytes("\2\0\0\0\1\0\0\0\2\0\0\0", 12);
    EXPECT_EQ(readsWhenFailing(1, bytes, read), 1);
    EXPECT_EQ(array, BXArray<int>{5});
    EXPECT_EQ(readsWhenFailing(2, bytes, read), 2);
    EXPECT_EQ(array, (BXArray<int>{0, 0}));
}

TEST_F(BinaryFileFaults, StopATextThatIsReadAtItsLengthOrItsBytes) {
    BXString text("old");
    const auto read = [&](BXBinaryFile& s) { return s.read(text); };
    const std::string bytes("\5\0\0\0abcd\0\0\0\0", 12);
    EXPECT_EQ(readsWhenFailing(1, bytes, read), 1);
    EXPECT_EQ(text, BXString("old"));
    EXPECT_EQ(readsWhenFailing(2, bytes, read), 2);
    EXPECT_TRUE(text.isEmpty());
    for (int zero = 3; zero <= 5; ++zero) EXPECT_EQ(readsWhenFailing(zero, bytes, read), 5);
    EXPECT_EQ(text, BXString("abcd"));
}

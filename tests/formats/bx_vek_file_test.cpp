#include "formats/bx_vek_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "os/bx_disk_server.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"

namespace {

class VekFile : public testing::Test {
protected:
    std::string path() const { return m_folder / "file.vek"; }
    BXString bxPath() const { return path().c_str(); }
    std::string written() const { return readFile(path()); }

    TempFolder m_folder;
};

std::string text(const char* bytes, std::size_t size) {
    return std::string(bytes, size);
}

}  // namespace

TEST_F(VekFile, WritesAFileWithoutBlocksAs48Bytes) {
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.writeVekFileHeader());
    EXPECT_TRUE(file.writeEndVekBlock());
    file.close();
    EXPECT_EQ(written(), "Vekb" + std::string(28, '\0') + std::string(16, '\0'));
}

TEST_F(VekFile, PadsAPayloadOfFiveBytesWithThreeZeros) {
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.writeVekBlock(0x01020304, 1.0f, 7, 5, "hello"));
    file.close();
    EXPECT_EQ(written(), text("\4\3\2\1"      // id
                              "\x18\0\0\0"    // blockSize 24
                              "\7\0\0\0"      // count
                              "\0\0\x80\x3F"  // param 1.0
                              "hello\0\0\0",
                              24));
}

TEST_F(VekFile, WritesNoPaddingAfterTwelveBytes) {
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.writeVekBlock(1, 0.0f, 0, 12, "twelve bytes"));
    file.close();
    EXPECT_EQ(written().size(), 28u);
    EXPECT_EQ(written()[4], 28);
}

TEST_F(VekFile, WritesNothingAfterTheHeaderOfAnEmptyBlock) {
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.writeVekBlock(1, 0.0f, 0, 0, nullptr));
    file.close();
    EXPECT_EQ(written().size(), 16u);
    EXPECT_EQ(written()[4], 16);
}

TEST_F(VekFile, WritesAVertexBlockOfTwoVerticesAs40Bytes) {
    const float positions[6] = {1, 2, 3, 4, 5, 6};
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.writeVekBlock(kVekVertices, 0.0f, 2, sizeof positions, positions));
    file.close();
    EXPECT_EQ(written(), ExchangeFile().vertices({1, 2, 3, 4, 5, 6}).bytes().substr(32));
    EXPECT_EQ(written().size(), 40u);
}

TEST_F(VekFile, RefusesTheMagicInCapitals) {
    std::string bytes = ExchangeFile().end().bytes();
    writeFile(path(), bytes);
    EXPECT_TRUE(BXVekFile(bxPath(), "rb").readVekFileHeader());
    bytes.replace(0, 4, "VEKB");
    writeFile(path(), bytes);
    EXPECT_FALSE(BXVekFile(bxPath(), "rb").readVekFileHeader());
}

TEST_F(VekFile, RefusesAHeaderCutShort) {
    writeFile(path(), ExchangeFile().bytes().substr(0, 31));
    EXPECT_FALSE(BXVekFile(bxPath(), "rb").readVekFileHeader());
}

TEST_F(VekFile, PassesOverTheReservedBytesWithoutALook) {
    std::string bytes = ExchangeFile().end().bytes();
    bytes.replace(4, 28, 28, '\x77');
    writeFile(path(), bytes);
    EXPECT_TRUE(BXVekFile(bxPath(), "rb").readVekFileHeader());
}

TEST_F(VekFile, SkipsAnUnknownBlockByItsSize) {
    writeFile(path(),
              ExchangeFile().block(999, 3, "unknown").map(45001, "a.png", 0.5f).end().bytes());
    const BXVekFile file(bxPath(), "rb");
    ASSERT_TRUE(file.readVekFileHeader());
    Vek_Header header;
    ASSERT_TRUE(file.readVekBlockHeader(header));
    EXPECT_EQ(header.id, 999u);
    EXPECT_EQ(header.blockSize, 24u);
    EXPECT_EQ(header.count, 3u);
    file.skipVekBlock(header);
    ASSERT_TRUE(file.readVekBlockHeader(header));
    EXPECT_EQ(header.id, 45001u);
    EXPECT_EQ(header.param, 0.5f);
    BXString name;
    EXPECT_TRUE(file.readVekText(header, name));
    EXPECT_EQ(name, BXString("a.png"));
}

TEST_F(VekFile, MovesBackwardsOverABlockSizeBelow16) {
    writeFile(path(), ExchangeFile().block(1, 0, "").end().bytes());
    const BXVekFile file(bxPath(), "rb");
    Vek_Header header;
    ASSERT_TRUE(file.readVekFileHeader() && file.readVekBlockHeader(header));
    header.blockSize = 0;
    file.skipVekBlock(header);
    header.id = 0;
    ASSERT_TRUE(file.readVekBlockHeader(header));
    EXPECT_EQ(header.id, 1u);
}

TEST_F(VekFile, KeepsTheFieldsThatABrokenBlockHeaderLacks) {
    const std::string block = ExchangeFile().block(5, 6, "", 7.0f).bytes().substr(32);
    for (std::size_t size = 0; size < 16; ++size) {
        writeFile(path(), block.substr(0, size));
        Vek_Header header = {101, 102, 103, 104.0f};
        EXPECT_FALSE(BXVekFile(bxPath(), "rb").readVekBlockHeader(header));
        EXPECT_EQ(header.id, size >= 4 ? 5u : 101u) << size;
        EXPECT_EQ(header.blockSize, size >= 8 ? 16u : 102u) << size;
        EXPECT_EQ(header.count, size >= 12 ? 6u : 103u) << size;
        EXPECT_EQ(header.param, 104.0f) << size;
    }
}

TEST_F(VekFile, RefusesATextThatClaimsMoreThanTheFileHolds) {
    std::string bytes = ExchangeFile().map(45001, "name").end().bytes();
    bytes.replace(36, 4, "\xFC\xFF\xFF\xFF");
    writeFile(path(), bytes);
    const BXVekFile file(bxPath(), "rb");
    Vek_Header header;
    ASSERT_TRUE(file.readVekFileHeader() && file.readVekBlockHeader(header));
    BXString name("as before");
    EXPECT_FALSE(file.readVekText(header, name));
    EXPECT_EQ(name, BXString("as before"));
}

TEST_F(VekFile, ReadsATextLongerThanItsPieces) {
    const std::string longName(10000, 'n');
    writeFile(path(), ExchangeFile().map(45001, longName).end().bytes());
    const BXVekFile file(bxPath(), "rb");
    Vek_Header header;
    ASSERT_TRUE(file.readVekFileHeader() && file.readVekBlockHeader(header));
    BXString name;
    EXPECT_TRUE(file.readVekText(header, name));
    EXPECT_EQ(name, BXString(longName.c_str()));
}

TEST_F(VekFile, ReadsATextWithoutItsNul) {
    writeFile(path(), ExchangeFile().block(45001, 0, "abcd").end().bytes());
    const BXVekFile file(bxPath(), "rb");
    Vek_Header header;
    ASSERT_TRUE(file.readVekFileHeader() && file.readVekBlockHeader(header));
    BXString name;
    EXPECT_TRUE(file.readVekText(header, name));
    EXPECT_EQ(name, BXString("abcd"));
}

TEST_F(VekFile, DoesNothingWithoutAFile) {
    BXVekFile file;
    Vek_Header header = {1, 20, 3, 4.0f};
    BXString name;
    int number = 5;
    float real = 6.0f;
    EXPECT_TRUE(file.m_packArrays);
    EXPECT_EQ(file.m_file, BXDiskServer::s_invalidFile);
    EXPECT_FALSE(file.readVekFileHeader());
    EXPECT_FALSE(file.readVekBlockHeader(header));
    EXPECT_EQ(header.blockSize, 20u);
    file.skipVekBlock(header);
    EXPECT_FALSE(file.readVekText(header, name));
    EXPECT_FALSE(file.writeVekFileHeader());
    EXPECT_FALSE(file.writeVekBlock(1, 0.0f, 0, 0, nullptr));
    EXPECT_FALSE(file.writeEndVekBlock());
    EXPECT_FALSE(file.write(1));
    EXPECT_FALSE(file.write(1.0f));
    EXPECT_FALSE(file.read(number));
    EXPECT_FALSE(file.read(real));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(real, 6.0f);
    file.close();
}

TEST_F(VekFile, ReportsWritesToAFileOpenForReading) {
    writeFile(path(), ExchangeFile().end().bytes());
    BXVekFile file(bxPath(), "rb");
    EXPECT_FALSE(file.writeVekFileHeader());
    EXPECT_FALSE(file.writeVekBlock(1, 0.0f, 0, 0, nullptr));
    EXPECT_FALSE(file.writeEndVekBlock());
}

TEST_F(VekFile, ReportsABlockThatIsNotWrittenWhole) {
    const auto writesInto = [](std::size_t room) {
        std::string bytes(room, '\0');
        BXVekFile file;
        file.m_file = fmemopen(bytes.data(), room, "wb");
        std::setvbuf(file.m_file, nullptr, _IONBF, 0);
        return file.writeVekBlock(777, 0.0f, 5, 5, "hello");
    };
    EXPECT_TRUE(writesInto(24));
    EXPECT_FALSE(writesInto(23)) << "inside the padding";
    EXPECT_FALSE(writesInto(21)) << "before the padding";
    EXPECT_FALSE(writesInto(16)) << "before the payload";
    EXPECT_FALSE(writesInto(12)) << "inside the header";
}

TEST_F(VekFile, SkipsABlockOfMoreThan2GiB) {
    writeFile(path(), ExchangeFile().block(777, 0, "").end().bytes());
    const BXVekFile file(bxPath(), "rb");
    Vek_Header header;
    EXPECT_TRUE(file.readVekFileHeader() && file.readVekBlockHeader(header));
    header.blockSize = 0xC0000010u;
    file.skipVekBlock(header);
    EXPECT_EQ(ftello(file.m_file), off_t{48} + 0xC0000000ll);
}

TEST_F(VekFile, KeepsPackingArraysOnWithBothConstructors) {
    EXPECT_TRUE(BXVekFile().m_packArrays);
    EXPECT_TRUE(BXVekFile(bxPath(), "wb").m_packArrays);
}

TEST_F(VekFile, ClosesTheFormerFileWhenOpeningFails) {
    writeFile(path(), ExchangeFile().end().bytes());
    BXVekFile file(bxPath(), "rb");
    ASSERT_TRUE(file.isOpen());
    EXPECT_FALSE(file.open("/no/such/file", "rb"));
    EXPECT_EQ(file.m_file, BXDiskServer::s_invalidFile);
    EXPECT_TRUE(file.open(bxPath(), "rb"));
    EXPECT_TRUE(file.readVekFileHeader());
}

TEST_F(VekFile, OpensTheValidPartOfAPath) {
    writeFile(path(), ExchangeFile().end().bytes());
    EXPECT_TRUE(BXVekFile(("Disk:" + path()).c_str(), "rb").readVekFileHeader());
}

TEST_F(VekFile, RefusesAFolderAndAPipe) {
    EXPECT_FALSE(BXVekFile(m_folder.path().c_str(), "rb").isOpen());
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_FALSE(BXVekFile(bxPath(), "rb").isOpen());
}

TEST_F(VekFile, WritesNumbersLeastSignificantByteFirst) {
    BXVekFile file(bxPath(), "wb");
    EXPECT_TRUE(file.write(0x01020304));
    EXPECT_TRUE(file.write(-2));
    EXPECT_TRUE(file.write(-1.5f));
    file.close();
    EXPECT_EQ(written(), text("\4\3\2\1"
                              "\xFE\xFF\xFF\xFF"
                              "\0\0\xC0\xBF",
                              12));
    int number;
    float real;
    BXVekFile back(bxPath(), "rb");
    EXPECT_TRUE(back.read(number) && number == 0x01020304);
    EXPECT_TRUE(back.read(number) && number == -2);
    EXPECT_TRUE(back.read(real) && real == -1.5f);
    EXPECT_FALSE(back.read(number));
}

#include "os/bx_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <utility>

#include "tests/os/full_disk.h"
#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"

using Access = BXFile::Access;

namespace {

constexpr std::int64_t kFiveGiB = std::int64_t{5} << 30;

bool opens(const std::string& path, Access access) {
    return BXFile(path.c_str(), access).isOpen();
}

bool opensAtAll(const std::string& path) {
    std::string contents;
    bool opened = false;
    BXFile::overwrite(path.c_str(), "x", 1, opened);
    std::FILE* const stream = BXFile::openStream(path.c_str(), "rb");
    if (stream) std::fclose(stream);
    return opened || stream || opens(path, Access::Read) || opens(path, Access::ReadWrite) ||
           BXFile::readWhole(path.c_str(), contents) || BXFile::append(path.c_str(), "x", 1);
}

int lowestFreeDescriptor() {
    const int descriptor = dup(0);
    close(descriptor);
    return descriptor;
}

}  // namespace

TEST(File, OpensARegularFile) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    EXPECT_TRUE(opens(folder / "a", Access::Read));
    EXPECT_TRUE(opens(folder / "a", Access::ReadWrite));
}

TEST(File, OpeningDoesNotCreateAFile) {
    TempFolder folder;
    EXPECT_FALSE(opens(folder / "a", Access::Read));
    EXPECT_FALSE(opens(folder / "a", Access::ReadWrite));
    EXPECT_FALSE(fileIsThere(folder / "a"));
}

TEST(File, RejectsANullPath) {
    std::string contents;
    EXPECT_FALSE(BXFile(nullptr, Access::Read).isOpen());
    EXPECT_FALSE(BXFile::readWhole(nullptr, contents));
    EXPECT_FALSE(BXFile::overwrite(nullptr, "x", 1));
    EXPECT_FALSE(BXFile::append(nullptr, "x", 1));
    EXPECT_EQ(BXFile::openStream(nullptr, "rb"), nullptr);
}

TEST(File, RejectsAFolder) {
    TempFolder folder;
    EXPECT_FALSE(opensAtAll(folder.path()));
}

TEST(File, RejectsAPipeWithoutWaitingForItsOtherEnd) {
    TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(opensAtAll(folder / "pipe"));
}

TEST(File, RejectsAPipeThatHasAReader) {
    TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int reader = open((folder / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_FALSE(opensAtAll(folder / "pipe"));
    char byte;
    EXPECT_EQ(read(reader, &byte, 1), 0) << "something was written into the pipe";
    close(reader);
}

TEST(File, RejectsADevice) {
    EXPECT_FALSE(opensAtAll("/dev/null"));
    EXPECT_FALSE(opensAtAll("/dev/zero"));
}

TEST(File, RejectsASocket) {
    TempFolder folder;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder / "socket").c_str(), sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_FALSE(opensAtAll(folder / "socket"));
    close(descriptor);
}

TEST(File, FollowsALinkToAFile) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    ASSERT_EQ(symlink("a", (folder / "link").c_str()), 0);
    EXPECT_EQ(BXFile((folder / "link").c_str(), Access::Read).size(), 3);
}

TEST(File, RejectsALinkThatLeadsNowhere) {
    TempFolder folder;
    ASSERT_EQ(symlink("missing", (folder / "link").c_str()), 0);
    EXPECT_FALSE(opens(folder / "link", Access::Read));
}

TEST(File, RejectsALoopOfLinks) {
    TempFolder folder;
    ASSERT_EQ(symlink("two", (folder / "one").c_str()), 0);
    ASSERT_EQ(symlink("one", (folder / "two").c_str()), 0);
    EXPECT_FALSE(opensAtAll(folder / "one"));
}

TEST(File, RejectsAFileThatMayNotBeRead) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    ASSERT_EQ(chmod((folder / "a").c_str(), 0200), 0);
    const ObeyPermissions obey;
    EXPECT_FALSE(opens(folder / "a", Access::Read));
}

TEST(File, RejectsAFileThatMayNotBeWritten) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    ASSERT_EQ(chmod((folder / "a").c_str(), 0400), 0);
    const ObeyPermissions obey;
    EXPECT_TRUE(opens(folder / "a", Access::Read));
    EXPECT_FALSE(opens(folder / "a", Access::ReadWrite));
    EXPECT_FALSE(BXFile::overwrite((folder / "a").c_str(), "x", 1));
    EXPECT_FALSE(BXFile::append((folder / "a").c_str(), "x", 1));
    EXPECT_EQ(readFile(folder / "a"), "abc");
}

TEST(File, OpensANameOf255Bytes) {
    TempFolder folder;
    const std::string name(255, 'n');
    writeFile(folder / name, "abc");
    EXPECT_TRUE(opens(folder / name, Access::Read));
    EXPECT_FALSE(BXFile::overwrite((folder / (name + "n")).c_str(), "x", 1)) << "256 are too many";
}

TEST(File, ReadsAtAnOffset) {
    TempFolder folder;
    writeFile(folder / "a", "abcdef");
    char bytes[3] = {};
    EXPECT_EQ(BXFile((folder / "a").c_str(), Access::Read).readAt(2, bytes, 3), 3u);
    EXPECT_EQ(std::string(bytes, 3), "cde");
}

TEST(File, ReadsUpToTheEnd) {
    TempFolder folder;
    writeFile(folder / "a", "abcdef");
    char bytes[4] = {'.', '.', '.', '.'};
    const BXFile file((folder / "a").c_str(), Access::Read);
    EXPECT_EQ(file.readAt(4, bytes, 4), 2u);
    EXPECT_EQ(std::string(bytes, 4), "ef..");
    EXPECT_EQ(file.readAt(6, bytes, 4), 0u);
    EXPECT_EQ(file.readAt(kFiveGiB, bytes, 4), 0u);
}

TEST(File, ReadsNothingAtANegativeOffset) {
    TempFolder folder;
    writeFile(folder / "a", "abcdef");
    char byte = '.';
    EXPECT_EQ(BXFile((folder / "a").c_str(), Access::Read).readAt(-1, &byte, 1), 0u);
    EXPECT_EQ(byte, '.');
}

TEST(File, DoesNothingWhenNotOpen) {
    BXFile file;
    char byte = '.';
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.size(), 0);
    EXPECT_EQ(file.readAt(0, &byte, 1), 0u);
    EXPECT_FALSE(file.writeAt(0, "x", 1));
    EXPECT_FALSE(file.truncate(0));
    file.close();
    EXPECT_EQ(byte, '.');
}

TEST(File, WritesAtAnOffsetAndKeepsTheRest) {
    TempFolder folder;
    writeFile(folder / "a", "abcdef");
    BXFile file((folder / "a").c_str(), Access::ReadWrite);
    EXPECT_TRUE(file.writeAt(1, "XY", 2));
    EXPECT_EQ(readFile(folder / "a"), "aXYdef");
}

TEST(File, WritesBeyondTheEnd) {
    TempFolder folder;
    writeFile(folder / "a", "ab");
    BXFile file((folder / "a").c_str(), Access::ReadWrite);
    EXPECT_TRUE(file.writeAt(4, "c", 1));
    EXPECT_EQ(readFile(folder / "a"), std::string("ab\0\0c", 5));
}

TEST(File, RejectsWritingWhenOpenForReading) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    BXFile file((folder / "a").c_str(), Access::Read);
    EXPECT_FALSE(file.writeAt(0, "x", 1));
    EXPECT_FALSE(file.truncate(0));
    EXPECT_EQ(readFile(folder / "a"), "abc");
}

TEST(File, ReadsAndWritesBeyond4GiB) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    BXFile file((folder / "a").c_str(), Access::ReadWrite);
    ASSERT_TRUE(file.writeAt(kFiveGiB, "xyz", 3));
    EXPECT_EQ(file.size(), kFiveGiB + 3);
    char bytes[2] = {};
    EXPECT_EQ(file.readAt(kFiveGiB + 1, bytes, 2), 2u);
    EXPECT_EQ(std::string(bytes, 2), "yz");
    EXPECT_EQ(file.readAt(0, bytes, 2), 2u);
    EXPECT_EQ(std::string(bytes, 2), "ab");
}

TEST(File, CutsToALength) {
    TempFolder folder;
    writeFile(folder / "a", "abcdef");
    BXFile file((folder / "a").c_str(), Access::ReadWrite);
    EXPECT_TRUE(file.truncate(2));
    EXPECT_EQ(file.size(), 2);
    EXPECT_EQ(readFile(folder / "a"), "ab");
    EXPECT_FALSE(file.truncate(-1));
}

TEST(File, MovesToAnother) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    BXFile first((folder / "a").c_str(), Access::Read);
    BXFile second(std::move(first));
    BXFile third;
    third = std::move(second);
    EXPECT_EQ(third.size(), 3);
}

TEST(File, ClosesItself) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    const int before = lowestFreeDescriptor();
    {
        BXFile file((folder / "a").c_str(), Access::Read);
        EXPECT_GT(lowestFreeDescriptor(), before);
        BXFile taken(std::move(file));
        EXPECT_GT(lowestFreeDescriptor(), before);
        taken = BXFile((folder / "a").c_str(), Access::Read);
        EXPECT_TRUE(taken.isOpen());
    }
    EXPECT_EQ(lowestFreeDescriptor(), before);
}

TEST(File, KeepsNoDescriptorOfWhatItRejects) {
    const int before = lowestFreeDescriptor();
    EXPECT_FALSE(opensAtAll("/dev/null"));
    EXPECT_EQ(lowestFreeDescriptor(), before);
}

TEST(File, IsNotHandedToOtherPrograms) {
    TempFolder folder;
    writeFile(folder / "a", "abc");
    const int descriptor = lowestFreeDescriptor();
    const BXFile file((folder / "a").c_str(), Access::Read);
    EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST(File, MakesRoomByZerosOrStaysAsItWas) {
    TempFolder folder;
    writeFile(folder / "a", "old");
    BXFile file((folder / "a").c_str(), BXFile::Access::ReadWrite);
    EXPECT_TRUE(file.extend(2));
    EXPECT_EQ(readFile(folder / "a"), "old");
    EXPECT_TRUE(file.extend(10000));
    EXPECT_EQ(readFile(folder / "a"), "old" + std::string(9997, '\0'));
    EXPECT_FALSE(whereFilesEndAt(15000, [&] { return file.extend(20000); }));
    EXPECT_EQ(file.size(), 10000);
    EXPECT_GT(file.freeSpace(), 0);
}

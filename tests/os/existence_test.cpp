// BXDiskServer: what is there, creating, removing, renaming, modes.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "os/bx_disk_server.h"
#include "tests/os/disk_text.h"

namespace {

// Goes back to the working folder of before.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::string& path) : m_before(BXDiskServer::getCurrentPath()) {
        EXPECT_EQ(chdir(path.c_str()), 0);
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder() { EXPECT_EQ(chdir(m_before.c_str()), 0); }

private:
    const BXString m_before;
};

void makeSocket(const std::string& path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(descriptor);
}

std::string withVolume(const std::string& path) {
    return "Disk:" + path;
}

// Names that have broken file code before.
const char* const kOddNames[] = {"a b",
                                 "it's",
                                 "\"quoted\"",
                                 "100%s%n",
                                 "\xC3\xA4\xC3\xB6\xC3\xBC",
                                 "\xE6\x97\xA5\xE6\x9C\xAC",
                                 "-rf",
                                 "$HOME`x`",
                                 "a\nb",
                                 ".hidden"};

}  // namespace

TEST(DiskServer, HasNoStreamForNoFile) {
    EXPECT_EQ(BXDiskServer::s_invalidFile, nullptr);
}

TEST(FileExists, IsTrueForAFileAlone) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_TRUE(BXDiskServer::fileExists(at(folder, "a")));
    EXPECT_FALSE(BXDiskServer::fileExists(text(folder.path())));
    EXPECT_FALSE(BXDiskServer::fileExists(at(folder, "missing")));
}

TEST(FolderExists, IsTrueForAFolderAlone) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_TRUE(BXDiskServer::folderExists(text(folder.path())));
    EXPECT_TRUE(BXDiskServer::folderExists(text(folder.path() + "/")));
    EXPECT_FALSE(BXDiskServer::folderExists(at(folder, "a")));
    EXPECT_FALSE(BXDiskServer::folderExists(at(folder, "missing")));
}

TEST(FileExists, DropsAVolumePrefix) {
    TempFolder folder;
    writeFile(folder / "x", "");
    EXPECT_TRUE(BXDiskServer::fileExists(text(withVolume(folder / "x"))));
    EXPECT_FALSE(BXDiskServer::fileExists(text(withVolume(folder.path()))));
}

TEST(FolderExists, DropsAVolumePrefix) {
    TempFolder folder;
    writeFile(folder / "x", "");
    EXPECT_TRUE(BXDiskServer::folderExists(text(withVolume(folder.path()))));
    EXPECT_FALSE(BXDiskServer::folderExists(text(withVolume(folder / "x"))));
}

TEST(FileExists, IsFalseForNoPath) {
    EXPECT_FALSE(BXDiskServer::fileExists(BXString()));
    EXPECT_FALSE(BXDiskServer::fileExists(""));
    EXPECT_FALSE(BXDiskServer::folderExists(BXString()));
    EXPECT_FALSE(BXDiskServer::folderExists(""));
}

TEST(FileExists, FollowsLinks) {
    TempFolder folder;
    writeFile(folder / "a", "");
    ASSERT_EQ(symlink("a", (folder / "file").c_str()), 0);
    ASSERT_EQ(symlink(".", (folder / "here").c_str()), 0);
    ASSERT_EQ(symlink("missing", (folder / "nowhere").c_str()), 0);
    ASSERT_EQ(symlink("loop", (folder / "loop").c_str()), 0);
    EXPECT_TRUE(BXDiskServer::fileExists(at(folder, "file")));
    EXPECT_TRUE(BXDiskServer::folderExists(at(folder, "here")));
    EXPECT_FALSE(BXDiskServer::fileExists(at(folder, "nowhere")));
    EXPECT_FALSE(BXDiskServer::fileExists(at(folder, "loop")));
    EXPECT_FALSE(BXDiskServer::folderExists(at(folder, "loop")));
}

// Required(R20)
TEST(FileExists, ASocketCountsAsAFileAndAsAFolder) {
    TempFolder folder;
    makeSocket(folder / "socket");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(BXDiskServer::fileExists(at(folder, "socket")));
    EXPECT_TRUE(BXDiskServer::folderExists(at(folder, "socket")));
    EXPECT_FALSE(BXDiskServer::fileExists(at(folder, "pipe")));
    EXPECT_FALSE(BXDiskServer::folderExists(at(folder, "pipe")));
}

TEST(FileExists, FindsOddNames) {
    TempFolder folder;
    for (const char* name : kOddNames) {
        writeFile(folder / name, "");
        EXPECT_TRUE(BXDiskServer::fileExists(at(folder, name))) << name;
    }
    const std::string longest(255, 'n');
    writeFile(folder / longest, "");
    EXPECT_TRUE(BXDiskServer::fileExists(at(folder, longest)));
    EXPECT_FALSE(BXDiskServer::fileExists(at(folder, longest + "n")));
    EXPECT_FALSE(BXDiskServer::fileExists(text(std::string(100000, 'n'))));
}

TEST(CreateFolder, MakesAFolderForItsOwnerAlone) {
    TempFolder folder;
    const mode_t before = umask(0);
    EXPECT_TRUE(BXDiskServer::createFolder(at(folder, "a b")));
    umask(before);
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "a b")), 0040700);
}

TEST(CreateFolder, RejectsWhatIsThereAlready) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_FALSE(BXDiskServer::createFolder(text(folder.path())));
    EXPECT_FALSE(BXDiskServer::createFolder(at(folder, "a")));
    EXPECT_FALSE(BXDiskServer::createFolder(BXString()));
}

TEST(CreateFolder, MakesNoParents) {
    TempFolder folder;
    EXPECT_FALSE(BXDiskServer::createFolder(at(folder, "a/b")));
    EXPECT_FALSE(fileIsThere(folder / "a"));
}

TEST(CreateFolder, TakesThePathAsItIs) {
    TempFolder folder;
    WorkingFolder working(folder.path());
    EXPECT_FALSE(BXDiskServer::createFolder(text(withVolume(folder / "a"))));
    EXPECT_TRUE(BXDiskServer::createFolder("Disk:a"));
    EXPECT_TRUE(fileIsThere(folder / "Disk:a"));
}

TEST(CurrentPath, IsTheWorkingFolder) {
    TempFolder folder;
    WorkingFolder working(folder.path());
    char* const real = realpath(folder.path().c_str(), nullptr);
    EXPECT_STREQ(BXDiskServer::getCurrentPath().c_str(), real);
    std::free(real);
}

TEST(CurrentPath, IsEmptyWhenItDoesNotFit) {
    TempFolder folder;
    std::string path = folder.path();
    WorkingFolder working(path);
    for (int i = 0; i < 3; ++i) {
        path += "/" + std::string(200, 'n');
        ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    }
    ASSERT_EQ(chdir(path.c_str()), 0);
    EXPECT_TRUE(BXDiskServer::getCurrentPath().isEmpty());
}

TEST(CurrentPath, HasAtMost511Bytes) {
    TempFolder folder;
    char* const real = realpath(folder.path().c_str(), nullptr);
    std::string path = real;
    std::free(real);
    WorkingFolder working(path);
    while (path.size() < 400) {
        path += "/" + std::string(99, 'n');
        ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    }
    for (const std::size_t length : {std::size_t{511}, std::size_t{512}}) {
        const std::string whole = path + "/" + std::string(length - path.size() - 1, 'm');
        ASSERT_EQ(whole.size(), length);
        ASSERT_EQ(mkdir(whole.c_str(), 0700), 0);
        ASSERT_EQ(chdir(whole.c_str()), 0);
        EXPECT_STREQ(BXDiskServer::getCurrentPath().c_str(), length == 511 ? whole.c_str() : "");
    }
}

TEST(ApplicationFolder, IsTheSameForBothWordSizes) {
    EXPECT_STREQ(BXDiskServer::getApplicationFolder().c_str(), "/Applications");
    EXPECT_STREQ(BXDiskServer::getApplicationX86Folder(false).c_str(), "/Applications");
    EXPECT_STREQ(BXDiskServer::getApplicationX86Folder(true).c_str(), "/Applications");
}

TEST(DeleteFile, RemovesAFile) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_TRUE(BXDiskServer::deleteFile(text(withVolume(folder / "a"))));
    EXPECT_FALSE(fileIsThere(folder / "a"));
    EXPECT_FALSE(BXDiskServer::deleteFile(at(folder, "a")));
    EXPECT_FALSE(BXDiskServer::deleteFile(BXString()));
}

TEST(DeleteFile, RemovesALinkAndNotWhatItLeadsTo) {
    TempFolder folder;
    writeFile(folder / "a", "");
    ASSERT_EQ(symlink("a", (folder / "link").c_str()), 0);
    EXPECT_TRUE(BXDiskServer::deleteFile(at(folder, "link")));
    EXPECT_TRUE(fileIsThere(folder / "a"));
    EXPECT_FALSE(fileIsThere(folder / "link"));
}

// Required(R28)
TEST(DeleteFile, RemovesAnEmptyFolderToo) {
    TempFolder folder;
    makeFolders(folder / "empty");
    makeFolders(folder / "full/below");
    EXPECT_TRUE(BXDiskServer::deleteFile(at(folder, "empty")));
    EXPECT_FALSE(fileIsThere(folder / "empty"));
    EXPECT_FALSE(BXDiskServer::deleteFile(at(folder, "full")));
    EXPECT_TRUE(fileIsThere(folder / "full/below"));
}

TEST(DeleteFolder, RemovesOnlyAnEmptyOne) {
    TempFolder folder;
    makeFolders(folder / "empty");
    makeFolders(folder / "full/below");
    EXPECT_TRUE(BXDiskServer::deleteFolder(text(withVolume(folder / "empty"))));
    EXPECT_FALSE(fileIsThere(folder / "empty"));
    EXPECT_FALSE(BXDiskServer::deleteFolder(at(folder, "full")));
    EXPECT_TRUE(fileIsThere(folder / "full/below"));
    EXPECT_FALSE(BXDiskServer::deleteFolder(BXString()));
}

TEST(DeleteFolder, RemovesAFileToo) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_TRUE(BXDiskServer::deleteFolder(at(folder, "a")));
    EXPECT_FALSE(fileIsThere(folder / "a"));
}

TEST(RenameFile, MovesAFileOverAnother) {
    TempFolder folder;
    writeFile(folder / "a b", "new");
    writeFile(folder / "c", "old");
    EXPECT_TRUE(BXDiskServer::renameFile(at(folder, "a b"), at(folder, "c")));
    EXPECT_FALSE(fileIsThere(folder / "a b"));
    EXPECT_EQ(readFile(folder / "c"), "new");
}

TEST(RenameFile, RejectsWhatIsMissing) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_FALSE(BXDiskServer::renameFile(at(folder, "missing"), at(folder, "b")));
    EXPECT_FALSE(BXDiskServer::renameFile(at(folder, "a"), at(folder, "missing/b")));
    EXPECT_FALSE(BXDiskServer::renameFile(BXString(), at(folder, "b")));
    EXPECT_FALSE(BXDiskServer::renameFile(at(folder, "a"), BXString()));
    EXPECT_TRUE(fileIsThere(folder / "a"));
}

// Required(R26)
TEST(RenameFile, DropsTheVolumeOfTheSourceAlone) {
    TempFolder folder;
    writeFile(folder / "a", "");
    writeFile(folder / "b", "");
    WorkingFolder working(folder.path());
    EXPECT_FALSE(BXDiskServer::renameFile(at(folder, "a"), text(withVolume(folder / "c"))));
    EXPECT_TRUE(BXDiskServer::renameFile(text(withVolume(folder / "a")), "Disk:c"));
    EXPECT_TRUE(fileIsThere(folder / "Disk:c"));
    EXPECT_FALSE(BXDiskServer::renameFile("Disk:c", "d"));
    EXPECT_TRUE(BXDiskServer::renameFile("Disk:b", "d"));
}

TEST(Mode, IsReadWithItsType) {
    TempFolder folder;
    writeFile(folder / "a", "");
    ASSERT_EQ(chmod((folder / "a").c_str(), 0640), 0);
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "a")), 0100640);
    EXPECT_EQ(BXDiskServer::getMode(text(folder.path())) & 0170000, 0040000);
}

TEST(Mode, HasTheBitsThatAreNoPermissions) {
    TempFolder folder;
    writeFile(folder / "a", "");
    for (const unsigned short mode : std::initializer_list<unsigned short>{04755, 01777, 02640}) {
        EXPECT_EQ(BXDiskServer::setMode(at(folder, "a"), mode), 0);
        EXPECT_EQ(BXDiskServer::getMode(at(folder, "a")), 0100000 | mode);
    }
}

TEST(Mode, IsThatOfWhatALinkLeadsTo) {
    TempFolder folder;
    writeFile(folder / "a", "");
    ASSERT_EQ(symlink("a", (folder / "link").c_str()), 0);
    EXPECT_EQ(BXDiskServer::setMode(at(folder, "link"), 0640), 0);
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "link")), 0100640);
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "a")), 0100640);
}

TEST(Mode, IsZeroForWhatIsMissing) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "missing")), 0);
    EXPECT_EQ(BXDiskServer::getMode(BXString()), 0);
    EXPECT_EQ(BXDiskServer::getMode(text(withVolume(folder / "a"))), 0) << "raw";
}

TEST(Mode, IsSetWithTheSystemsOwnResult) {
    TempFolder folder;
    writeFile(folder / "a", "");
    EXPECT_EQ(BXDiskServer::setMode(at(folder, "a"), 0600), 0);
    EXPECT_EQ(BXDiskServer::getMode(at(folder, "a")), 0100600);
    EXPECT_EQ(BXDiskServer::setMode(at(folder, "missing"), 0600), -1);
    EXPECT_EQ(BXDiskServer::setMode(text(withVolume(folder / "a")), 0640), -1) << "raw";
}

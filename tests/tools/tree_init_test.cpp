// Makes shared trees in folders of its own.

#include "tools/vek/tree_init.h"

#include <unistd.h>

#include "tests/tools/tree_init_fixture.h"
#include "tools/vek/shipped_apps.h"

namespace {

class MaskOf {
public:
    explicit MaskOf(mode_t mask) : m_before(umask(mask)) {}
    ~MaskOf() { umask(m_before); }

private:
    mode_t m_before;
};

}  // namespace

TEST_F(TreeInit, MakesTheWholeTreeAndSaysSo) {
    const TreeReport report = make();
    EXPECT_EQ(snapshot(), m_fresh);
    EXPECT_EQ(report.count(Outcome::Made), m_fresh.size());
    EXPECT_EQ(report.steps.size(), m_fresh.size());
    for (const auto& [path, what] : m_fresh) {
        EXPECT_EQ(pathsOf(report, Outcome::Made).count(path), 1u) << path;
    }
}

TEST_F(TreeInit, OpensTheTreeToEveryUserWhateverTheMask) {
    const MaskOf mask(0077);
    make();
    EXPECT_EQ(snapshot(), m_fresh);
    for (const char* parent : {"Users", "Users/Shared"}) {
        EXPECT_EQ(snapshotOf(m_folder / parent)["."], "0755 folder") << parent;
    }
}

TEST_F(TreeInit, ChangesNothingTheSecondTime) {
    make();
    struct stat before, after;
    ASSERT_EQ(stat(file("VekApps/Paint/edit.sh").c_str(), &before), 0);
    const TreeReport report = make();
    EXPECT_EQ(snapshot(), m_fresh);
    EXPECT_EQ(report.count(Outcome::Kept), m_fresh.size());
    EXPECT_EQ(report.steps.size(), m_fresh.size());
    EXPECT_EQ(remarks(report), std::set<std::string>());
    ASSERT_EQ(stat(file("VekApps/Paint/edit.sh").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_ctim.tv_nsec, after.st_ctim.tv_nsec);
}

TEST_F(TreeInit, KeepsWhatAUserChangedAndBringsWhatIsMissing) {
    make();
    writeFile(file("VekHub/Vek_Application.txt"), "Paint\n");
    writeFile(file("VekHub/Vek_ObjectList.txt"), "/a/b\n");
    writeFile(file("VekApps/Paint/Vek_Config.txt"), "PATH = \"/x\"\n");
    writeFile(file("VekApps/Paint/Vek_Info.txt"), "NAME \"My Paint\"\n");
    writeFile(file("VekProjects/Default/mesh.vek"), "Vekb");
    makeFolders(file("VekApps/Other"));
    ASSERT_EQ(chmod(file("VekApps/Paint/edit.sh").c_str(), 0700), 0);
    ASSERT_EQ(chmod(file("VekProjects").c_str(), 0750), 0);
    ASSERT_EQ(chmod(file("VekHub/Vek_Config.txt").c_str(), 0604), 0);
    ASSERT_EQ(chmod(file("VekHub").c_str(), 01777), 0);
    ASSERT_EQ(unlink(file("VekApps/Paint/Paint.app/Contents/MacOS/Paint").c_str()), 0);
    ASSERT_EQ(unlink(file("VekHub/Vek_ObjectPath.txt").c_str()), 0);
    Snapshot expected = snapshot();
    const TreeReport report = make();
    for (const char* path :
         {"VekApps/Paint/Paint.app/Contents/MacOS/Paint", "VekHub/Vek_ObjectPath.txt"}) {
        expected[path] = m_fresh.at(path);
    }
    EXPECT_EQ(snapshot(), expected);
    EXPECT_EQ(pathsOf(report, Outcome::Made),
              (std::set<std::string>{"VekApps/Paint/Paint.app/Contents/MacOS/Paint",
                                     "VekHub/Vek_ObjectPath.txt"}));
    EXPECT_EQ(
        remarks(report),
        (std::set<std::string>{"kept VekApps/Paint/Vek_Info.txt: it differs from the shipped one",
                               "kept VekApps/Paint/edit.sh: its mode is 0700, not 0755",
                               "kept VekProjects: its mode is 0750, not 0777",
                               "kept VekHub/Vek_Config.txt: its mode is 0604, not 0666"}));
}

TEST_F(TreeInit, RefusesToShipAnythingButFilesAndFolders) {
    fs::create_symlink("edit.sh", apps("Paint/link.sh"));
    fs::create_symlink(".", apps("Paint/loop"));
    ASSERT_EQ(mkfifo(apps("Paint/pipe").c_str(), 0666), 0);
    EXPECT_EQ(pathsOf(make(), Outcome::Failed),
              (std::set<std::string>{"VekApps/Paint/link.sh", "VekApps/Paint/loop",
                                     "VekApps/Paint/pipe"}));
    EXPECT_EQ(snapshot(), m_fresh);
}

TEST_F(TreeInit, TakesApplicationsOfOddNames) {
    const std::string longName(255, 'n');
    for (const std::string& name :
         {std::string("two words"), std::string("it's \"q\" $x"), std::string("a\nb"),
          std::string("\xE6\x97\xA5"), std::string("\xFF\xFE"), longName}) {
        makeFolders(apps(name));
        ship(name + "/Vek_Info.txt", "NAME x\n", 0644);
        make();
        EXPECT_EQ(snapshot()["VekApps/" + name + "/Vek_Info.txt"], "0644 NAME x\n") << name;
    }
}

TEST_F(TreeInit, CopiesLargeFilesByteForByte) {
    std::string bytes;
    for (int i = 0; i < 3000000; ++i) bytes += static_cast<char>(i * 7 + i / 1000);
    ship("Paint/large.bin", bytes, 0644);
    make();
    EXPECT_EQ(readFile(file("VekApps/Paint/large.bin")), bytes);
    bytes[2999999] ^= 1;
    writeFile(file("VekApps/Paint/large.bin"), bytes);
    EXPECT_EQ(
        remarks(make()),
        std::set<std::string>{"kept VekApps/Paint/large.bin: it differs from the shipped one"});
}

TEST_F(TreeInit, ShipsAConfigurationThatEveryUserCanChange) {
    ship("Paint/Vek_Config.txt", "X = 1\n", 0600);
    make();
    EXPECT_EQ(snapshot()["VekApps/Paint/Vek_Config.txt"], "0666 X = 1\n");
}

TEST_F(TreeInit, KnowsAnApplicationByItsDescriptor) {
    makeFolders(apps("Empty"));
    makeFolders(apps("Folder/Vek_Info.txt"));
    std::error_code error;
    EXPECT_EQ(shippedApps(m_folder / "apps", error), std::vector<std::string>{"Paint"});
    EXPECT_FALSE(error);
    EXPECT_EQ(shippedApps(m_folder / "none", error), std::vector<std::string>());
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

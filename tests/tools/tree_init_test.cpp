// Makes shared trees in folders of its own.

#include "tools/vek/tree_init.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"
#include "tests/tools/tree_snapshot.h"
#include "tools/vek/shipped_apps.h"

namespace fs = std::filesystem;

namespace {

using Outcome = TreeStep::Outcome;
using Snapshot = std::map<std::string, std::string>;

class MaskOf {
public:
    explicit MaskOf(mode_t mask) : m_before(umask(mask)) {}
    ~MaskOf() { umask(m_before); }

private:
    mode_t m_before;
};

class TreeInit : public testing::Test {
protected:
    TreeInit() {
        // As a build leaves an application behind.
        makeFolders(apps("Paint/Paint.app/Contents/MacOS"));
        makeFolders(apps("Paint/CMakeFiles/paint.dir"));
        makeFolders(apps("CMakeFiles"));
        ship("Paint/Vek_Info.txt", "NAME \"Paint\"\n", 0600);
        ship("Paint/edit.sh", "#!/bin/sh\n", 0700);
        ship("Paint/Paint.app/Contents/MacOS/Paint", std::string("\0\1\2", 3), 0755);
        ship("Paint/cmake_install.cmake", "of the build", 0644);
        ship("Paint/Makefile", "of the build", 0644);
        ship("Paint/CMakeFiles/paint.dir/x.o", "of the build", 0644);
        ship("CMakeFiles/Vek_Info.txt", "of the build", 0644);
        ship("notes.txt", "no application", 0644);
    }

    std::string apps(const std::string& name) const { return m_folder / ("apps/" + name); }
    void ship(const std::string& name, const std::string& bytes, mode_t mode) {
        writeFile(apps(name), bytes);
        ASSERT_EQ(chmod(apps(name).c_str(), mode), 0);
    }
    std::string root() const { return m_folder / "Users/Shared/Tree"; }
    std::string file(const std::string& name) const { return root() + "/" + name; }
    TreeReport make() const { return makeTree(root(), m_folder / "apps"); }
    Snapshot snapshot() const { return snapshotOf(root()); }

    // "outcome path: note", one for each step that is not an ordinary one.
    static std::set<std::string> remarks(const TreeReport& report) {
        std::set<std::string> all;
        for (const TreeStep& step : report.steps) {
            if (step.outcome == Outcome::Failed)
                all.insert("failed " + step.path + ": " + step.note);
            if (step.outcome == Outcome::Kept && !step.note.empty())
                all.insert("kept " + step.path + ": " + step.note);
        }
        return all;
    }
    static std::set<std::string> pathsOf(const TreeReport& report, Outcome outcome) {
        std::set<std::string> paths;
        for (const TreeStep& step : report.steps) {
            if (step.outcome == outcome) paths.insert(step.path);
        }
        return paths;
    }

    TempFolder m_folder;
    const Snapshot m_fresh = {
        {".", "0777 folder"},
        {"VekHub", "0777 folder"},
        {"VekHub/Vek_Application.txt", "0666 "},
        {"VekHub/Vek_ProjectPath.txt", "0666 "},
        {"VekHub/Vek_ObjectPath.txt", "0666 "},
        {"VekHub/Vek_ObjectList.txt", "0666 "},
        {"VekHub/Vek_Config.txt", "0666 "},
        {"VekProjects", "0777 folder"},
        {"VekProjects/Default", "0777 folder"},
        {"VekApps", "0777 folder"},
        {"VekApps/Paint", "0777 folder"},
        {"VekApps/Paint/Vek_Info.txt", "0644 NAME \"Paint\"\n"},
        {"VekApps/Paint/Vek_Config.txt", "0666 "},
        {"VekApps/Paint/Vek_InstallList.txt", "0666 "},
        {"VekApps/Paint/edit.sh", "0755 #!/bin/sh\n"},
        {"VekApps/Paint/Paint.app", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents/MacOS", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents/MacOS/Paint", std::string("0755 \0\1\2", 8)},
    };
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

TEST_F(TreeInit, FollowsNoLinkOutOfTheTree) {
    make();
    makeFolders(m_folder / "outside/Default");
    makeFolders(m_folder / "outside/Paint");
    writeFile(m_folder / "outside/mine.txt", "mine");
    const Snapshot outside = snapshotOf(m_folder / "outside");
    for (const char* path : {"VekProjects", "VekApps/Paint", "VekHub"}) fs::remove_all(file(path));
    make();
    fs::remove_all(file("VekProjects"));
    fs::create_symlink(m_folder / "outside", file("VekProjects"));
    fs::remove_all(file("VekApps/Paint/Paint.app"));
    fs::create_symlink(m_folder / "outside/Paint", file("VekApps/Paint/Paint.app"));
    fs::remove(file("VekApps/Paint/edit.sh"));
    fs::create_symlink(m_folder / "outside/new.sh", file("VekApps/Paint/edit.sh"));
    fs::remove(file("VekHub/Vek_Config.txt"));
    fs::create_symlink(m_folder / "outside/config.txt", file("VekHub/Vek_Config.txt"));
    fs::remove(file("VekHub/Vek_ObjectList.txt"));
    fs::create_symlink("Vek_ObjectList.txt", file("VekHub/Vek_ObjectList.txt"));
    const Snapshot before = snapshot();
    const TreeReport report = make();
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(snapshotOf(m_folder / "outside"), outside);
    EXPECT_EQ(remarks(report),
              (std::set<std::string>{
                  "kept VekProjects: it is a link, which is not followed",
                  "failed VekApps/Paint/Paint.app: It is a link, and what it leads to lacks "
                  "Contents.",
                  "failed VekApps/Paint/edit.sh: It is a link that leads to no file.",
                  "failed VekHub/Vek_Config.txt: It is a link that leads to no file.",
                  "failed VekHub/Vek_ObjectList.txt: It is a link that leads to no file."}));
}

TEST_F(TreeInit, IsNotCompleteBehindALinkThatLacksSomething) {
    make();
    for (const char* name : {"VekHub", "VekApps", "VekProjects"}) {
        fs::rename(file(name), m_folder / name);
        fs::create_symlink(m_folder / name, file(name));
    }
    EXPECT_EQ(remarks(make()),
              (std::set<std::string>{"kept VekHub: it is a link, which is not followed",
                                     "kept VekApps: it is a link, which is not followed",
                                     "kept VekProjects: it is a link, which is not followed"}));
    fs::remove(m_folder / "VekHub/Vek_Config.txt");
    fs::remove(m_folder / "VekApps/Paint/Paint.app/Contents/MacOS/Paint");
    fs::remove(m_folder / "VekProjects/Default");
    const TreeReport report = make();
    EXPECT_EQ(remarks(report),
              (std::set<std::string>{
                  "failed VekHub: It is a link, and what it leads to lacks Vek_Config.txt.",
                  "failed VekApps: It is a link, and what it leads to lacks "
                  "Paint/Paint.app/Contents/MacOS/Paint.",
                  "failed VekProjects: It is a link, and what it leads to lacks Default."}));
    EXPECT_EQ(report.steps[1].advice,
              "Put that there yourself, or remove the link and run vek init again.");
}

TEST_F(TreeInit, DoesNotTakeALinkForAnApplication) {
    make();
    fs::rename(file("VekApps/Paint"), m_folder / "Paint");
    fs::create_symlink(m_folder / "Paint", file("VekApps/Paint"));
    EXPECT_EQ(remarks(make()), std::set<std::string>{"failed VekApps/Paint: It is a link, and the "
                                                     "bridge passes links to applications over."});
}

TEST_F(TreeInit, SaysWhatOfTheShippedCannotBeRead) {
    make();
    ship("Paint/new.sh", "#!/bin/sh\n", 0);
    ASSERT_EQ(chmod(apps("Paint/edit.sh").c_str(), 0), 0);
    makeFolders(apps("Closed"));
    ship("Closed/Vek_Info.txt", "NAME c\n", 0644);
    ASSERT_EQ(chmod(apps("Closed").c_str(), 0), 0);
    ASSERT_EQ(chmod(file("VekApps/Paint/Vek_Info.txt").c_str(), 0), 0);
    TreeReport report;
    {
        const ObeyPermissions obey;
        report = make();
        std::error_code error;
        EXPECT_EQ(shippedApps(apps("Closed"), error), std::vector<std::string>());
        EXPECT_EQ(error, std::errc::permission_denied);
    }
    const std::string cannot = ": The shipped one cannot be read: ";
    EXPECT_EQ(
        remarks(report),
        (std::set<std::string>{
            "failed VekApps/Closed" + cannot + apps("Closed."),
            "failed VekApps/Paint/edit.sh" + cannot + apps("Paint/edit.sh."),
            "failed VekApps/Paint/new.sh" + cannot + apps("Paint/new.sh."),
            "kept VekApps/Paint/Vek_Info.txt: it cannot be read; its mode is 0000, not 0644"}));
    for (const TreeStep& step : report.steps) {
        if (step.path == "VekApps/Paint/new.sh") {
            EXPECT_EQ(step.advice, "Make it readable (chmod a+r " + apps("Paint/new.sh") +
                                       ") and run vek init again.");
        }
    }
    EXPECT_FALSE(fs::exists(file("VekApps/Closed")));
    ASSERT_EQ(chmod(apps("Closed").c_str(), 0755), 0);
}

TEST_F(TreeInit, SaysOnceThatAFolderIsClosed) {
    make();
    ASSERT_EQ(chmod(file("VekHub").c_str(), 0), 0);
    TreeReport report;
    {
        const ObeyPermissions obey;
        report = make();
    }
    ASSERT_EQ(chmod(file("VekHub").c_str(), 0777), 0);
    EXPECT_EQ(remarks(report),
              std::set<std::string>{"failed VekHub: It cannot be looked into: Permission denied."});
    EXPECT_EQ(report.steps[1].path, "VekHub");
    EXPECT_EQ(report.steps[1].advice, "As its owner or an administrator, run: chmod a+rwx " +
                                          file("VekHub") + ", and vek init again.");
    EXPECT_EQ(report.steps[2].path, "VekProjects");
}

TEST_F(TreeInit, TakesATreeThatIsItselfReachedByALink) {
    makeFolders(m_folder / "Users/Shared");
    makeFolders(m_folder / "disk/Tree");
    ASSERT_EQ(chmod((m_folder / "disk/Tree").c_str(), 0777), 0);
    fs::create_symlink(m_folder / "disk/Tree", root());
    EXPECT_EQ(remarks(make()), std::set<std::string>());
    EXPECT_EQ(snapshotOf(m_folder / "disk/Tree"), m_fresh);
}

TEST_F(TreeInit, SaysWhatStandsInTheWayAndMakesTheRest) {
    makeFolders(root());
    writeFile(file("VekProjects"), "in the way");
    makeFolders(file("VekHub/Vek_Config.txt"));
    makeFolders(file("VekApps/Paint/edit.sh"));
    ASSERT_EQ(mkfifo(file("VekApps/Paint/Vek_Info.txt").c_str(), 0666), 0);
    const TreeReport report = make();
    std::set<std::string> failed = pathsOf(report, Outcome::Failed);
    EXPECT_EQ(failed,
              (std::set<std::string>{"VekProjects", "VekHub/Vek_Config.txt",
                                     "VekApps/Paint/edit.sh", "VekApps/Paint/Vek_Info.txt"}));
    EXPECT_EQ(remarks(report).count("failed VekProjects: Something else stands where a folder "
                                    "should be."),
              1u);
    for (const TreeStep& step : report.steps) {
        EXPECT_EQ(step.outcome == Outcome::Failed, !step.advice.empty()) << step.path;
    }
    EXPECT_EQ(snapshot()["VekProjects"].substr(5), "in the way");
    EXPECT_EQ(snapshot()["VekApps/Paint/Vek_InstallList.txt"], "0666 ");
    EXPECT_FALSE(report.hasNoTree);
}

TEST_F(TreeInit, SaysThatThereCanBeNoTree) {
    makeFolders(m_folder / "Users/Shared");
    for (const char* kind : {"file", "dangling", "loop"}) {
        fs::remove(root());
        if (kind == std::string("file")) writeFile(root(), "in the way");
        if (kind == std::string("dangling")) fs::create_symlink("nowhere", root());
        if (kind == std::string("loop")) fs::create_symlink("Tree", root());
        const TreeReport report = make();
        EXPECT_TRUE(report.hasNoTree) << kind;
        ASSERT_EQ(report.steps.size(), 1u) << kind;
        EXPECT_NE(report.steps[0].advice.find("Move it away"), std::string::npos) << kind;
        EXPECT_EQ(report.steps[0].path, root());
    }
    fs::remove_all(m_folder / "Users/Shared");
    writeFile(m_folder / "Users/Shared", "in the way");
    EXPECT_EQ(remarks(make()), std::set<std::string>{"failed " + (m_folder / "Users/Shared") +
                                                     ": A file stands where a folder should be."});
    fs::remove(m_folder / "Users/Shared");
    fs::create_symlink("nowhere", m_folder / "Users/Shared");
    EXPECT_EQ(remarks(make()), std::set<std::string>{"failed " + (m_folder / "Users/Shared") +
                                                     ": It is a link that leads to no folder."});
}

TEST_F(TreeInit, AsksForAnAdministratorWhereItMayNotWrite) {
    const ObeyPermissions obey;
    makeFolders(m_folder / "Users");
    ASSERT_EQ(chmod((m_folder / "Users").c_str(), 0555), 0);
    const TreeReport none = make();
    EXPECT_TRUE(none.hasNoTree);
    ASSERT_EQ(none.steps.size(), 1u);
    EXPECT_NE(none.steps[0].advice.find("sudo"), std::string::npos);
    ASSERT_EQ(chmod((m_folder / "Users").c_str(), 0755), 0);
    make();
    fs::remove_all(file("VekApps/Paint/Paint.app"));
    ASSERT_EQ(chmod(file("VekApps/Paint").c_str(), 0555), 0);
    ASSERT_EQ(chmod(file("VekProjects").c_str(), 0), 0);
    const TreeReport some = make();
    EXPECT_EQ(pathsOf(some, Outcome::Failed),
              (std::set<std::string>{"VekApps/Paint/Paint.app", "VekProjects"}));
    ASSERT_EQ(chmod(file("VekApps/Paint").c_str(), 0755), 0);
    ASSERT_EQ(chmod(file("VekProjects").c_str(), 0755), 0);
    ASSERT_EQ(chmod(root().c_str(), 0), 0);
    EXPECT_EQ(remarks(make()),
              std::set<std::string>{"failed " + root() +
                                    ": It cannot be looked into: Permission denied."});
    ASSERT_EQ(chmod(root().c_str(), 0755), 0);
}

TEST_F(TreeInit, LeavesNoPartOfAFileOnAFullDisk) {
    if (std::string(getenv("VEK_VIEW")) != "private") GTEST_SKIP() << "no small disk here";
    ship("Paint/large.bin", std::string(100000, 'x'), 0644);
    const TreeReport report = makeTree("/full/Tree", m_folder / "apps");
    EXPECT_EQ(remarks(report).count("failed VekApps/Paint/large.bin: It cannot be made: No space "
                                    "left on device."),
              1u);
    const Snapshot made = snapshotOf("/full/Tree");
    for (const auto& [path, what] : made) {
        EXPECT_EQ(path.find("large.bin"), std::string::npos);
        EXPECT_EQ(path.find(".vek-init-"), std::string::npos);
    }
    fs::remove_all("/full/Tree");
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

// Makes shared trees where something is in the way.

#include <cstdlib>

#include "tests/support/permissions.h"
#include "tests/tools/tree_init_fixture.h"
#include "tools/vek/shipped_apps.h"

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

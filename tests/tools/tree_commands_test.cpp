// vek init and vek check as a person starts them.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/program.h"
#include "tests/tools/tree_snapshot.h"

namespace fs = std::filesystem;

namespace {

const std::string kVek = shellWord(VEK_BUILD_DIR "/bin/vek");

class TreeCommands : public testing::Test {
protected:
    TreeCommands() {
        for (const char* folder : {"VekHub", "VekApps", "VekProjects"}) {
            fs::remove_all(Tree::root() + "/" + folder);
        }
        EXPECT_EQ(chmod(Tree::root().c_str(), 0777), 0);
    }

    int vek(const std::string& arguments) { return runProgram(kVek + " " + arguments, m_said); }
    nlohmann::json json() const { return nlohmann::json::parse(m_said, nullptr, false); }
    bool says(const std::string& words) const { return m_said.find(words) != std::string::npos; }

    const Tree m_tree;
    TempFolder m_folder;
    std::string m_said;
};

}  // namespace

TEST_F(TreeCommands, MakeATreeInWhichAllIsWell) {
    ASSERT_EQ(vek("init"), 0) << m_said;
    EXPECT_TRUE(says("The shared tree is /Users/Shared/Kelvaro.\n")) << m_said;
    EXPECT_TRUE(says("made   VekApps/Example/edit.sh\n")) << m_said;
    EXPECT_TRUE(says(", 1 kept, 0 failed.\n")) << m_said;
    const auto fresh = snapshotOf(Tree::root());
    EXPECT_EQ(fresh.at("VekApps/Example/Vek_Info.txt"),
              "0644 " + readFile(VEK_SOURCE_DIR "/apps/Example/Vek_Info.txt"));
    EXPECT_EQ(fresh.at("VekApps/Example/edit.sh"),
              "0755 " + readFile(VEK_SOURCE_DIR "/apps/Example/edit.sh"));
    EXPECT_EQ(fresh.count("VekApps/Example/cmake_install.cmake"), 0u);
    ASSERT_EQ(vek("check"), 0) << m_said;
    EXPECT_TRUE(says("All is well in /Users/Shared/Kelvaro: ")) << m_said;
    ASSERT_EQ(vek("init"), 0) << m_said;
    EXPECT_TRUE(says("0 made, ")) << m_said;
    EXPECT_EQ(snapshotOf(Tree::root()), fresh);
}

TEST_F(TreeCommands, FindNothingWrongWithBlenderNorWithWhatItNotes) {
    makeFolders(m_folder / "apps");
    fs::copy(VEK_BUILD_DIR "/apps/Blender", m_folder / "apps/Blender", fs::copy_options::recursive);
    ASSERT_EQ(vek("init --apps " + shellWord(m_folder / "apps")), 0) << m_said;
    EXPECT_EQ(vek("check"), 0) << m_said;
    // Blender may be on this machine or not; both are noted.
    runProgram("umask 077; sh " + shellWord(Tree::app("Blender", "locate.sh")), m_said);
    const std::string config = Tree::app("Blender", "Vek_Config.txt");
    EXPECT_NE(readFile(config).find("USER_HOME = "), std::string::npos) << m_said;
    writeFile(config,
              readFile(config) + "HAND_BACK_COMMAND = \"open -a x\"\nEDIT_SCRIPT = \"/x.py\"\n");
    EXPECT_EQ(vek("check"), 0) << m_said;
    EXPECT_TRUE(says("1 target application, none selected")) << m_said;
}

TEST_F(TreeCommands, FindNothingWrongWithTheTreeOfTheDemo) {
    const std::string demo = "PATH=" + shellWord(VEK_SOURCE_DIR "/demo/stand-ins") + ":\"$PATH\" " +
                             kVek + " run " + shellWord(VEK_SOURCE_DIR "/demo/round_trip.lua") +
                             " --app " + shellWord(VEK_BUILD_DIR "/apps/Example") + " --out " +
                             shellWord(m_folder / "out") + " --faces 1000";
    ASSERT_EQ(runProgram(demo, m_said), 0) << m_said;
    EXPECT_EQ(vek("check"), 0) << m_said;
    EXPECT_TRUE(says("Example is selected, 1 object listed.")) << m_said;
}

TEST_F(TreeCommands, SayWhatWasMadeAndWhatWasKept) {
    ASSERT_EQ(vek("init --json"), 0) << m_said;
    const std::size_t made = json()["made"].size();
    EXPECT_GT(made, 20u);
    EXPECT_EQ(json()["kept"].size(), 1u);
    EXPECT_EQ(json()["apps"], VEK_BUILD_DIR "/apps");
    writeFile(Tree::app("Example", "edit.sh"), "mine");
    fs::remove(Tree::hub("Vek_Config.txt"));
    ASSERT_EQ(vek("init --json"), 0) << m_said;
    EXPECT_EQ(json()["made"], nlohmann::json::array({"VekHub/Vek_Config.txt"}));
    EXPECT_EQ(json()["kept"].size(), made);
    EXPECT_EQ(json()["failed"], nlohmann::json::array());
    ASSERT_EQ(vek("init"), 0);
    EXPECT_TRUE(says("kept   VekApps/Example/edit.sh: it differs from the shipped one\n"));
    EXPECT_TRUE(says("rename yours and run vek init again"));
    EXPECT_EQ(readFile(Tree::app("Example", "edit.sh")), "mine");
}

TEST_F(TreeCommands, SayWhatFailedAndWhatToDo) {
    writeFile(Tree::root() + "/VekProjects", "in the way");
    EXPECT_EQ(vek("init"), 1) << m_said;
    EXPECT_TRUE(
        says("FAILED VekProjects: Something else stands where a folder should be. Move it "
             "away and run vek init again.\n"))
        << m_said;
    EXPECT_EQ(vek("init --json"), 1);
    EXPECT_EQ(json()["failed"][0]["path"], "VekProjects");
    EXPECT_EQ(vek("init --apps /no/such/folder"), 2);
    EXPECT_TRUE(says("There is no target application in /no/such/folder.")) << m_said;
    EXPECT_EQ(vek("init --apps"), 2);
    EXPECT_EQ(vek("check now"), 2);
}

TEST_F(TreeCommands, TakeTheApplicationsThatAreInstalledBesideTheTool) {
    makeFolders(m_folder / "usr/bin");
    makeFolders(m_folder / "usr/apps/Built");
    writeFile(m_folder / "usr/apps/Built/Vek_Info.txt", "NAME b\n");
    fs::copy(VEK_BUILD_DIR "/bin/vek", m_folder / "usr/bin/vek");
    const std::string program = shellWord(m_folder / "usr/bin/vek");
    ASSERT_EQ(runProgram(program + " init", m_said), 0) << m_said;
    EXPECT_TRUE(fileIsThere(Tree::app("Built", "Vek_Info.txt")));
    makeFolders(m_folder / "usr/share/vek/apps/Installed");
    writeFile(m_folder / "usr/share/vek/apps/Installed/Vek_Info.txt", "NAME i\n");
    ASSERT_EQ(runProgram(program + " init", m_said), 0) << m_said;
    EXPECT_TRUE(fileIsThere(Tree::app("Installed", "Vek_Info.txt")));
    EXPECT_FALSE(says("Built")) << m_said;
    makeFolders(m_folder / "given/Given");
    writeFile(m_folder / "given/Given/Vek_Info.txt", "NAME g\n");
    ASSERT_EQ(vek("init --apps " + shellWord(m_folder / "given")), 0) << m_said;
    EXPECT_TRUE(fileIsThere(Tree::app("Given", "Vek_Info.txt")));
}

TEST_F(TreeCommands, SayThatTheShippedApplicationsCannotBeRead) {
    makeFolders(m_folder / "usr/bin");
    makeFolders(m_folder / "usr/share/vek/apps");
    fs::copy(VEK_BUILD_DIR "/bin/vek", m_folder / "usr/bin/vek");
    const std::string program = shellWord(m_folder / "usr/bin/vek");
    // Root, too, may then not read what its mode closes.
    const std::string obeying =
        geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search -- " : "";
    for (const char* closed : {"usr/share/vek/apps", "usr/share/vek"}) {
        ASSERT_EQ(chmod((m_folder / closed).c_str(), 0), 0);
        EXPECT_EQ(runProgram(obeying + program + " --version", m_said), 0) << m_said;
        EXPECT_EQ(runProgram(obeying + program + " init", m_said), 2) << m_said;
        EXPECT_TRUE(says("The folder of target applications cannot be read: " +
                         (m_folder / "usr/share/vek/apps")))
            << m_said;
        ASSERT_EQ(chmod((m_folder / closed).c_str(), 0755), 0);
    }
}

TEST_F(TreeCommands, SayThatALinkedHubIsNotComplete) {
    ASSERT_EQ(vek("init"), 0) << m_said;
    fs::remove_all(Tree::root() + "/VekHub");
    fs::create_symlink(m_folder.path(), Tree::root() + "/VekHub");
    EXPECT_EQ(vek("init"), 1) << m_said;
    EXPECT_TRUE(
        says("FAILED VekHub: It is a link, and what it leads to lacks Vek_Application.txt. "
             "Put that there yourself, or remove the link and run vek init again.\n"))
        << m_said;
    fs::remove(Tree::root() + "/VekHub");
}

TEST_F(TreeCommands, MakeOneTreeWhenTwoUsersMakeItAtOnce) {
    for (int round = 0; round < 5; ++round) {
        for (const char* folder : {"VekHub", "VekApps", "VekProjects"}) {
            fs::remove_all(Tree::root() + "/" + folder);
        }
        const std::size_t before = snapshotOf(Tree::root()).size();
        const std::string both = kVek + " init --json >" + shellWord(m_folder / "1") + " & " +
                                 kVek + " init --json >" + shellWord(m_folder / "2") +
                                 " || exit 1; wait $! || exit 1";
        ASSERT_EQ(runProgram(both, m_said), 0) << m_said;
        std::size_t made = 0;
        for (const char* one : {"1", "2"}) {
            const auto report = nlohmann::json::parse(readFile(m_folder / one));
            EXPECT_EQ(report["failed"], nlohmann::json::array());
            made += report["made"].size();
        }
        EXPECT_EQ(made, snapshotOf(Tree::root()).size() - before) << "each thing is made once";
        EXPECT_EQ(vek("check"), 0) << m_said;
    }
}

TEST_F(TreeCommands, SayWhereAMistakeIsAndWhatToDo) {
    ASSERT_EQ(vek("init"), 0);
    const std::string path = Tree::app("Example", "Vek_Info.txt");
    writeFile(path, readFile(path) + "EXPORT_FLIPX TRUE\n");
    ASSERT_EQ(chmod(Tree::objectList().c_str(), 0600), 0);
    EXPECT_EQ(vek("check"), 1);
    EXPECT_EQ(m_said,
              path +
                  ":18: error: \"EXPORT_FLIPX\" is no key, and the line is passed over; "
                  "EXPORT_FLIP_X is probably meant. [misspelt-key]\n    Write EXPORT_FLIP_X.\n" +
                  Tree::objectList() +
                  ": warning: Its mode is 0600, so not every user's bridge can read and write it. "
                  "[file-not-shared]\n    Run: chmod a+rw " +
                  Tree::objectList() + "\n1 error, 1 warning.\n");
    EXPECT_EQ(vek("check --json"), 1);
    EXPECT_EQ(json()["well"], false);
    EXPECT_EQ(json()["errors"], 1);
    EXPECT_EQ(json()["warnings"], 1);
    const nlohmann::json first = json()["findings"][0];
    EXPECT_EQ(first["code"], "misspelt-key");
    EXPECT_EQ(first["severity"], "error");
    EXPECT_EQ(first["path"], path);
    EXPECT_EQ(first["line"], 18);
    EXPECT_EQ(first["do"], "Write EXPORT_FLIP_X.");
    EXPECT_EQ(json()["findings"][1].count("line"), 0u);
}

TEST_F(TreeCommands, SpellOutControlCharactersOfNames) {
    makeFolders(m_folder / "apps/a\x1B[2J\nb");
    writeFile(m_folder / "apps/a\x1B[2J\nb/Vek_Info.txt", "NAME \xFF\n");
    ASSERT_EQ(vek("init --apps " + shellWord(m_folder / "apps")), 0) << m_said;
    EXPECT_TRUE(says("made   VekApps/a\\x1B[2J\\x0Ab\n")) << m_said;
    EXPECT_FALSE(says("\x1B"));
    EXPECT_EQ(vek("check"), 1);
    EXPECT_TRUE(says("VekApps/a\\x1B[2J\\x0Ab: error: ")) << m_said;
    EXPECT_FALSE(says("\x1B"));
    EXPECT_EQ(vek("check --json"), 1);
    EXPECT_TRUE(json().is_object()) << m_said;
}

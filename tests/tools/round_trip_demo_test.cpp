#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/program.h"

// The demo as a user starts it, with the tool, the library and the shipped application.

namespace {

const char kCommands[] = "LOCATE_COMMAND locate.sh\nINIT_COMMAND init.sh\nEDIT_COMMAND edit.sh\n";
const char kAllIsBack[] = "0 faces wound wrong, 0 corners lost, largest distance ";

class RoundTripDemo : public testing::Test {
protected:
    RoundTripDemo() : m_app(std::string(VEK_BUILD_DIR) + "/apps/Example") {}

    // The exit code; what was said, on either stream, is in m_said.
    int run(const std::string& options, const std::string& environment = "") {
        const std::string path =
            "PATH=" + shellWord(VEK_SOURCE_DIR "/demo/stand-ins") + ":\"$PATH\" ";
        const std::string command = path + environment + " " + shellWord(VEK_BUILD_DIR "/bin/vek") +
                                    " run " + shellWord(VEK_SOURCE_DIR "/demo/round_trip.lua") +
                                    " --app " + shellWord(m_app) + " --out " +
                                    shellWord(m_folder / "out") + " " + options;
        return runProgram(command, m_said);
    }
    bool says(const std::string& words) const { return m_said.find(words) != std::string::npos; }

    // The application with another descriptor.
    void describeApp(const std::string& descriptor) {
        const std::string copy = m_folder / "Other";
        ASSERT_EQ(std::system(("cp -R " + shellWord(m_app) + " " + shellWord(copy)).c_str()), 0);
        writeFile(copy + "/Vek_Info.txt", descriptor);
        m_app = copy;
    }

    const Tree m_tree;
    TempFolder m_folder;
    std::string m_app;
    std::string m_said;
};

}  // namespace

TEST_F(RoundTripDemo, BringsTheMeshBack) {
    ASSERT_EQ(run("--faces 2000"), 0) << m_said;
    EXPECT_TRUE(says(kAllIsBack)) << m_said;
    EXPECT_TRUE(says("VekPostExport")) << m_said;
    EXPECT_FALSE(says("FAILED")) << m_said;
}

TEST_F(RoundTripDemo, SavesWhatEachSideSaw) {
    ASSERT_EQ(run("--faces 2000"), 0) << m_said;
    for (const char* name : {"out/host.obj", "out/application.obj", "out/back.obj"}) {
        EXPECT_EQ(readFile(m_folder / name).rfind("v ", 0), 0u) << name;
    }
}

TEST_F(RoundTripDemo, TakesAnObjFile) {
    writeFile(m_folder / "a b.obj",
              "v 0 0 0\nv 1 0 0\nv 0 2 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n");
    ASSERT_EQ(run("--mesh " + shellWord(m_folder / "a b.obj")), 0) << m_said;
    EXPECT_TRUE(says(kAllIsBack)) << m_said;
    EXPECT_TRUE(says("4 UVs were made")) << m_said;
    EXPECT_TRUE(says("signed volume 0.333333333")) << m_said;
}

TEST_F(RoundTripDemo, TurnsAMeshThatIsWoundInwardsRoundFirst) {
    writeFile(m_folder / "m.obj",
              "v 0 0 0\nv 1 0 0\nv 0 2 0\nv 0 0 1\nf 2 3 1\nf 4 2 1\nf 4 3 2\nf 3 4 1\n");
    ASSERT_EQ(run("--mesh " + shellWord(m_folder / "m.obj")), 0) << m_said;
    EXPECT_TRUE(says("they are turned round before the export")) << m_said;
    EXPECT_TRUE(says("signed volume 0.333333333")) << m_said;
}

TEST_F(RoundTripDemo, WorksInOddFolders) {
    const std::string longName(200, 'n');
    for (const std::string& name :
         {std::string("with blanks"), std::string("it's \"quoted\""), std::string("100 % $HOME"),
          std::string("dots.vek.d"), std::string("\xC3\xBC\xC3\x9F"),
          std::string("\xE6\x97\xA5\xE6\x9C\xAC"), longName + "/" + longName}) {
        ASSERT_EQ(run("--faces 200 --project " + shellWord(m_folder / name)), 0) << m_said;
        EXPECT_TRUE(says(kAllIsBack)) << m_said;
        EXPECT_TRUE(fileIsThere(m_folder / (name + "/Vase_edited.vek"))) << name;
    }
}

TEST_F(RoundTripDemo, WorksUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    const std::string made = VEK_BUILD_DIR "/locale";
    const std::string environment = fileIsThere(made) ? "LOCPATH=" + shellWord(made) : "";
    ASSERT_EQ(run("--faces 200 --locale de_DE.UTF-8", environment), 0) << m_said;
    EXPECT_TRUE(says(kAllIsBack)) << m_said;
    EXPECT_TRUE(says("rounding allows ")) << m_said;
    EXPECT_NE(m_said.find(',', m_said.find("rounding allows ")), std::string::npos) << m_said;
}

TEST_F(RoundTripDemo, RejectsAnExportThatDoesNotMirror) {
    describeApp(std::string(kCommands) + "EXTENSION .vek\nIMPORT_SWITCH_YZ TRUE\n");
    EXPECT_NE(run("--faces 200"), 0);
    EXPECT_TRUE(says("The export did not turn the mesh as Example needs it")) << m_said;
    EXPECT_TRUE(says("FAILED")) << m_said;
}

TEST_F(RoundTripDemo, RejectsAnImportThatDoesNotMirrorBack) {
    describeApp(std::string(kCommands) + "EXTENSION .vek\nEXPORT_SWITCH_YZ TRUE\n");
    EXPECT_NE(run("--faces 200"), 0);
    EXPECT_TRUE(says("The mesh came back damaged")) << m_said;
    EXPECT_TRUE(says("faces wound wrong")) << m_said;
}

TEST_F(RoundTripDemo, InstallsOpensAndClosesTheApplication) {
    ASSERT_EQ(run("--faces 200"), 0) << m_said;
    for (const char* step :
         {"VekAppInstall ", "OpenVekApplication ", "VekAppIsRunning                1"}) {
        EXPECT_TRUE(says(step)) << step;
    }
    EXPECT_TRUE(fileIsThere(Tree::app("Example", "Example.app/Contents/Resources/Vek_Tree.txt")));
    EXPECT_FALSE(fileIsThere(Tree::app("Example", "Example_Running.txt")));
    EXPECT_TRUE(says("├─ Export\n│     ├─ Send to Example\n")) << "the button is placed";
}

TEST_F(RoundTripDemo, SaysWhyTheBridgeWasNotInstalled) {
    describeApp(readFile(m_app + "/Vek_Info.txt"));
    writeFile(m_app + "/init.sh", "printf 'No room.' > \"$(dirname \"$0\")/Vek_InstallLog.txt\"\n");
    EXPECT_NE(run("--faces 200"), 0);
    EXPECT_TRUE(says("The bridge was not installed: No room.\n")) << m_said;
}

TEST_F(RoundTripDemo, RejectsAnApplicationThatIsNotThere) {
    m_app = m_folder / "none";
    EXPECT_NE(run("--faces 200"), 0);
    EXPECT_TRUE(says("The application cannot be copied from")) << m_said;
}

TEST_F(RoundTripDemo, RejectsAMeshThatIsNotThere) {
    EXPECT_NE(run("--mesh " + shellWord(m_folder / "none.obj")), 0);
    EXPECT_TRUE(says("The file cannot be read: ")) << m_said;
}

TEST_F(RoundTripDemo, RejectsAnOptionItDoesNotKnow) {
    EXPECT_NE(run("--folder x"), 0);
    EXPECT_TRUE(says("This is not an option")) << m_said;
    EXPECT_NE(run("--faces x"), 0);
    EXPECT_TRUE(says("--faces needs a number")) << m_said;
}

// /full is the private view's folder that 64 KiB fill.
TEST_F(RoundTripDemo, SaysWhichSideMetAFullDisk) {
    if (std::string(std::getenv("VEK_VIEW")) != "private") GTEST_SKIP() << "no small disk here";
    EXPECT_NE(run("--faces 4000 --project /full/host"), 0);
    EXPECT_TRUE(says("The mesh cannot be written: /full/host/Vase.vek")) << m_said;
    ASSERT_EQ(std::system("rm -r /full/host"), 0);
    EXPECT_NE(run("--faces 900 --project /full/app"), 0);
    EXPECT_TRUE(says("Example did not edit the mesh: The exchange file cannot be written"))
        << m_said;
    ASSERT_EQ(std::system("rm -r /full/app"), 0);
}

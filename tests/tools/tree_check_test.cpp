// Checks trees in which all is well, and trees with planted mistakes.

#include "tools/vek/tree_check.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <stdexcept>

#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plants.h"
#include "tests/tools/tree_snapshot.h"
#include "tools/vek/tree_init.h"

namespace fs = std::filesystem;

namespace {

using Found = std::vector<std::string>;

// A fresh tree, as vek init makes it. What may not be read cannot be read by root either.
class TreeToCheck {
public:
    TreeToCheck() {
        for (const char* folder : {"VekHub", "VekApps", "VekProjects"}) {
            fs::remove_all(Tree::root() + "/" + folder);
        }
        EXPECT_EQ(chmod(Tree::root().c_str(), 0777), 0);
        const TreeReport report = makeTree(Tree::root(), VEK_BUILD_DIR "/apps");
        EXPECT_EQ(report.count(TreeStep::Outcome::Failed), 0u);
    }
    ~TreeToCheck() { EXPECT_EQ(std::system(("chmod -R u+rwX " + Tree::root()).c_str()), 0); }

private:
    const Tree m_tree;
    const ObeyPermissions m_obey;
};

// As plants tell it.
Found codesOf(const TreeState& state) {
    Found all;
    for (const Finding& finding : state.findings.all()) {
        std::string path = finding.path.substr(Tree::root().size());
        if (!path.empty()) path.erase(0, 1);
        all.push_back(finding.kind->code + (" " + path) +
                      (finding.line ? ":" + std::to_string(finding.line) : ""));
    }
    return all;
}

// A text of lines, of which a failed comparison shows those that differ.
std::string inLines(Found found) {
    std::sort(found.begin(), found.end());
    std::string text;
    for (const std::string& one : found) text += one + "\n";
    return text;
}

const Finding& only(const TreeState& state) {
    static const Finding none = {nullptr, "", 0, "", ""};
    EXPECT_EQ(state.findings.all().size(), 1u);
    return state.findings.all().empty() ? none : state.findings.all().front();
}

}  // namespace

TEST(TreeCheck, FindsNothingInAFreshTree) {
    const TreeToCheck tree;
    const TreeState state = checkTree();
    EXPECT_EQ(codesOf(state), Found());
    EXPECT_NE(std::find(state.apps.begin(), state.apps.end(), "Example"), state.apps.end());
    EXPECT_EQ(state.selected, "");
    EXPECT_EQ(state.objects, 0u);
}

TEST(TreeCheck, FindsNothingInATreeThatIsUsedAsItShouldBe) {
    const TreeToCheck tree;
    addGoodApp("My App",
               "// a comment: EXPORT_FLIP_X\n# one\n-- one\n; one\nEXPORT_SWITCH_YZ\n"
               "IMPORT_SWITCH_YZ = true\r\nEXPORT_FLIP_Y:1\nimport_flip_y\t#T\nTAMPLATE \"\"\n"
               "EXPORT_FLIP_Z No\nLOCATE_COMMAND \"edit.sh\"-v\"\"\nVEK_VERSION 1\n");
    writeFile(Tree::app("My App", "Vek_Config.txt"),
              "MINE : 1\nPATH=" + Tree::app("My App", "edit.sh") +
                  "\nAPPS_UNLOCKED = True\nUNLOCKED = maybe\nPATH_OF_MINE = x\n");
    addGoodApp("Own Keys");
    writeFile(Tree::app("Own Keys", "Vek_Config.txt"),
              "MATH=2\nBATH = 1\nAPPS_LOCKED=no\nUSER_HOME = \"/root\"\nEDIT_SCRIPT = \"/x.py\"\n"
              "HAND_BACK_COMMAND = \"open -a x\"\n");
    ASSERT_EQ(chmod(Tree::app("Own Keys", "Vek_Config.txt").c_str(), 0666), 0);
    addGoodApp("Volume");
    writeFile(Tree::app("Volume", "Vek_Config.txt"), "PATH = \"Macintosh HD:/bin/sh\"\n");
    ASSERT_EQ(chmod(Tree::app("Volume", "Vek_Config.txt").c_str(), 0666), 0);
    ASSERT_EQ(chmod(Tree::app("My App", "Vek_Config.txt").c_str(), 0666), 0);
    makeFolders(Tree::app("My App", "Helper.app/Contents/MacOS"));
    writeFile(Tree::app("My App", "Helper.app/Contents/MacOS/applet"), "#!/bin/sh\n");
    ASSERT_EQ(chmod(Tree::app("My App", "Helper.app/Contents/MacOS/applet").c_str(), 0755), 0);
    writeFile(Tree::app("My App", "Vek_InstallLog.txt"), "");
    makeFolders(Tree::root() + "/VekApps/.git");
    writeFile(Tree::root() + "/VekApps/notes.txt", "mine");
    writeFile(Tree::hub("Vek_Application.txt"), "MY APP\n");
    writeFile(Tree::hub("Vek_ProjectPath.txt"), Tree::root() + "/VekProjects/Default\n");
    writeFile(Tree::project("a.vek"), "Vekb");
    writeFile(Tree::project("b.ma"), "//Maya");
    writeFile(Tree::objectList(), "\n" + Tree::project("a") + "\r\n  " + Tree::project("b"));
    const TreeState state = checkTree();
    EXPECT_EQ(codesOf(state), Found());
    EXPECT_EQ(state.selected, "My App");
    EXPECT_EQ(state.objects, 2u);
}

TEST(TreeCheck, FindsEachMistakeAndNothingElse) {
    for (const Plant& plant : plants()) {
        const TreeToCheck tree;
        const Found expected = plant.make();
        EXPECT_EQ(inLines(codesOf(checkTree())), inLines(expected)) << plant.mistake;
    }
}

TEST(TreeCheck, FindsAllMistakesOfATreeAndNothingElse) {
    const TreeToCheck tree;
    Found expected;
    std::size_t planted = 0;
    for (const Plant& plant : plants()) {
        if (plant.with == Plant::With::Nothing) continue;
        for (const std::string& found : plant.make()) expected.push_back(found);
        ++planted;
    }
    EXPECT_GE(planted, 40u);
    EXPECT_EQ(inLines(codesOf(checkTree())), inLines(expected));
}

TEST(TreeCheck, HasAPlantForEveryCode) {
    std::set<std::string> planted = {"tree-missing"};  // a test of its own
    for (const Plant& plant : plants()) {
        const TreeToCheck tree;
        for (const std::string& found : plant.make()) {
            planted.insert(found.substr(0, found.find(' ')));
        }
    }
    for (const FindingKind& kind : findingKinds()) {
        EXPECT_EQ(planted.count(kind.code), 1u) << kind.code;
    }
}

TEST(TreeCheck, FindsThatThereIsNoTree) {
    if (std::string(getenv("VEK_VIEW")) != "private") GTEST_SKIP() << "the tree is shared here";
    const TreeToCheck tree;
    fs::remove_all(Tree::root());
    const TreeState state = checkTree();
    EXPECT_STREQ(only(state).kind->code, "tree-missing");
    EXPECT_NE(only(state).advice.find("vek init"), std::string::npos);
    writeFile(Tree::root(), "in the way");
    EXPECT_EQ(codesOf(checkTree()), Found{"not-a-folder "});
    fs::remove(Tree::root());
    fs::create_symlink("Kelvaro", Tree::root());
    EXPECT_EQ(codesOf(checkTree()), Found{"broken-link "});
    fs::remove(Tree::root());
    const std::string parent = Tree::root().substr(0, Tree::root().rfind('/'));
    fs::rename(parent, parent + ".away");
    writeFile(parent, "in the way");
    EXPECT_EQ(only(checkTree()).path, parent);
    EXPECT_STREQ(only(checkTree()).kind->code, "not-a-folder");
    fs::remove(parent);
    fs::create_symlink("nowhere", parent);
    EXPECT_EQ(only(checkTree()).path, parent);
    EXPECT_STREQ(only(checkTree()).kind->code, "broken-link");
    fs::remove(parent);
    fs::rename(parent + ".away", parent);
    makeFolders(Tree::root());
}

TEST(TreeCheck, NamesWhatALinkedFolderLacks) {
    const TreeToCheck tree;
    makeFolders(Tree::root() + "/VekProjects/hub");
    ASSERT_EQ(chmod((Tree::root() + "/VekProjects/hub").c_str(), 0777), 0);
    for (const char* name : {"Vek_Application.txt", "Vek_ProjectPath.txt", "Vek_Config.txt"}) {
        fs::rename(Tree::hub(name), Tree::root() + "/VekProjects/hub/" + name);
    }
    fs::remove_all(Tree::root() + "/VekHub");
    fs::create_symlink("VekProjects/hub", Tree::root() + "/VekHub");
    EXPECT_EQ(only(checkTree()).what,
              "This is a link, and what it leads to lacks Vek_ObjectPath.txt, Vek_ObjectList.txt.");
    EXPECT_EQ(only(checkTree()).advice,
              "Put that there yourself, or remove the link and run vek init.");
    fs::remove(Tree::root() + "/VekHub");
}

TEST(TreeCheck, CannotLookAtATreeThatIsClosed) {
    const TreeToCheck tree;
    ASSERT_EQ(chmod(Tree::root().c_str(), 0), 0);
    EXPECT_THROW(checkTree(), std::runtime_error);
    ASSERT_EQ(chmod(Tree::root().c_str(), 0777), 0);
}

TEST(TreeCheck, ChangesNothing) {
    const TreeToCheck tree;
    for (const Plant& plant : plants()) {
        const std::string mistake = plant.mistake;
        if (mistake == "Closed" || mistake == "Large") continue;  // cannot be compared, or for long
        if (plant.with == Plant::With::Others) plant.make();
    }
    const auto before = snapshotOf(Tree::root());
    checkTree();
    EXPECT_EQ(snapshotOf(Tree::root()), before);
}

TEST(TreeCheck, NamesTheKeyThatIsMeant) {
    for (const auto& [line, advice] : std::map<std::string, std::string>{
             {"EXPORT_FLIPX TRUE", "Write EXPORT_FLIP_X."},
             {"exprot_flip_x TRUE", "Write EXPORT_FLIP_X."},
             {"EXPORT FLIP X TRUE", "Write EXPORT_FLIP_X."},
             {"EXPORT-SWITCH-YZ", "Write EXPORT_SWITCH_YZ."},
             {"TEMPLATE x", "Write TAMPLATE."},
             {"VERSION 1", "Write VEK_VERSION."},
             {"EXPORT_FLIP_A 1", "Write EXPORT_FLIP_X, EXPORT_FLIP_Y or EXPORT_FLIP_Z."}}) {
        const TreeToCheck tree;
        addGoodApp("App", line + "\n");
        EXPECT_EQ(only(checkTree()).advice, advice) << line;
    }
}

TEST(TreeCheck, DoesNotFindWhatFollowsFromAMistake) {
    for (const auto& [lines, found] :
         std::map<std::string, std::string>{{"EXPORT_FLIPX 1\nIMPORT_FLIP_X 1\n", "misspelt-key"},
                                            {"EXPORT_FLIP_X \"No\"\n", "unclear-switch"},
                                            {"EXPORT_FLIP_X =\nIMPORT_FLIP_X 1\n", "empty-value"},
                                            {"EXPORT_FLIP_XX 1\n", "key-run-on"}}) {
        const TreeToCheck tree;
        addGoodApp("App", lines);
        EXPECT_STREQ(only(checkTree()).kind->code, found.c_str()) << lines;
    }
}

TEST(TreeCheck, LooksAtTheSwitchesOfEachDirection) {
    for (const auto& [lines, found] : std::map<std::string, Found>{
             {"EXPORT_FLIP_X 1\nIMPORT_FLIP_X 1\nIMPORT_FLIP_Z 1\n",
              {"mirrors-cancel:7", "round-trip-turns:7"}},
             {"EXPORT_FLIP_X 1\nEXPORT_FLIP_Y 1\nEXPORT_FLIP_Z 1\nIMPORT_FLIP_X 1\n",
              {"mirrors-without-need:7", "round-trip-turns:6", "round-trip-turns:7"}},
             {"EXPORT_FLIP_X 1\nEXPORT_FLIP_NORMALS 1\nIMPORT_FLIP_NORMALS 1\n",
              {"normals-turned-twice:6", "round-trip-turns:5"}},
             {"IMPORT_SWITCH_YZ 1\nEXPORT_FLIP_NORMALS 1\nIMPORT_FLIP_NORMALS 1\n",
              {"normals-turned-twice:7", "round-trip-turns:5"}},
             {"EXPORT_FLIP_Y 1\nEXPORT_SWITCH_YZ 1\nIMPORT_FLIP_Y 1\nIMPORT_SWITCH_YZ 1\n", {}},
             {"NORMAL_MAP_FLIP_X 1\nNORMAL_MAP_FLIP_Y 1\n", {}}}) {
        const TreeToCheck tree;
        addGoodApp("App", lines);
        Found expected;
        for (const std::string& one : found) {
            const std::size_t colon = one.find(':');
            expected.push_back(one.substr(0, colon) + " VekApps/App/Vek_Info.txt" +
                               one.substr(colon));
        }
        EXPECT_EQ(inLines(codesOf(checkTree())), inLines(expected)) << lines;
    }
}

TEST(TreeCheck, NamesTheFileAndTheApplicationThatAreMeant) {
    const TreeToCheck tree;
    writeFile(Tree::hub("Vek_Application.txt"), "Exmaple");
    EXPECT_NE(only(checkTree()).advice.find("Write Example"), std::string::npos);
    writeFile(Tree::hub("Vek_Application.txt"), "");
    addGoodApp("App", "LOCATE_COMMAND \"inti.sh\"\n");
    EXPECT_NE(only(checkTree()).advice.find("init.sh"), std::string::npos);
}

TEST(TreeCheck, NamesThePathInEveryAdviceToChangeAMode) {
    const TreeToCheck tree;
    addGoodApp("My App");
    const std::string script = Tree::app("My App", "edit.sh");
    ASSERT_EQ(chmod(script.c_str(), 0700), 0);
    EXPECT_EQ(only(checkTree()).advice, "Run: chmod a+r '" + script + "'");
    ASSERT_EQ(chmod(script.c_str(), 0755), 0);
    makeFolders(Tree::app("My App", "Helper.app"));
    ASSERT_EQ(chmod(Tree::app("My App", "Helper.app").c_str(), 0), 0);
    EXPECT_EQ(only(checkTree()).what, "This user cannot look into this folder.");
    EXPECT_EQ(only(checkTree()).advice, "As its owner or an administrator, run: chmod a+rx '" +
                                            Tree::app("My App", "Helper.app") + "'");
}

TEST(TreeCheck, BringsAShippedDescriptorAndRenamesNoFileOfTheTree) {
    const TreeToCheck tree;
    fs::remove(Tree::app("Example", "Vek_Info.txt"));
    EXPECT_EQ(only(checkTree()).advice,
              "Run vek init, which brings it, or move the folder out of VekApps.");
    fs::rename(Tree::root() + "/VekApps/Example", Tree::root() + "/VekApps/Mine");
    EXPECT_EQ(only(checkTree()).advice, "Write a Vek_Info.txt, or move the folder out of VekApps.");
    writeFile(Tree::app("Mine", "Vek_info.text"), "NAME x\n");
    EXPECT_EQ(only(checkTree()).advice, "Rename Vek_info.text to Vek_Info.txt if that is meant.");
}

TEST(TreeCheck, LooksForTheInterpreterAsItIsLookedFor) {
    for (const auto& [line, missing] :
         std::map<std::string, std::string>{{"#!/usr/bin/env sh", ""},
                                            {"#!/usr/bin/env -u HOME A=1 sh -e", ""},
                                            {"#! /bin/sh -e", ""},
                                            {"#!/usr/bin/env", ""},
                                            {"#!", ""},
                                            {"#!/usr/bin/env -u sh nosuchprog", "nosuchprog"},
                                            {"#!/usr/bin/env /no/such/prog", "/no/such/prog"},
                                            {"#!nosuchprog", "./nosuchprog"},
                                            {"#!/no/such/env sh", "/no/such/env"}}) {
        const TreeToCheck tree;
        addGoodApp("App", "LOCATE_COMMAND \"locate\"\n");
        writeFile(Tree::app("App", "locate"), line + "\nexit\n");
        ASSERT_EQ(chmod(Tree::app("App", "locate").c_str(), 0755), 0);
        const TreeState state = checkTree();
        if (missing.empty()) {
            EXPECT_EQ(codesOf(state), Found()) << line;
        } else {
            EXPECT_EQ(only(state).what, missing + " is to run it, and is not on this machine.");
        }
    }
}

TEST(TreeCheck, LimitsWhatItSaysOfClosedFiles) {
    const TreeToCheck tree;
    addGoodApp("App");
    makeFolders(Tree::app("App", "many"));
    for (int i = 0; i < 100; ++i) {
        const std::string file = Tree::app("App", "many/" + std::to_string(i));
        writeFile(file, "x");
        ASSERT_EQ(chmod(file.c_str(), 0600), 0);
    }
    const TreeState state = checkTree();
    ASSERT_EQ(state.findings.all().size(), 21u);
    EXPECT_EQ(state.findings.all()[0].advice, "Run: chmod -R a+rX " + Tree::app("App", "many"));
}

TEST(TreeCheck, LimitsWhatItSaysOfALongList) {
    const TreeToCheck tree;
    std::string list;
    for (int i = 0; i < 1000; ++i) list += "/no/such/object" + std::to_string(i) + "\n";
    writeFile(Tree::objectList(), list);
    const TreeState state = checkTree();
    EXPECT_EQ(state.findings.all().size(), 21u);
    EXPECT_EQ(state.findings.all()[0].what, "This was found 980 times more in it.");
    EXPECT_EQ(state.objects, 1000u);
}

TEST(TreeCheck, LimitsWhatItSaysOfJunk) {
    const TreeToCheck tree;
    std::string list;
    std::string descriptor;
    for (int i = 0; i < 5000; ++i) {
        list += "object" + std::to_string(i) + "\n";
        descriptor += "q" + std::to_string(i) + "\n";
    }
    addGoodApp("Junk", descriptor);
    writeFile(Tree::objectList(), list);
    const TreeState state = checkTree();
    std::map<std::string, int> counts;
    for (const Finding& finding : state.findings.all()) ++counts[finding.kind->code];
    EXPECT_EQ(counts, (std::map<std::string, int>{{"relative-path", 21}, {"unknown-key", 21}}));
}

TEST(TreeCheck, TakesForSelectedOnlyWhatTheBridgeTakesForAnApplication) {
    const TreeToCheck tree;
    writeFile(Tree::root() + "/VekApps/notes.txt", "mine");
    makeFolders(Tree::root() + "/VekApps/.git");
    for (const char* selected :
         {".", "..", "../VekApps/Example", "Example/", "notes.txt", ".git"}) {
        writeFile(Tree::hub("Vek_Application.txt"), selected);
        EXPECT_EQ(codesOf(checkTree()), Found{"selected-app-missing VekHub/Vek_Application.txt:1"})
            << selected;
    }
    // Something else is found of what this leads to.
    makeFolders(Tree::app("Example", "Other.app"));
    writeFile(Tree::hub("Vek_Application.txt"), "Example/Other.app");
    EXPECT_EQ(codesOf(checkTree()), (Found{"broken-bundle VekApps/Example/Other.app",
                                           "selected-app-missing VekHub/Vek_Application.txt:1"}));
    fs::remove(Tree::app("Example", "Other.app"));
    writeFile(Tree::hub("Vek_Application.txt"), "eXAMPLE");
    EXPECT_EQ(codesOf(checkTree()), Found());
}

TEST(TreeCheck, NamesTheClosedFolderOnTheWayToTheProject) {
    const TreeToCheck tree;
    const std::string closed = Tree::root() + "/VekProjects/closed";
    makeFolders(closed + "/inner/mine");
    writeFile(Tree::hub("Vek_ProjectPath.txt"), closed + "/inner/mine");
    ASSERT_EQ(chmod((closed + "/inner/mine").c_str(), 0777), 0);
    EXPECT_EQ(codesOf(checkTree()), Found());
    ASSERT_EQ(chmod(closed.c_str(), 0), 0);
    EXPECT_EQ(only(checkTree()).what, "This user cannot reach the project folder \"" + closed +
                                          "/inner/mine\": " + closed + " is closed.");
    EXPECT_NE(only(checkTree()).advice.find("chmod a+rx " + closed), std::string::npos);
}

TEST(TreeCheck, TakesAnyBytes) {
    std::mt19937 random(7);
    const TreeToCheck tree;
    addGoodApp("App");
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 400, ' ');
        const bool isText = round % 2 != 0;
        for (char& byte : bytes) {
            byte =
                isText ? "AXPORT_FLIP= \":\n\r#/.sh"[random() % 23] : static_cast<char>(random());
        }
        for (const std::string& path :
             {Tree::app("App", "Vek_Info.txt"), Tree::app("App", "Vek_Config.txt"),
              Tree::app("App", "edit.sh"), Tree::objectList(), Tree::hub("Vek_Application.txt"),
              Tree::hub("Vek_ProjectPath.txt"), Tree::app("App", "Vek_InstallList.txt")}) {
            writeFile(path, bytes);
        }
        EXPECT_FALSE(checkTree().findings.all().empty());
    }
}

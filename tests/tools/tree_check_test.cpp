// Checks trees in which all is well, and trees with planted mistakes.

#include "tools/vek/tree_check.h"

#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <stdexcept>

#include "tests/tools/check_plant_kit.h"
#include "tests/tools/tree_snapshot.h"
#include "tests/tools/tree_to_check.h"
#include "tools/vek/commands.h"

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
    addBundle(Tree::app("My App", "Helper.app"));
    for (const char* own : {"Helper.app/Contents/.DS_Store", "Helper.app/__pycache__/a.pyc"}) {
        const std::string path = Tree::app("My App", own);
        makeFolders(path.substr(0, path.rfind('/')));
        writeFile(path, "");
        ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    }
    ASSERT_EQ(chmod(Tree::app("My App", "Helper.app/__pycache__").c_str(), 0700), 0);
    writeFile(Tree::app("My App", "Vek_InstallList.txt"), "/usr\nMacintosh HD:/usr\n");
    ASSERT_EQ(chmod(Tree::app("My App", "Vek_InstallList.txt").c_str(), 0666), 0);
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

TEST(TreeCheck, CannotLookAtATreeThatIsClosed) {
    const TreeToCheck tree;
    ASSERT_EQ(chmod(Tree::root().c_str(), 0), 0);
    EXPECT_THROW(checkTree(), std::runtime_error);
    testing::internal::CaptureStdout();
    EXPECT_EQ(checkSharedTree(true), 2);
    const auto said = nlohmann::json::parse(testing::internal::GetCapturedStdout());
    EXPECT_EQ(said["tree"], Tree::root());
    EXPECT_EQ(said["error"], Tree::root() +
                                 " is closed to this user. Run vek check as an "
                                 "administrator (sudo).");
    EXPECT_THROW(checkSharedTree(false), std::runtime_error);
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

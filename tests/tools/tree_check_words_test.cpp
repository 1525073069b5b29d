// What is said of a mistake, and how much.

#include <map>

#include "tests/tools/check_plant_kit.h"
#include "tests/tools/tree_to_check.h"

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

TEST(TreeCheck, NamesTheKeyThatIsMeant) {
    for (const auto& [line, advice] : std::map<std::string, std::string>{
             {"EXPORT_FLIPX TRUE", "Write EXPORT_FLIP_X."},
             {"exprot_flip_x TRUE", "Write EXPORT_FLIP_X."},
             {"EXPORT FLIP X TRUE", "Write EXPORT_FLIP_X."},
             {"EXPORT-SWITCH-YZ", "Write EXPORT_SWITCH_YZ."},
             {"IMPORT_FLIP YES", "Write IMPORT_FLIP_X, IMPORT_FLIP_Y or IMPORT_FLIP_Z."},
             {"EXPORT-FLIP X_AXIS 1", "Write EXPORT_FLIP_X, EXPORT_FLIP_Y or EXPORT_FLIP_Z."},
             {"TEMPLATE x", "Write TAMPLATE."},
             {"VERSION 1", "Write VEK_VERSION."},
             {"EXPORT_FLIP_A 1", "Write EXPORT_FLIP_X, EXPORT_FLIP_Y or EXPORT_FLIP_Z."}}) {
        const TreeToCheck tree;
        addGoodApp("App", line + "\n");
        EXPECT_EQ(only(checkTree()).advice, advice) << line;
    }
}

TEST(TreeCheck, NamesTheFileAndTheApplicationThatAreMeant) {
    const TreeToCheck tree;
    writeFile(Tree::hub("Vek_Application.txt"), "Exmaple");
    EXPECT_NE(only(checkTree()).advice.find("Write Example"), std::string::npos);
    writeFile(Tree::hub("Vek_Application.txt"), "");
    addGoodApp("App", "LOCATE_COMMAND \"loacte.sh\"\n");
    writeFile(Tree::app("App", "locate.sh"), "#!/bin/sh\n");
    EXPECT_EQ(only(checkTree()).advice, "Write locate.sh, which is there, if that is meant.");
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
    addGoodApp("App", "LOCATE_COMMAND \"many/locate.sh\"\n");
    makeFolders(Tree::app("App", "many"));
    writeFile(Tree::app("App", "many/locate.sh"), "#!/bin/sh\n");
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

TEST(TreeCheck, NeverSaysToOpenAFolderOfTheSystem) {
    if (geteuid() != 0) GTEST_SKIP() << "in a user's private view nothing is root's";
    const TreeToCheck tree;
    for (const char* folder : {"/", "/proc", "/usr/bin", "/etc/"}) {
        writeFile(Tree::hub("Vek_ProjectPath.txt"), folder);
        EXPECT_STREQ(only(checkTree()).kind->code, "project-folder-closed") << folder;
        EXPECT_EQ(only(checkTree()).advice, "Choose another project folder in the host.") << folder;
    }
    const TempFolder outside;
    makeFolders(outside / "closed/mine");
    ASSERT_EQ(chmod((outside / "closed").c_str(), 0), 0);
    writeFile(Tree::hub("Vek_ProjectPath.txt"), outside / "closed/mine");
    EXPECT_EQ(only(checkTree()).advice, "Choose another project folder in the host.");
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "");
    writeFile(Tree::objectList(), (outside / "closed/mine") + "/a");
    EXPECT_EQ(only(checkTree()).advice, "Export the objects to another folder.");
    ASSERT_EQ(chmod((outside / "closed").c_str(), 0755), 0);
}

TEST(TreeCheck, TellsALinkToAClosedPlaceFromABrokenOne) {
    const TempFolder outside;
    makeFolders(outside / "closed");
    for (const char* linked : {"VekProjects/Default", "VekHub/Vek_ProjectPath.txt",
                               "VekApps/App/edit.sh", "VekApps/App/Helper.app"}) {
        const TreeToCheck tree;
        addGoodApp("App");
        const std::string link = Tree::root() + "/" + linked;
        fs::remove_all(link);
        fs::create_symlink(outside / "closed/place", link);
        ASSERT_EQ(chmod((outside / "closed").c_str(), 0), 0);
        EXPECT_EQ(only(checkTree()).what, "It is a link to a place that this user cannot reach.")
            << linked;
        EXPECT_EQ(only(checkTree()).path, link);
        EXPECT_EQ(only(checkTree()).advice.find("chmod"), std::string::npos) << linked;
        ASSERT_EQ(chmod((outside / "closed").c_str(), 0755), 0);
        EXPECT_STREQ(only(checkTree()).kind->code, "broken-link") << linked;
        fs::remove(link);
    }
}

TEST(TreeCheck, FindsAClosedFolderBehindTheLinkOfABundle) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string closed = Tree::root() + "/VekProjects/closed";
    addBundle(closed + "/Helper.app");
    fs::create_symlink(closed + "/Helper.app", Tree::app("App", "Helper.app"));
    EXPECT_EQ(codesOf(checkTree()), Found());
    ASSERT_EQ(chmod(closed.c_str(), 0700), 0);
    EXPECT_EQ(only(checkTree()).what,
              "A link leads to it through " + closed + ", which is closed to some users.");
    EXPECT_EQ(only(checkTree()).advice, "Put the whole bundle itself there.");
}

TEST(TreeCheck, FindsAClosedFolderOnTheWayToTheTree) {
    if (std::string(getenv("VEK_VIEW")) != "private") GTEST_SKIP() << "the tree is shared here";
    const TreeToCheck tree;
    const std::string parent = Tree::root().substr(0, Tree::root().rfind('/'));
    ASSERT_EQ(chmod(parent.c_str(), 0700), 0);
    EXPECT_EQ(only(checkTree()).path, parent);
    EXPECT_EQ(only(checkTree()).advice,
              "As its owner or an administrator, run: chmod a+x " + parent);
    ASSERT_EQ(chmod(parent.c_str(), 0755), 0);

    const std::string closed = "/Users/closed";
    makeFolders(closed);
    fs::rename(parent, closed + "/Shared");
    fs::create_symlink(closed + "/Shared", parent);
    EXPECT_EQ(codesOf(checkTree()), Found());
    ASSERT_EQ(chmod(closed.c_str(), 0700), 0);
    EXPECT_EQ(only(checkTree()).path, closed);
    EXPECT_EQ(only(checkTree()).what,
              "Its mode is 0700, so not every user gets through to the tree.");
    fs::remove(parent);
    fs::rename(closed + "/Shared", parent);
    fs::remove(closed);
}

TEST(TreeCheck, SaysWhatToWriteForACommandWithABlankBehindItsName) {
    const TreeToCheck tree;
    addGoodApp("App");
    const std::string descriptor = Tree::app("App", "Vek_Info.txt");
    const std::string text = readFile(descriptor);
    const std::string head = text.substr(0, text.find("EDIT_COMMAND"));
    for (const auto& [line, advice] : std::map<std::string, std::string>{
             {"\"edit.sh \"", "Write EDIT_COMMAND \"edit.sh\"."},
             {"\"edit.sh -v\"",
              "Write EDIT_COMMAND \"edit.sh\"argument\"\", with no blank in front of the "
              "argument's quote."}}) {
        writeFile(descriptor, head + "EDIT_COMMAND " + line + "\n");
        EXPECT_EQ(only(checkTree()).advice, advice) << line;
    }
}

TEST(TreeCheck, SaysThatAProjectFolderIsAFile) {
    const TreeToCheck tree;
    writeFile(Tree::hub("Vek_ProjectPath.txt"), Tree::objectList());
    EXPECT_STREQ(only(checkTree()).kind->code, "project-folder-missing");
    EXPECT_EQ(only(checkTree()).what, "\"" + Tree::objectList() + "\" is a file, and no folder.");
    EXPECT_EQ(only(checkTree()).advice, "Choose a project folder in the host.");
}

TEST(TreeCheck, TakesExecutablesOfBothSystemsForPrograms) {
    for (const char* magic : {"\x7F"
                              "ELF",
                              "\xFE\xED\xFA\xCE", "\xCE\xFA\xED\xFE", "\xFE\xED\xFA\xCF",
                              "\xCF\xFA\xED\xFE", "\xCA\xFE\xBA\xBE"}) {
        const TreeToCheck tree;
        addGoodApp("App", "LOCATE_COMMAND \"locate\"\n");
        writeFile(Tree::app("App", "locate"), magic);
        ASSERT_EQ(chmod(Tree::app("App", "locate").c_str(), 0755), 0);
        EXPECT_EQ(codesOf(checkTree()), Found());
        writeFile(Tree::app("App", "locate"), "#!/usr/bin\n");
        EXPECT_EQ(only(checkTree()).what, "/usr/bin is to run it, and is a folder.");
    }
}

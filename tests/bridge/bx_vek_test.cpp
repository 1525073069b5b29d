#include "bridge/bx_vek.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

TEST(Vek, NamesTheFoldersOfTheTree) {
    EXPECT_EQ(BXVek::s_publicFolder, BXString("/Users/Shared/Kelvaro"));
    EXPECT_EQ(BXVek::s_folderSeparator, BXString("/"));
    EXPECT_EQ(BXVek::s_VekAppsFolder, BXString("/Users/Shared/Kelvaro/VekApps"));
    EXPECT_EQ(BXVek::s_VekHubFolder, BXString("/Users/Shared/Kelvaro/VekHub"));
    EXPECT_EQ(BXVek::s_VekProjectsFolder, BXString("/Users/Shared/Kelvaro/VekProjects"));
    EXPECT_EQ(BXVek::s_VekDefaultProjectFolder,
              BXString("/Users/Shared/Kelvaro/VekProjects/Default"));
}

TEST(Vek, NamesTheFilesOfTheHub) {
    const BXString hub("/Users/Shared/Kelvaro/VekHub/");
    EXPECT_EQ(BXVek::getApplicationFile(), hub + "Vek_Application.txt");
    EXPECT_EQ(BXVek::getProjectPathFile(), hub + "Vek_ProjectPath.txt");
    EXPECT_EQ(BXVek::getObjectPathFile(), hub + "Vek_ObjectPath.txt");
    EXPECT_EQ(BXVek::getObjectListFile(), hub + "Vek_ObjectList.txt");
    EXPECT_EQ(BXVek::getDorviaFile("any name.txt"), hub + "any name.txt");
}

TEST(Vek, NamesAnApplicationsFolderAndFiles) {
    EXPECT_EQ(BXVek::getAppFolder("Maya"), BXString("/Users/Shared/Kelvaro/VekApps/Maya"));
    EXPECT_EQ(BXVek::getAppFile("Maya", "Vek_Info.txt"),
              BXString("/Users/Shared/Kelvaro/VekApps/Maya/Vek_Info.txt"));
}

TEST(Vek, NamesAFileOfTheDefaultProject) {
    EXPECT_EQ(BXVek::getDefaultProjectFile("x.obj"),
              BXString("/Users/Shared/Kelvaro/VekProjects/Default/x.obj"));
}

TEST(Vek, ReadsAnApplicationPathWithoutItsQuotes) {
    const Tree tree;
    tree.addApp("Maya", "");
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "PATH = \"/Applications/Maya.app\"\n");
    bool found = false;
    EXPECT_EQ(BXVek::readAppPath("Maya", &found), BXString("/Applications/Maya.app"));
    EXPECT_TRUE(found);
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "PATH = /Applications/Maya.app\n");
    EXPECT_EQ(BXVek::readAppPath("Maya", nullptr), BXString("/Applications/Maya.app"));
}

TEST(Vek, ReadsBackTheApplicationPathThatItWrote) {
    const Tree tree;
    tree.addApp("Maya", "");
    EXPECT_TRUE(BXVek::writeAppPath("Maya", "/A/B.app"));
    EXPECT_EQ(readFile(Tree::app("Maya", "Vek_Config.txt")), "PATH = \"/A/B.app\"\n");
    bool found = false;
    EXPECT_EQ(BXVek::readAppPath("Maya", &found), BXString("/A/B.app"));
    EXPECT_TRUE(found);
}

TEST(Vek, UnquotesTwiceAValueThatIsQuotedTwice) {
    const Tree tree;
    tree.addApp("Maya", "");
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "PATH=\"\"/A b\"\"\n");
    EXPECT_EQ(BXVek::readAppPath("Maya", nullptr), BXString("/A b"));
    // A lone quote passes the lookup, and counts as a pair here.
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "PATH=\"\n");
    EXPECT_TRUE(BXVek::readAppPath("Maya", nullptr).isEmpty());
}

TEST(Vek, ReadsAMissingFileOrKeyAsEmptyAndNotFound) {
    const Tree tree;
    bool found = true;
    EXPECT_TRUE(BXVek::readAppPath("Maya", &found).isEmpty());
    EXPECT_FALSE(found);
    tree.addApp("Maya", "");
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "OTHER = 1\n");
    found = true;
    EXPECT_TRUE(BXVek::readAppPath("Maya", &found).isEmpty());
    EXPECT_FALSE(found);
}

TEST(Vek, ReportsAPathThatCouldNotBeWritten) {
    const Tree tree;
    EXPECT_FALSE(BXVek::writeAppPath("NoSuchFolder", "/A"));
    EXPECT_FALSE(fileIsThere(Tree::root() + "/VekApps/NoSuchFolder"));
}

TEST(Vek, KeepsTheHostsPathInTheHubsConfiguration) {
    const Tree tree;
    EXPECT_TRUE(BXVek::getDorviaPath().isEmpty());
    EXPECT_TRUE(BXVek::setDorviaPath("/Applications/My Host/Dorvia64.app"));
    EXPECT_EQ(readFile(Tree::hub("Vek_Config.txt")),
              "PATH = \"/Applications/My Host/Dorvia64.app\"\n");
    EXPECT_EQ(BXVek::getDorviaPath(), BXString("/Applications/My Host/Dorvia64.app"));
}

TEST(Vek, ReportsThatTheHostsPathCouldNotBeWritten) {
    const Tree tree;
    makeFolders(Tree::hub("Vek_Config.txt"));
    EXPECT_FALSE(BXVek::setDorviaPath("/A"));
}

TEST(Vek, UnquotesTheHostsPathTwice) {
    const Tree tree;
    writeFile(Tree::hub("Vek_Config.txt"), "PATH=\"\"/A b\"\"\n");
    EXPECT_EQ(BXVek::getDorviaPath(), BXString("/A b"));
}

TEST(Vek, CannotKeepAPathWithQuotesAtItsEnds) {
    const Tree tree;
    tree.addApp("Maya", "");
    EXPECT_TRUE(BXVek::writeAppPath("Maya", "\"x\""));
    EXPECT_EQ(readFile(Tree::app("Maya", "Vek_Config.txt")), "PATH = \"\"x\"\"\n");
    EXPECT_EQ(BXVek::readAppPath("Maya", nullptr), BXString("x"));
    EXPECT_TRUE(BXVek::writeAppPath("Maya", "/a\"b"));
    EXPECT_EQ(BXVek::readAppPath("Maya", nullptr), BXString("/a\"b"));
}

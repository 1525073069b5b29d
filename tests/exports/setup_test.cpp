#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

const std::string kHostName = sizeof(void*) == 8 ? "/Dorvia64.app" : "/Dorvia.app";

// Puts a program first in PATH that notes how it is called, an argument a line, "--" at the end.
class Recorder {
public:
    explicit Recorder(const std::string& program) : m_before(getenv("PATH")) {
        const std::string script = m_folder / program;
        writeFile(script, "#!/bin/sh\nfor a in \"$@\"; do echo \"$a\"; done >>'" + notes() +
                              "'\necho -- >>'" + notes() + "'\n");
        chmod(script.c_str(), 0755);
        setenv("PATH", (m_folder.path() + ":" + m_before).c_str(), 1);
    }
    ~Recorder() { setenv("PATH", m_before.c_str(), 1); }

    std::string calls() const { return fileIsThere(notes()) ? readFile(notes()) : ""; }

private:
    std::string notes() const { return m_folder / "notes"; }

    TempFolder m_folder;
    std::string m_before;
};

std::string unlockCall(const std::string& path) {
    return "-d\ncom.apple.quarantine\n" + path + "\n--\n";
}

class Setup : public testing::Test {
protected:
    float initialize(const char* text = "/Applications") {
        return m_library.call("InitializeVek", text);
    }

    // The ids of the table, and the folders as the file system lists them.
    std::vector<std::string> table(int count) {
        std::vector<std::string> found;
        for (int i = 0; i < count; ++i) {
            OutText out;
            m_library.call("GetVekAppId", i, out.block());
            found.push_back(out.text());
        }
        return found;
    }
    static std::vector<std::string> listing(std::size_t count) {
        std::vector<std::string> names(1);
        FILE* const ls = popen(("ls -U " + Tree::root() + "/VekApps").c_str(), "r");
        for (int c; ls && (c = std::fgetc(ls)) != EOF;) {
            if (c == '\n') {
                names.emplace_back();
            } else {
                names.back() += static_cast<char>(c);
            }
        }
        if (ls) pclose(ls);
        names.resize(count);
        return names;
    }

    std::set<std::string> ids(int count) {
        std::set<std::string> found;
        for (int i = 0; i < count; ++i) {
            OutText out;
            m_library.call("GetVekAppId", i, out.block());
            found.insert(out.text());
        }
        return found;
    }

    Tree m_tree;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(Setup, TakesFoldersWithADescriptorAndNothingElse) {
    m_tree.addApp("A", "NAME a\n");
    makeFolders(Tree::root() + "/VekApps/B");
    writeFile(Tree::root() + "/VekApps/C", "a plain file");
    makeFolders(Tree::app("D", "Vek_Info.txt"));
    ASSERT_EQ(
        symlink((Tree::root() + "/VekApps/A").c_str(), (Tree::root() + "/VekApps/Link").c_str()),
        0);
    EXPECT_EQ(initialize(), 1.0f);
    EXPECT_EQ(ids(1), std::set<std::string>{"A"});
}

TEST_F(Setup, TakesTheFirst32OfFortyApplications) {
    for (int i = 0; i < 40; ++i) m_tree.addApp("App" + std::to_string(i), "NAME x\n");
    EXPECT_EQ(initialize(), 32.0f);
    EXPECT_EQ(table(32), listing(32));
    OutText out;
    m_library.call("GetVekAppId", 32.0, out.block());
    EXPECT_TRUE(out.untouched());
}

TEST_F(Setup, TakesNoDescriptorBesideTheFolders) {
    writeFile(Tree::root() + "/VekApps/Vek_Info.txt", "NAME x\n");
    writeFile(Tree::root() + "/Vek_Info.txt", "NAME x\n");
    EXPECT_EQ(initialize(), 0.0f);
}

TEST_F(Setup, HasNoApplicationBeforeItIsInitialised) {
    m_tree.addApp("A", "NAME a\nEXTENSION .vek\n");
    OutText out;
    for (const char* name :
         {"GetVekAppId", "GetVekAppName", "GetVekAppExt", "GetVekAppTamplate", "ReadVekAppPath"}) {
        EXPECT_EQ(m_library.call(name, 0.0, out.block()), 0.0f) << name;
    }
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(m_library.call("FindVekApp", "A"), -1.0f);
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/x", 0.0), 0.0f);
}

TEST_F(Setup, TurnsNothingBeforeAnApplicationIsAskedFor) {
    m_library.call("VekSetExportScale", 1.0);
    const TempFolder folder;
    const std::string bytes =
        ExchangeFile().vertices({1, 2, 3}).faces(20001, {0, 0, 0, 0}).end().bytes();
    for (const char* name : {"VekPostExport", "VekPreImport"}) {
        writeFile(folder / "m.vek", bytes);
        EXPECT_EQ(m_library.call(name, folder / "m.vek"), 0.0f);
        EXPECT_EQ(readFile(folder / "m.vek"), bytes) << name;
    }
}

TEST_F(Setup, MirrorsAboutTheOriginWhereNoOffsetWasSet) {
    m_tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\nEXPORT_FLIP_Y 1\nEXPORT_FLIP_Z 1\n");
    initialize();
    m_library.call("VekSetExportScale", 1.0);
    m_library.call("GetVekAppIOPrefs", 0.0);
    const TempFolder folder;
    writeFile(folder / "m.vek", ExchangeFile().vertices({1, 2, 3}).end().bytes());
    EXPECT_EQ(m_library.call("VekPostExport", folder / "m.vek"), 0.0f);
    EXPECT_EQ(floatsAt(readFile(folder / "m.vek"), 48, 3), (std::vector<float>{-1, -2, -3}));
}

TEST_F(Setup, TakesApplicationsInTheOrderOfTheFolder) {
    for (const char* id : {"b", "C", "a", "Z", "m"}) m_tree.addApp(id, "NAME x\n");
    ASSERT_EQ(initialize(), 5.0f);
    EXPECT_EQ(table(5), listing(5));
}

TEST_F(Setup, ForgetsAnApplicationWhoseFolderHasGone) {
    m_tree.addApp("A", "NAME a\n");
    m_tree.addApp("B", "NAME b\n");
    EXPECT_EQ(initialize(), 2.0f);
    ASSERT_EQ(system(("rm -r " + Tree::root() + "/VekApps/A").c_str()), 0);
    EXPECT_EQ(initialize(), 1.0f);
    EXPECT_EQ(ids(1), std::set<std::string>{"B"});
    EXPECT_EQ(m_library.call("FindVekApp", "A"), -1.0f);
}

TEST_F(Setup, EmptiesTheTableWhenNoApplicationIsLeft) {
    m_tree.addApp("A", "NAME a\n");
    EXPECT_EQ(initialize(), 1.0f);
    ASSERT_EQ(system(("rm -r " + Tree::root() + "/VekApps").c_str()), 0);
    EXPECT_EQ(initialize(), 0.0f);
    EXPECT_EQ(m_library.call("FindVekApp", "A"), -1.0f);
}

TEST_F(Setup, GivesAnApplicationWithoutReadableDescriptorItsIdAndDefaults) {
    m_tree.addApp("Empty", "");
    ASSERT_EQ(initialize(), 1.0f);
    EXPECT_EQ(ids(1), std::set<std::string>{"Empty"});
    OutText name;
    m_library.call("GetVekAppName", 0.0, name.block());
    EXPECT_EQ(name.text(), "");
    EXPECT_FALSE(name.untouched());
}

TEST_F(Setup, DoesNotTakeTheIdFromTheDescriptor) {
    m_tree.addApp("Folder", "ID other\nNAME other\n");
    ASSERT_EQ(initialize(), 1.0f);
    EXPECT_EQ(ids(1), std::set<std::string>{"Folder"});
}

TEST_F(Setup, RecordsTheHostsPathEvenWithoutApplications) {
    EXPECT_EQ(initialize("/Applications/My Host"), 0.0f);
    const std::string config = readFile(Tree::hub("Vek_Config.txt"));
    EXPECT_NE(config.find("PATH = \"/Applications/My Host" + kHostName + "\"\n"), std::string::npos)
        << config;
}

TEST_F(Setup, RecordsTheValidPartOfTheHostsPath) {
    initialize("Disk:/Apps");
    EXPECT_NE(readFile(Tree::hub("Vek_Config.txt")).find("\"/Apps" + kHostName + "\""),
              std::string::npos);
    initialize(nullptr);
    EXPECT_NE(readFile(Tree::hub("Vek_Config.txt")).find("\"" + kHostName + "\""),
              std::string::npos);
}

TEST_F(Setup, MakesNoFolderWhereThereIsNoTree) {
    ASSERT_EQ(system(("rm -rf " + Tree::root() + "/*").c_str()), 0);
    EXPECT_EQ(initialize(), 0.0f);
    EXPECT_FALSE(fileIsThere(Tree::root() + "/VekHub"));
    EXPECT_FALSE(fileIsThere(Tree::root() + "/VekApps"));
}

TEST_F(Setup, UnlocksTheHubsHelpersOnceInTheirOrder) {
    makeFolders(Tree::hub("VekMakeObjectPath.app"));
    makeFolders(Tree::hub("VekLocateApp.app"));
    makeFolders(Tree::hub("VekHubFromApp.app"));
    const Recorder xattr("xattr");
    initialize();
    const std::string once = unlockCall(Tree::hub("VekHubFromApp.app")) +
                             unlockCall(Tree::hub("VekLocateApp.app")) +
                             unlockCall(Tree::hub("VekMakeObjectPath.app"));
    EXPECT_EQ(xattr.calls(), once);
    EXPECT_EQ(readFile(Tree::hub("Vek_Config.txt")).substr(0, 21), "APPS_UNLOCKED = TRUE\n");
    initialize();
    EXPECT_EQ(xattr.calls(), once);
}

TEST_F(Setup, UnlocksNoFileWithTheNameOfAHelper) {
    writeFile(Tree::hub("VekLocateApp.app"), "a file, not a bundle");
    const Recorder xattr("xattr");
    initialize();
    EXPECT_EQ(xattr.calls(), "");
}

TEST_F(Setup, UnlocksNothingInAHubThatIsMarkedUnlocked) {
    makeFolders(Tree::hub("VekHubFromApp.app"));
    writeFile(Tree::hub("Vek_Config.txt"), "APPS_UNLOCKED = True\n");
    const Recorder xattr("xattr");
    initialize();
    EXPECT_EQ(xattr.calls(), "");
}

TEST_F(Setup, UnlocksAgainWhenTheMarkIsFalseOrEmptyOrGone) {
    makeFolders(Tree::hub("VekHubFromApp.app"));
    for (const char* config : {"APPS_UNLOCKED = No\n", "APPS_UNLOCKED =\n", ""}) {
        writeFile(Tree::hub("Vek_Config.txt"), config);
        const Recorder xattr("xattr");
        initialize();
        EXPECT_EQ(xattr.calls(), unlockCall(Tree::hub("VekHubFromApp.app"))) << config;
    }
}

TEST_F(Setup, UnlocksAnApplicationsBundlesQuotedAndByLetterCase) {
    m_tree.addApp("My App", "NAME a\n");
    makeFolders(Tree::app("My App", "The Helper.app"));
    makeFolders(Tree::app("My App", "UPPER.APP"));
    makeFolders(Tree::app("My App", "folder"));
    writeFile(Tree::app("My App", "file.app"), "");
    ASSERT_EQ(
        symlink(Tree::app("My App", "folder").c_str(), Tree::app("My App", "link.app").c_str()), 0);
    const Recorder xattr("xattr");
    EXPECT_EQ(initialize(), 1.0f);
    EXPECT_EQ(xattr.calls(), unlockCall(Tree::app("My App", "The Helper.app")));
    EXPECT_EQ(readFile(Tree::app("My App", "Vek_Config.txt")), "APPS_UNLOCKED = TRUE\n");
    initialize();
    EXPECT_EQ(xattr.calls(), unlockCall(Tree::app("My App", "The Helper.app")));
}

TEST_F(Setup, NeitherReadsNorWritesTheSelection) {
    m_tree.addApp("A", "NAME a\n");
    writeFile(Tree::hub("Vek_Application.txt"), "something");
    initialize();
    EXPECT_EQ(readFile(Tree::hub("Vek_Application.txt")), "something");
}

TEST_F(Setup, UsesTheScaleThatWasSetAndZeroBefore) {
    m_tree.addApp("Flip", "EXTENSION .vek\nEXPORT_FLIP_X 1\n");
    initialize();
    char prefs[16] = {};
    m_library.call("GetVekAppIOPrefs", 0.0, prefs);
    EXPECT_EQ(m_library.call("VekSetExportOffsetX", 2.0), 0.0f);
    EXPECT_EQ(m_library.call("VekSetExportOffsetY", 0.0), 0.0f);
    EXPECT_EQ(m_library.call("VekSetExportOffsetZ", 0.0), 0.0f);
    const TempFolder folder;
    const auto flippedX = [&] {
        writeFile(folder / "m.vek", ExchangeFile().vertices({1, 0, 0}).end().bytes());
        EXPECT_EQ(m_library.call("VekPostExport", folder / "m.vek"), 0.0f);
        return floatsAt(readFile(folder / "m.vek"), 48, 1)[0];
    };
    EXPECT_EQ(flippedX(), -1.0f);
    EXPECT_EQ(m_library.call("VekSetExportScale", 2.5), 0.0f);
    EXPECT_EQ(flippedX(), 9.0f);
}

TEST_F(Setup, IgnoresCallsThatDoNothing) {
    OutText block1, block2;
    for (const char* name : {"PrintInLog", "DeclareMacroActivated"}) {
        EXPECT_EQ(m_library.call(name, "text", 5.0, block1.block(), block2.block()), 0.0f);
    }
    EXPECT_TRUE(block1.untouched() && block2.untouched());
}

TEST_F(Setup, KeepsTheScaleAndTheOffsetsWhateverElseIsCalled) {
    m_tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\nEXPORT_FLIP_Y 1\nEXPORT_FLIP_Z 1\n");
    m_library.call("VekSetExportScale", 2.0);
    m_library.call("VekSetExportOffsetX", 1.0);
    m_library.call("VekSetExportOffsetY", 2.0);
    m_library.call("VekSetExportOffsetZ", 3.0);
    OutText block1, block2;
    for (const char* name : {"PrintInLog", "DeclareMacroActivated"}) {
        m_library.call(name, "text", 5.0, block1.block(), block2.block());
    }
    initialize();
    initialize();
    m_library.call("GetVekAppIOPrefs", 0.0, block1.block());
    const TempFolder folder;
    writeFile(folder / "a.vek", ExchangeFile().vertices({0, 0, 0}).end().bytes());
    EXPECT_EQ(m_library.call("VekPostExport", folder / "a.vek"), 0.0f);
    // Mirrored about the scaled offset on each axis.
    EXPECT_EQ(floatsAt(readFile(folder / "a.vek"), 48, 3), (std::vector<float>{4, 8, 12}));
}

TEST_F(Setup, MarksAFolderUnlockedThoughTheCommandFails) {
    m_tree.addApp("App", "NAME a\n");
    makeFolders(Tree::app("App", "Helper.app"));
    makeFolders(Tree::hub("VekHubFromApp.app"));
    const TempFolder folder;
    writeFile(folder / "xattr", "#!/bin/sh\nexit 1\n");
    chmod((folder / "xattr").c_str(), 0755);
    const std::string before = getenv("PATH");
    setenv("PATH", (folder.path() + ":" + before).c_str(), 1);
    EXPECT_EQ(initialize(), 1.0f);
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(readFile(Tree::app("App", "Vek_Config.txt")), "APPS_UNLOCKED = TRUE\n");
    EXPECT_EQ(readFile(Tree::hub("Vek_Config.txt")).substr(0, 21), "APPS_UNLOCKED = TRUE\n");
}

TEST_F(Setup, UnlocksAnApplicationsBundlesAgainWhenItsMarkIsFalseOrEmptyOrGone) {
    m_tree.addApp("App", "NAME a\n");
    makeFolders(Tree::app("App", "Helper.app"));
    for (const char* config :
         {"APPS_UNLOCKED = No\n", "APPS_UNLOCKED = 0\n", "APPS_UNLOCKED =\n", ""}) {
        writeFile(Tree::app("App", "Vek_Config.txt"), config);
        const Recorder xattr("xattr");
        initialize();
        EXPECT_EQ(xattr.calls(), unlockCall(Tree::app("App", "Helper.app"))) << config;
    }
    for (const char* config : {"APPS_UNLOCKED = True\n", "apps_unlocked=yes\n"}) {
        writeFile(Tree::app("App", "Vek_Config.txt"), config);
        const Recorder xattr("xattr");
        initialize();
        EXPECT_EQ(xattr.calls(), "") << config;
    }
}

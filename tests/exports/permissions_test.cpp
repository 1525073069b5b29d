// Files and folders of the tree that the library may not read or may not write.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

// Takes permissions away until it goes, so that an ordinary user can clear the tree afterwards.
class WithMode {
public:
    WithMode(const std::string& path, mode_t mode) : m_path(path) {
        struct stat status;
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        m_before = status.st_mode & 07777;
        EXPECT_EQ(chmod(path.c_str(), mode), 0) << path;
    }
    WithMode(const WithMode&) = delete;
    WithMode& operator=(const WithMode&) = delete;
    ~WithMode() { chmod(m_path.c_str(), m_before); }

private:
    std::string m_path;
    mode_t m_before;
};

class Permissions : public testing::Test {
protected:
    Tree m_tree;
    LoadedLibrary m_library;
    ObeyPermissions m_obey;
};

}  // namespace

TEST_F(Permissions, OfAReadOnlyExchangeFileMakeItsTransformFail) {
    m_tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\nIMPORT_FLIP_X 1\n");
    m_library.call("InitializeVek", "/");
    m_library.call("GetVekAppIOPrefs", 0.0);
    const std::string file = Tree::project("mesh.vek");
    const std::string bytes = ExchangeFile().vertices({1, 2, 3}).end().bytes();
    writeFile(file, bytes);
    const WithMode mode(file, 0400);
    EXPECT_EQ(m_library.call("VekPostExport", file), -1.0f);
    EXPECT_EQ(m_library.call("VekPreImport", file), -1.0f);
    EXPECT_EQ(readFile(file), bytes);
}

TEST_F(Permissions, OfAnUnreadableObjectListMakeItEmpty) {
    writeFile(Tree::objectList(), "A\nB\n");
    const WithMode mode(Tree::objectList(), 0200);
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 0.0f);
    EXPECT_EQ(m_library.call("ExtractVekObject"), 0.0f);
}

TEST_F(Permissions, OfAWriteOnlyObjectListKeepItFromBeingAddedToOnTop) {
    writeFile(Tree::objectList(), "A\n");
    {
        const WithMode mode(Tree::objectList(), 0200);
        EXPECT_EQ(m_library.call("AddVekObject", "B"), 0.0f);
    }
    EXPECT_EQ(readFile(Tree::objectList()), "A\n");
}

TEST_F(Permissions, OfAReadOnlyObjectListKeepItThoughItsFirstObjectIsExtracted) {
    writeFile(Tree::objectList(), "A\nB\n");
    const WithMode mode(Tree::objectList(), 0400);
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(readFile(Tree::objectList()), "A\nB\n");
    EXPECT_EQ(readFile(Tree::hub("Vek_ObjectPath.txt")), "A");
}

TEST_F(Permissions, OfAReadOnlyObjectListKeepIt) {
    writeFile(Tree::objectList(), "A\n");
    const WithMode mode(Tree::objectList(), 0400);
    EXPECT_EQ(m_library.call("AddVekObject", "B"), 0.0f);
    EXPECT_EQ(m_library.call("AddVekObjectToList", "B"), 0.0f);
    EXPECT_EQ(m_library.call("ClearVekObjectList"), 0.0f);
    EXPECT_EQ(readFile(Tree::objectList()), "A\n");
}

TEST_F(Permissions, OfAReadOnlySettingsFileKeepItAndReportTheKeyThatItHas) {
    const std::string file = Tree::hub("prefs.txt");
    writeFile(file, "K = 1\n");
    const WithMode mode(file, 0400);
    std::string value = "2";
    EXPECT_EQ(m_library.preference("WriteConfigPrefAsString", file, "K", value.data()), 1.0f);
    EXPECT_EQ(readFile(file), "K = 1\n");
}

TEST_F(Permissions, OfAnUnreadableSettingsFileHideItsKeysAndKeepIt) {
    const std::string file = Tree::hub("prefs.txt");
    writeFile(file, "K = 1\n");
    std::string value = "2";
    {
        const WithMode mode(file, 0200);
        EXPECT_EQ(m_library.preference("ReadConfigPrefAsString", file, "K", value.data()), 0.0f);
        EXPECT_EQ(value, "2");
        EXPECT_EQ(m_library.preference("WriteConfigPrefAsString", file, "K", value.data()), 0.0f);
    }
    EXPECT_EQ(readFile(file), "K = 1\n");
}

TEST_F(Permissions, OfAnUnreadableApplicationFolderHideIt) {
    m_tree.addApp("Closed", "NAME Closed\n");
    m_tree.addApp("Open", "NAME Open\n");
    const WithMode mode(Tree::root() + "/VekApps/Closed", 0);
    EXPECT_EQ(m_library.call("InitializeVek", "/"), 1.0f);
    EXPECT_EQ(m_library.call("FindVekApp", "Open"), 0.0f);
}

TEST_F(Permissions, OfAnUnreadableDescriptorLeaveTheApplicationItsDefaults) {
    m_tree.addApp("App", "NAME Named\n");
    const WithMode mode(Tree::app("App", "Vek_Info.txt"), 0);
    m_library.call("InitializeVek", "/");
    EXPECT_EQ(m_library.call("FindVekApp", "App"), 0.0f);
    OutText name;
    m_library.call("GetVekAppName", 0.0, name.block());
    EXPECT_EQ(name.text(), "");
    EXPECT_FALSE(name.untouched());
}

TEST_F(Permissions, OfAReadOnlyHubKeepTheSelection) {
    m_tree.addApp("App", "NAME App\n");
    m_library.call("InitializeVek", "/");
    const WithMode mode(Tree::hub(""), 0500);
    m_library.call("SetVekAppIndex", 0.0);
    EXPECT_FALSE(fileIsThere(Tree::hub("Vek_Application.txt")));
}

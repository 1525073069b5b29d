// A mesh goes to the other side and comes back, through the loaded library alone, as the host's
// macros do it: also where the paths are full of what paths should not be full of.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

// Left-handed with z up: an odd number of mirrors each way.
const char kDescriptor[] =
    "NAME \"Other Side\"\nEXTENSION \".vek\"\nEXPORT_SWITCH_YZ Yes\n"
    "IMPORT_SWITCH_YZ Yes\n";

std::string meshFromTheHost() {
    return ExchangeFile()
        .vertices({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11})
        .faces(20001, {0, 1, 2, 3, 2, 1, 0, -1})
        .corners(25001, {10, 11, 12, 13, 20, 21, 22, -1})
        .map(45001, "maps\\skin.tif")
        .map(55001, "height.tif", 0.25f)
        .block(77777, 5, "kept as it is")
        .end()
        .bytes();
}

class RoundTrip : public testing::Test {
protected:
    void choose() {
        m_tree.addApp("Other", kDescriptor);
        ASSERT_EQ(m_library.call("InitializeVek", "/Applications/Host"), 1.0f);
        ASSERT_EQ(m_library.call("SetVekAppIndex", 0.0), 0.0f);
        ASSERT_EQ(m_library.call("GetVekAppIndex"), 0.0f);
        char prefs[16] = {};
        m_library.call("GetVekAppIOPrefs", 0.0, prefs);
        m_library.call("VekSetExportScale", 2.0);
        m_library.call("VekSetExportOffsetX", 0.5);
        m_library.call("VekSetExportOffsetY", 1.0);
        m_library.call("VekSetExportOffsetZ", -1.5);
    }

    void goThereAndBack(const std::string& folder) {
        const std::string object = folder + "/mesh";
        const std::string file = object + ".vek";
        const std::string before = meshFromTheHost();
        writeFile(file, before);

        EXPECT_EQ(m_library.call("ClearVekObjectList"), 1.0f);
        EXPECT_EQ(m_library.call("AddVekObjectToList", object), 0.0f);
        EXPECT_EQ(m_library.call("VekPostExport", file), 0.0f);
        const std::string there = readFile(file);
        // About (1, 2, -3): y and z exchanged.
        EXPECT_EQ(floatsAt(there, 48, 3), (std::vector<float>{0, 7, -4}));
        EXPECT_EQ(intsAt(there, 48 + 48 + 16, 8),
                  (std::vector<std::int32_t>{0, 3, 2, 1, 2, 0, 1, -1}));
        EXPECT_EQ(intsAt(there, 48 + 48 + 16 + 32 + 16, 8),
                  (std::vector<std::int32_t>{10, 13, 12, 11, 20, 22, 21, -1}));

        EXPECT_EQ(m_library.call("ReadVekObjectList"), 1.0f);
        OutText path, map, number;
        m_library.call("GetVekObjectPath", 0.0, path.block());
        EXPECT_EQ(path.text(), object);
        EXPECT_EQ(m_library.call("GetFirstObjectTextureFileName", 0.0, map.block()), 0.0f);
        EXPECT_EQ(map.text(), "maps/skin.tif");
        EXPECT_EQ(m_library.call("GetFirstObjectTextureFileName", 2.0, map.block(), number.block()),
                  0.0f);
        EXPECT_EQ(number.text(), "0.250000");
        EXPECT_EQ(m_library.call("IsVekFilePathValid", path.text() + ".vek"), 1.0f);
        EXPECT_EQ(m_library.call("VekPreImport", path.text() + ".vek"), 0.0f);
        EXPECT_EQ(readFile(file), before);
    }

    void preferencesIn(const std::string& folder) {
        float real = 1.25f;
        const std::string file = folder + "/prefs.txt";
        EXPECT_EQ(m_library.preference("WriteConfigPrefAsFloat", file, "Size", &real), 0.0f);
        EXPECT_EQ(readFile(file), "SIZE = 1.250000\n");
        EXPECT_EQ(m_library.preference("ReadConfigPrefAsFloat", file, "size", &real), 1.0f);
        EXPECT_EQ(real, 1.25f);
    }

    Tree m_tree;
    TempFolder m_folder;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(RoundTrip, BringsAMeshBackToTheByte) {
    choose();
    goThereAndBack(m_folder.path());
}

TEST_F(RoundTrip, BringsAMeshBackFromTheDefaultProjectFolder) {
    choose();
    goThereAndBack(Tree::root() + "/VekProjects/Default");
}

TEST_F(RoundTrip, CopesWithEveryPathUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    choose();
    std::string deep;
    while (deep.size() < 300) deep += "/a folder of the deep tree";
    for (const std::string& name :
         {std::string("/with blanks"), std::string("/with \"quotes\""), std::string("/it's"),
          std::string("/100% %s %n"), std::string("/dots.in.names/..hidden"),
          std::string("/\xC3\xA4\xC3\xB6\xC3\xBC \xC3\x9F"),
          std::string("/\xE5\xBD\xAB\xE5\x88\xBB"), std::string("/$HOME `x` ; & | * ?"), deep}) {
        makeFolders(m_folder.path() + name);
        goThereAndBack(m_folder.path() + name);
        preferencesIn(m_folder.path() + name);
    }
}

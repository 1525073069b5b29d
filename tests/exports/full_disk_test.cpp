// On a disk that is full: /full of the private view, which 64 KiB fill.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

class FullDisk : public testing::Test {
protected:
    void SetUp() override {
        const char* const view = getenv("VEK_VIEW");
        if (!view || std::string(view) != "private") GTEST_SKIP() << "there is no /full here";
        for (const auto& entry : std::filesystem::directory_iterator("/full")) {
            std::filesystem::remove_all(entry);
        }
    }

    // Takes all the room that is left.
    static void fill() {
        std::FILE* const file = std::fopen("/full/filler", "wb");
        ASSERT_TRUE(file);
        std::setvbuf(file, nullptr, _IONBF, 0);
        const std::string block(4096, 'f');
        while (std::fwrite(block.data(), 1, block.size(), file) == block.size()) {
        }
        std::fclose(file);
    }

    Tree m_tree;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(FullDisk, StillTurnsAnExchangeFileInPlace) {
    m_tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\n");
    m_library.call("InitializeVek", "/");
    m_library.call("GetVekAppIOPrefs", 0.0);
    writeFile("/full/mesh.vek", ExchangeFile().vertices({1, 2, 3}).end().bytes());
    fill();
    EXPECT_EQ(m_library.call("VekPostExport", "/full/mesh.vek"), 0.0f);
    EXPECT_EQ(floatsAt(readFile("/full/mesh.vek"), 48, 3), (std::vector<float>{-1, 2, 3}));
}

TEST_F(FullDisk, KeepsAMayaSceneThatWouldGrow) {
    // Its faces use one UV point: split, there is one for each of 3000 corners.
    std::string faces;
    for (int i = 0; i < 1000; ++i) faces += " f 3 0 1 2 mu 0 3 0 0 0";
    const std::string scene =
        "\tsetAttr -s 1 \".uvst[0].uvsp\";\n\tsetAttr \".uvst[0].uvsp[0]\" -type \"float2\" 0 0;\n"
        "\tsetAttr -s 1000 \".fc\";\n\tsetAttr \".fc[0:999]\" -type \"polyFaces\"" +
        faces + ";\n";
    writeFile("/full/scene.ma", scene);
    EXPECT_EQ(m_library.call("VekPreImport", "/full/scene.ma"), -1.0f);
    EXPECT_EQ(readFile("/full/scene.ma"), scene);
    // One that becomes shorter needs no room.
    fill();
    EXPECT_EQ(m_library.call("VekPostExport", "/full/scene.ma"), -1.0f)
        << "its edges are not there";
    writeFile("/full/filler", "\tsetAttr -s 0000000000000000000000 \".ed\";\n");
    std::filesystem::rename("/full/filler", "/full/short.ma");
    EXPECT_EQ(m_library.call("VekPostExport", "/full/short.ma"), 0.0f);
    EXPECT_EQ(readFile("/full/short.ma"), "\tsetAttr -s 0 \".ed\";\n");
}

TEST_F(FullDisk, KeepsTheObjectListWhereOneCannotBeAdded) {
    // The list ends with its page, so that one more byte needs room.
    const std::string old = std::string(4095, 'o') + "\n";
    writeFile("/full/list", old);
    fill();
    ASSERT_EQ(symlink("/full/list", Tree::objectList().c_str()), 0);
    EXPECT_EQ(m_library.call("AddVekObject", "A"), 0.0f);
    EXPECT_EQ(readFile("/full/list"), old);
    EXPECT_EQ(m_library.call("AddVekObjectToList", "A"), 0.0f);
    EXPECT_EQ(m_library.call("ReadVekObjectList"), 1.0f);
    EXPECT_EQ(m_library.call("ExtractVekObject"), 1.0f);
    EXPECT_EQ(readFile("/full/list"), "");
}

TEST_F(FullDisk, KeepsPreferencesThatCannotBeWritten) {
    const std::string old = "K = 1\n" + std::string(4089, 'x') + "\n";
    writeFile("/full/prefs", old);
    fill();
    std::string value(200, 'v');
    EXPECT_EQ(m_library.preference("WriteConfigPrefAsString", "/full/prefs", "k", value.data()),
              1.0f);
    EXPECT_EQ(readFile("/full/prefs"), old);
}

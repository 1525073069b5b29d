#include <gtest/gtest.h>

#include <string>

#include "tests/support/host.h"
#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

// Two squares that meet in the edge from vertex 0 to vertex 1, their normals 45 or 20 degrees
// apart.
std::string foldedSquares(const std::string& last, const std::string& mark) {
    return "createNode mesh -n \"m\";\n\tsetAttr -s 6 \".vt\";\n"
           "\tsetAttr \".vt[0:5]\"\n 0 0 0 0 1 0 -1 0 0 -1 1 0" +
           last +
           ";\n"
           "\tsetAttr -s 7 \".ed\";\n\tsetAttr \".ed[0:6]\"\n 0 1 " +
           mark +
           " 1 3 0 3 2 0 2 0 0 1 5 0 5 4 0 4 0 0;\n"
           "\tsetAttr -s 2 \".fc\";\n\tsetAttr \".fc[0:1]\" -type \"polyFaces\"\n"
           " f 4 0 1 2 3 f 4 -1 -7 -6 -5;\n";
}

const std::string kAt45 = " 0.7071 0 -0.7071 0.7071 1 -0.7071";
const std::string kAt20 = " 0.9397 0 -0.3420 0.9397 1 -0.3420";

class MayaScenes : public testing::Test {
protected:
    std::string path(const std::string& name = "scene.ma") const { return m_folder / name; }

    // The scene's marks after an export, with these lines in the configuration of "Maya".
    std::string exported(const std::string& text, const std::string& configuration) {
        makeFolders(Tree::app("Maya", ""));
        writeFile(Tree::app("Maya", "Vek_Config.txt"), configuration);
        writeFile(path(), text);
        EXPECT_EQ(m_library.call("VekPostExport", path()), 0.0f);
        return readFile(path());
    }

    Tree m_tree;
    TempFolder m_folder;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(MayaScenes, HaveHardEdgesFrom30DegreesOn) {
    writeFile(path(), foldedSquares(kAt45, "1"));
    EXPECT_EQ(m_library.call("VekPostExport", path()), 0.0f);
    EXPECT_EQ(readFile(path()), foldedSquares(kAt45, "0"));
    writeFile(path(), foldedSquares(kAt20, "0"));
    EXPECT_EQ(m_library.call("VekPostExport", path()), 0.0f);
    EXPECT_EQ(readFile(path()), foldedSquares(kAt20, "1"));
}

TEST_F(MayaScenes, HaveHardEdgesFromTheConfiguredAngleOn) {
    EXPECT_EQ(exported(foldedSquares(kAt45, "0"), "SMOOTH_ANGLE = 46\n"),
              foldedSquares(kAt45, "1"));
    EXPECT_EQ(exported(foldedSquares(kAt45, "0"), "smooth_angle=44.5\n"),
              foldedSquares(kAt45, "0"));
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = 10\n"),
              foldedSquares(kAt20, "0"));
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "PATH = x\n"), foldedSquares(kAt20, "1"));
}

TEST_F(MayaScenes, BringTheAngleIntoItsRange) {
    // 30, 160, and 0 for a text that is no number.
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = -30\n"),
              foldedSquares(kAt20, "1"));
    EXPECT_EQ(exported(foldedSquares(kAt45, "0"), "SMOOTH_ANGLE = -30\n"),
              foldedSquares(kAt45, "0"));
    EXPECT_EQ(exported(foldedSquares(kAt45, "0"), "SMOOTH_ANGLE = 200\n"),
              foldedSquares(kAt45, "1"));
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = inf\n"),
              foldedSquares(kAt20, "1"));
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = soft\n"),
              foldedSquares(kAt20, "0"));
}

TEST_F(MayaScenes, ReadTheAngleWithAPointUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = 20.5\n"),
              foldedSquares(kAt20, "1"));
    EXPECT_EQ(exported(foldedSquares(kAt20, "0"), "SMOOTH_ANGLE = 19.5\n"),
              foldedSquares(kAt20, "0"));
}

TEST_F(MayaScenes, AreRewoundWhereTheApplicationMirrors) {
    m_tree.addApp("Maya", "EXTENSION .ma\nEXPORT_FLIP_X 1\nIMPORT_FLIP_X 1\n");
    ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 1.0f);
    char prefs[16] = {};
    m_library.call("GetVekAppIOPrefs", 0.0, prefs);
    const std::string text = foldedSquares(kAt20, "1");
    writeFile(path(), text);
    EXPECT_EQ(m_library.call("VekPostExport", path()), 0.0f);
    std::string mirrored = text;
    mirrored.replace(mirrored.find(" f 4"), std::string::npos, " f 4 -4 -3 -2 -1 f 4 4 5 6 0;\n");
    EXPECT_EQ(readFile(path()), mirrored);
    EXPECT_EQ(m_library.call("VekPreImport", path()), 0.0f);
    EXPECT_EQ(readFile(path()), text);
}

TEST_F(MayaScenes, AreKnownByTheirExtensionInAnyLetterCase) {
    for (const char* name : {"a.ma", "a.MA", "a.Ma", ".ma"}) {
        writeFile(path(name), "text\n// End of it\n");
        EXPECT_EQ(m_library.call("VekPostExport", path(name)), 0.0f) << name;
        EXPECT_EQ(readFile(path(name)), "text\n");
        EXPECT_EQ(m_library.call("VekPreImport", "Disk:" + path(name)), 0.0f) << name;
    }
    for (const char* name : {"a.mb", "a.ma.txt", "ma"}) {
        writeFile(path(name), "text\n// End of it\n");
        EXPECT_EQ(m_library.call("VekPostExport", path(name)), -1.0f) << name;
        EXPECT_EQ(m_library.call("VekPreImport", path(name)), -1.0f) << name;
        EXPECT_EQ(readFile(path(name)), "text\n// End of it\n");
    }
}

TEST_F(MayaScenes, AreSplitOnTheirWayBack) {
    const std::string head = "createNode mesh;\n";
    const std::string text =
        head +
        "\tsetAttr -s 1 \".uvst[0].uvsp[0]\" -type \"float2\" 0 1;\n"
        "\tsetAttr -ch 3 \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 mu 0 3 0 0 0;\n";
    writeFile(path(), text);
    EXPECT_EQ(m_library.call("VekPostExport", path()), 0.0f);
    EXPECT_EQ(readFile(path()), text) << "the merge does not know these forms";
    EXPECT_EQ(m_library.call("VekPreImport", path()), 0.0f);
    EXPECT_EQ(readFile(path()),
              head +
                  "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s 3 "
                  "\".uvst[0].uvsp\";\n\tsetAttr \".uvst[0].uvsp[0:2]\" -type \"float2\"\n"
                  " 0.00000 1.00000 0.00000 1.00000 0.00000 1.00000;\n\tsetAttr -s 1 \".fc\";\n"
                  "\tsetAttr \".fc[0:0]\" -type \"polyFaces\"\n f 3 0 1 2 mu 0 3 0 1 2;\n");
}

TEST_F(MayaScenes, ThatAreRefusedStayAsTheyWere) {
    const std::string text = "\tsetAttr -s 3 \".fc\";\n";
    for (const char* name : {"VekPostExport", "VekPreImport"}) {
        writeFile(path(), text);
        EXPECT_EQ(m_library.call(name, path()), -1.0f);
        EXPECT_EQ(readFile(path()), text);
        writeFile(path(), "");
        EXPECT_EQ(m_library.call(name, path()), -1.0f);
        EXPECT_EQ(m_library.call(name, path("missing.ma")), -1.0f);
        EXPECT_FALSE(fileIsThere(path("missing.ma")));
    }
}

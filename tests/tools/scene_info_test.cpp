// vek info of Maya scenes.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

namespace {

class SceneInfoTool : public testing::Test {
protected:
    int info(const std::string& scene, const std::string& options = "") {
        writeFile(m_folder / "scene.MA", scene);
        return runProgram(shellWord(VEK_BUILD_DIR "/bin/vek") + " info " + options + " " +
                              shellWord(m_folder / "scene.MA"),
                          m_said);
    }
    bool says(const std::string& text) const { return m_said.find(text) != std::string::npos; }

    TempFolder m_folder;
    std::string m_said;
};

const std::string kFolded =
    "createNode mesh -n \"fold\";\n"
    "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s 6 \".uvst[0].uvsp\";\n"
    "\tsetAttr \".uvst[0].uvsp[0:5]\" -type \"float2\"\n 0 0 1 0 0 1 1 0 1 1 0 1;\n"
    "\tsetAttr -s 4 \".vt\";\n\tsetAttr \".vt[0:3]\"\n 0 0 0 1 0 0 0 1 0 1 1 0;\n"
    "\tsetAttr -s 5 \".ed\";\n\tsetAttr \".ed[0:4]\"\n 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
    "\tsetAttr -s 2 \".fc\";\n\tsetAttr \".fc[0:1]\" -type \"polyFaces\"\n"
    " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5;\n";

const std::string kSavedByMaya =
    "createNode mesh -n \"disc\";\n"
    "\tsetAttr -s 5 \".vt[0:4]\"  0 0 0 1 0 0 1 1 0 0 1 0 0 2 0;\n"
    "\tsetAttr -s 6 \".ed[0:5]\"  0 1 0 1 2 0 2 3 0 3 4 0 4 0 0 1 3 0;\n"
    "\tsetAttr -s 2 -ch 13 \".fc[0:1]\" -type \"polyFaces\" \n\t\tf 5 0 1 2 3 4\n\t\tmu 1 5 0 1 2 "
    "3 4\n"
    "\t\tmc 2 5 0 1 2 3 4\n\t\th 4 0 1 2 3\n\t\tf 4 0 1 2 3;\n";

}  // namespace

TEST_F(SceneInfoTool, SaysWhatASceneHoldsAndWhatIsDoneWithIt) {
    EXPECT_EQ(info(kFolded), 0) << m_said;
    EXPECT_TRUE(says("1 mesh with data\n"));
    EXPECT_TRUE(says("mesh fold: 4 vertices, 5 edges, 6 UVs, 2 faces\n"));
    EXPECT_TRUE(says("2 triangles, 0 quads, 0 of other sizes, 0 holes; 6 corners\n"));
    EXPECT_TRUE(says("UV sets in use: 0\n"));
    EXPECT_TRUE(says("writes 4 UVs, 5 edges of which 1 are smooth, and 2 faces."));
    EXPECT_TRUE(says("writes 6 UVs and 2 faces."));
}

TEST_F(SceneInfoTool, KnowsTheFormsOfMaya) {
    EXPECT_EQ(info(kSavedByMaya), 0) << m_said;
    EXPECT_TRUE(says("mesh disc: 5 vertices, 6 edges, 0 UVs, 2 faces\n"));
    EXPECT_TRUE(says("0 triangles, 1 quads, 1 of other sizes, 1 holes; 13 corners\n"));
    EXPECT_TRUE(says("UV sets in use: 1\n"));
    EXPECT_TRUE(says("colour sets in use: 2\n"));
    EXPECT_TRUE(says("writes 0 UVs, 0 edges of which 0 are smooth, and 0 faces."));
    EXPECT_TRUE(says("writes 0 UVs and 2 faces."));
}

TEST_F(SceneInfoTool, NamesTheLineOfTheStatementThatIsRefused) {
    EXPECT_EQ(info("a\nb\n\tsetAttr \".uvst[0].uvsp[0:1]\" -type \"float2\"\n 0 0 1;\n"), 1);
    EXPECT_TRUE(
        says("The merge (VekPostExport) refuses it: fewer values than its range has entries "
             "(the statement at line 3)."))
        << m_said;
    EXPECT_TRUE(says("The split (VekPreImport) refuses it: fewer values"));
    const auto refusedAt = [&](const std::string& reason, int line) {
        return says("refuses it: " + reason + " (the statement at line " + std::to_string(line) +
                    ").");
    };
    info("createNode mesh;\nx\n\tsetAttr -s 2 \".vt\";\n\tsetAttr \".vt[0]\"\n 0 0 0;\n\ny\n");
    EXPECT_TRUE(refusedAt("vertices that do not match their count", 3)) << m_said;
    // The second range of faces is the one to blame.
    std::string text = kFolded;
    text.replace(text.rfind(" f 3"), 4, ";\n\tsetAttr \".fc[1]\"\n f 3");
    text.replace(text.find(".fc[0:1]"), 8, ".fc[0:0]");
    EXPECT_EQ(info(text), 0) << m_said;
    std::string withoutUV = text;
    withoutUV.replace(withoutUV.rfind("5;"), 2, "7;");
    info(withoutUV);
    EXPECT_TRUE(refusedAt("a face with a UV that is not there", 14)) << m_said;
    text.replace(text.rfind("3 4 -2"), 6, "3 9 -2");
    info(text);
    EXPECT_TRUE(refusedAt("a face with an edge that is not there", 14)) << m_said;
    // A face that only the split can write.
    EXPECT_EQ(
        info("\tsetAttr -s 1 \".fc\";\n\tsetAttr \".fc[0]\" -type \"polyFaces\" f 5 0 1 2 3 4;\n"),
        0);
    EXPECT_TRUE(
        says("refuses it: a face that has neither 3 nor 4 corners (the statement at line 2)."));
    EXPECT_TRUE(says("The split (VekPreImport) writes 0 UVs and 1 faces."));
}

TEST_F(SceneInfoTool, SaysItAsJson) {
    EXPECT_EQ(info(kFolded, "--json"), 0);
    auto json = nlohmann::json::parse(m_said);
    EXPECT_EQ(json["meshes"][0]["name"], "fold");
    EXPECT_EQ(json["meshes"][0]["vertices"], 4);
    EXPECT_EQ(json["meshes"][0]["triangles"], 2);
    EXPECT_EQ(json["meshes"][0]["uv_sets"], nlohmann::json::array({0}));
    EXPECT_EQ(json["merge"]["refuses"], false);
    EXPECT_EQ(json["merge"]["uvs"], 4);
    EXPECT_EQ(json["merge"]["smooth_edges"], 1);
    EXPECT_EQ(json["split"]["uvs"], 6);
    EXPECT_EQ(info("\tsetAttr -s 1 \".fc\";\n", "--json"), 1);
    json = nlohmann::json::parse(m_said);
    EXPECT_EQ(json["split"]["refuses"], true);
    EXPECT_EQ(json["split"]["line"], 1);
    EXPECT_EQ(json["split"]["reason"], "faces that do not match their count");
}

TEST_F(SceneInfoTool, LooksAtAnyBytesAndRejectsNoFile) {
    EXPECT_EQ(info(std::string("\0\xFF\n\tsetAttr", 11)), 0);
    EXPECT_EQ(info(""), 0);
    EXPECT_EQ(runProgram(shellWord(VEK_BUILD_DIR "/bin/vek") + " info " +
                             shellWord(m_folder / "missing.ma"),
                         m_said),
              2);
}

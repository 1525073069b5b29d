#include "tools/vek/obj_file.h"

#include <gtest/gtest.h>

#include "tests/support/locale.h"
#include "tests/support/temp_folder.h"
#include "tests/tools/mesh_fixture.h"

namespace {

class ObjFile : public testing::Test {
protected:
    std::string path() const { return m_folder / "mesh.obj"; }

    bool load(const std::string& text) {
        writeFile(path(), text);
        return loadObj(path(), m_mesh, m_notes, m_error);
    }

    TempFolder m_folder;
    Mesh m_mesh;
    ObjNotes m_notes;
    std::string m_error;
};

const char kFourVertices[] = "v 0 0 0\nv 1 0 0\nv 1 1.5 0\nv 0 1 -2e-1\n";

std::string polygon(int corners) {
    std::string text;
    for (int i = 0; i < corners; ++i) text += "v " + std::to_string(i) + " 0 0\n";
    text += "f";
    for (int i = 1; i <= corners; ++i) text += " " + std::to_string(i);
    return text + "\n";
}

}  // namespace

TEST_F(ObjFile, LoadsTrianglesAndQuadsWithTheirUVs) {
    ASSERT_TRUE(
        load(std::string(kFourVertices) +
             "vt 0 0\nvt 1 0\nvt 1 1\nvn 0 0 1\nf 1/3 2/2 3/1\nf 1/1/1 2/2/1 3/3/1 4/1/1\n"))
        << m_error;
    EXPECT_EQ(m_mesh.positions.size(), 4u);
    EXPECT_EQ(m_mesh.positions[3], (MeshPoint{0, 1, -0.2f}));
    EXPECT_EQ(m_mesh.faces, (std::vector<MeshCorners>{{0, 1, 2, -1}, {0, 1, 2, 3}}));
    EXPECT_EQ(m_mesh.corners, (std::vector<MeshCorners>{{2, 1, 0, -1}, {0, 1, 2, 0}}));
    EXPECT_EQ(m_mesh.uvs, (std::vector<MeshUV>{{0, 0}, {1, 0}, {1, 1}}));
    EXPECT_EQ(m_notes.facesCut + m_notes.uvsMade + m_notes.facesSkipped, 0u);
}

TEST_F(ObjFile, CutsAPentagonIntoAFanAndSaysSo) {
    ASSERT_TRUE(load(polygon(5))) << m_error;
    EXPECT_EQ(m_mesh.faces,
              (std::vector<MeshCorners>{{0, 1, 2, -1}, {0, 2, 3, -1}, {0, 3, 4, -1}}));
    EXPECT_EQ(m_notes.facesCut, 1u);
}

TEST_F(ObjFile, CutsAFaceOfThreeHundredCorners) {
    ASSERT_TRUE(load(polygon(300))) << m_error;
    EXPECT_EQ(m_mesh.faces.size(), 298u);
    EXPECT_EQ(m_notes.facesCut, 1u);
}

TEST_F(ObjFile, CountsNegativeIndicesFromTheNewest) {
    ASSERT_TRUE(load(std::string(kFourVertices) + "vt 0 0\nvt 1 1\nf -4/-1 -3/-2 -1/-2\n"));
    EXPECT_EQ(m_mesh.faces, (std::vector<MeshCorners>{{0, 1, 3, -1}}));
    EXPECT_EQ(m_mesh.corners, (std::vector<MeshCorners>{{1, 0, 0, -1}}));
}

TEST_F(ObjFile, SkipsAFaceOfTwoCorners) {
    ASSERT_TRUE(load(std::string(kFourVertices) + "f 1 2\nf 1 2 3\n"));
    EXPECT_EQ(m_mesh.faces.size(), 1u);
    EXPECT_EQ(m_notes.facesSkipped, 1u);
}

TEST_F(ObjFile, GivesCornersWithoutAUVTheirVertexsPlaceFromAbove) {
    ASSERT_TRUE(load(std::string(kFourVertices) + "f 1 2 3\nf 1 3 4\n"));
    EXPECT_EQ(m_mesh.corners, (std::vector<MeshCorners>{{0, 1, 2, -1}, {0, 2, 3, -1}}));
    EXPECT_EQ(m_mesh.uvs, (std::vector<MeshUV>{{0, 1}, {1, 1}, {1, 1}, {0, 0}}));
    EXPECT_EQ(m_notes.uvsMade, 4u);
}

TEST_F(ObjFile, IgnoresMaterialsGroupsAndComments) {
    EXPECT_TRUE(load("# a\nmtllib none.mtl\no x\ng y\nusemtl z\ns 1\n" +
                     std::string(kFourVertices) + "l 1 2\nf 1 2 3\r\n"))
        << m_error;
    EXPECT_EQ(m_mesh.faces.size(), 1u);
}

TEST_F(ObjFile, RejectsAVertexThatIsNotThere) {
    for (const char* face : {"f 1 2 5\n", "f 1 2 3 5\n", "f 0 1 2\n", "f 1 2 -5\n", "f 1 2 3 -5\n",
                             "f 1 2 3 0\n", "f 1 2 3 4 0\n"}) {
        EXPECT_FALSE(load(kFourVertices + std::string(face))) << face;
        EXPECT_NE(m_error.find("not there"), std::string::npos) << m_error;
    }
}

TEST_F(ObjFile, RejectsAUVThatIsNotThere) {
    EXPECT_FALSE(load(kFourVertices + std::string("vt 0 0\nf 1/1 2/1 3/2\n")));
    EXPECT_FALSE(load(kFourVertices + std::string("vt 0 0\nf 1/1 2/1 3/-2\n")));
}

TEST_F(ObjFile, RejectsAFileWithoutFaces) {
    EXPECT_FALSE(load(kFourVertices));
    EXPECT_NE(m_error.find("has no faces"), std::string::npos) << m_error;
    EXPECT_FALSE(load(""));
}

TEST_F(ObjFile, RejectsAMissingFileAndAFolder) {
    EXPECT_FALSE(loadObj(m_folder / "none.obj", m_mesh, m_notes, m_error));
    EXPECT_NE(m_error.find("cannot be read"), std::string::npos) << m_error;
    EXPECT_FALSE(loadObj(m_folder.path(), m_mesh, m_notes, m_error));
}

TEST_F(ObjFile, SavesWithNumbersThatCountFromOne) {
    Mesh mesh = triangleAndQuad();
    mesh.corners = {{0, 1, 0, -1}, {1, 1, 1, 7}};
    mesh.uvs = {{0.5f, 0}, {1, 0.1f}};
    ASSERT_TRUE(saveObj(path(), mesh, m_error)) << m_error;
    EXPECT_EQ(readFile(path()),
              "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 1\nv 1 2 1\n"
              "vt 0.5 0\nvt 1 0.1\n"
              "f 1/1 2/2 3/1\nf 1/2 3/2 5/2 4\n");
}

TEST_F(ObjFile, RoundTripsUnderACommaLocale) {
    const CommaLocale locale;
    ASSERT_TRUE(locale.active());
    Mesh mesh = triangleAndQuad();
    mesh.positions[4] = {0.1f, -1.5e-7f, 123456.7f};
    mesh.uvs.assign(24, {0.25f, 1.0f / 3});
    ASSERT_TRUE(saveObj(path(), mesh, m_error)) << m_error;
    ASSERT_TRUE(loadObj(path(), m_mesh, m_notes, m_error)) << m_error;
    EXPECT_EQ(m_mesh.positions, mesh.positions);
    EXPECT_EQ(m_mesh.faces, mesh.faces);
    EXPECT_EQ(m_mesh.corners, mesh.corners);
    EXPECT_EQ(m_mesh.uvs, mesh.uvs);
}

TEST_F(ObjFile, RejectsSavingIntoAMissingFolder) {
    EXPECT_FALSE(saveObj(m_folder / "none/mesh.obj", triangleAndQuad(), m_error));
    EXPECT_NE(m_error.find("cannot be written"), std::string::npos) << m_error;
}

#include "tools/vek/mesh_file.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"
#include "tests/tools/mesh_fixture.h"

namespace {

class MeshFile : public testing::Test {
protected:
    std::string path() const { return m_folder / "mesh.vek"; }

    bool read(const std::string& bytes) {
        writeFile(path(), bytes);
        return readMesh(path(), m_mesh, m_error);
    }
    bool read(const ExchangeFile& file) { return read(file.bytes()); }

    // What the message says, without the file's name.
    bool failureSays(const std::string& words) const {
        return m_error.find(words) != std::string::npos;
    }

    TempFolder m_folder;
    Mesh m_mesh;
    std::string m_error;
};

const std::vector<float> kFiveVertices = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 1, 1, 2, 1};

ExchangeFile fiveVertices() {
    ExchangeFile file;
    file.vertices(kFiveVertices);
    return file;
}

}  // namespace

TEST_F(MeshFile, WritesVerticesFacesCornersUVsAndMaps) {
    Mesh mesh = triangleAndQuad();
    mesh.uvs = {{0.25f, 0.5f}};
    mesh.maps = {{55001, "a/b.png", 0.5f}};
    ASSERT_TRUE(writeMesh(path(), mesh, m_error)) << m_error;
    const ExchangeFile expected =
        fiveVertices()
            .faces(20001, {0, 1, 2, -1, 0, 2, 4, 3})
            .block(25001, 2, bytesOf(std::vector<std::int32_t>{10, 11, 12, -1, 20, 21, 22, 23}))
            .block(90001, 1, bytesOf(std::vector<float>{0.25f, 0.5f}))
            .map(55001, "a/b.png", 0.5f)
            .end();
    EXPECT_EQ(readFile(path()), expected.bytes());
}

TEST_F(MeshFile, RoundTripsAMesh) {
    Mesh mesh = triangleAndQuad();
    mesh.uvs = {{0.25f, 0.5f}, {1, 0}};
    mesh.maps = {{45001, "a.png", 0.0f}, {55001, "b.png", 0.5f}};
    ASSERT_TRUE(writeMesh(path(), mesh, m_error)) << m_error;
    ASSERT_TRUE(readMesh(path(), m_mesh, m_error)) << m_error;
    EXPECT_EQ(m_mesh.positions, mesh.positions);
    EXPECT_EQ(m_mesh.faces, mesh.faces);
    EXPECT_EQ(m_mesh.corners, mesh.corners);
    EXPECT_EQ(m_mesh.uvs, mesh.uvs);
    ASSERT_EQ(m_mesh.maps.size(), 2u);
    EXPECT_EQ(m_mesh.maps[1].kind, 55001u);
    EXPECT_EQ(m_mesh.maps[1].name, "b.png");
    EXPECT_EQ(m_mesh.maps[1].param, 0.5f);
}

TEST_F(MeshFile, KeepsABlockThatItDoesNotKnow) {
    const std::string payload("\1\2\3\0\5\6\7\0", 8);
    ASSERT_TRUE(
        read(fiveVertices().faces(20001, {0, 1, 2, -1}).block(77777, 9, payload, 2.5f).end()));
    ASSERT_TRUE(writeMesh(path(), m_mesh, m_error));
    ASSERT_TRUE(readMesh(path(), m_mesh, m_error));
    ASSERT_EQ(m_mesh.otherBlocks.size(), 1u);
    EXPECT_EQ(m_mesh.otherBlocks[0].id, 77777u);
    EXPECT_EQ(m_mesh.otherBlocks[0].count, 9u);
    EXPECT_EQ(m_mesh.otherBlocks[0].param, 2.5f);
    EXPECT_EQ(m_mesh.otherBlocks[0].payload, payload);
}

TEST_F(MeshFile, ReadsTrianglesMarkedByARepeatedIndex) {
    ASSERT_TRUE(read(fiveVertices()
                         .faces(20002, {0, 1, 2, 2, 0, 2, 4, 3})
                         .corners(25002, {10, 11, 12, 12, 20, 21, 22, 23})
                         .end()))
        << m_error;
    EXPECT_EQ(m_mesh.faces, triangleAndQuad().faces);
    EXPECT_EQ(m_mesh.corners, triangleAndQuad().corners);
}

TEST_F(MeshFile, ReadsFacesOfThreeIndices) {
    ASSERT_TRUE(read(
        fiveVertices().faces(20003, {0, 1, 2, 0, 2, 3}).corners(25001, {1, 2, 3, 4, 5, 6}).end()))
        << m_error;
    EXPECT_EQ(m_mesh.faces, (std::vector<MeshCorners>{{0, 1, 2, -1}, {0, 2, 3, -1}}));
    EXPECT_EQ(m_mesh.corners, (std::vector<MeshCorners>{{1, 2, 3, -1}, {4, 5, 6, -1}}));
}

TEST_F(MeshFile, ReadsFacesWithoutCornerValues) {
    ASSERT_TRUE(read(fiveVertices().faces(20001, {0, 1, 2, 3}).end())) << m_error;
    EXPECT_EQ(m_mesh.corners, (std::vector<MeshCorners>{{-1, -1, -1, -1}}));
}

TEST_F(MeshFile, TakesTheLastOfTwoBlocksOfAKind) {
    ASSERT_TRUE(read(fiveVertices().faces(20003, {0, 1, 2}).faces(20001, {0, 2, 4, 3}).end()));
    EXPECT_EQ(m_mesh.faces, (std::vector<MeshCorners>{{0, 2, 4, 3}}));
}

TEST_F(MeshFile, RejectsAMissingFile) {
    EXPECT_FALSE(readMesh(m_folder / "none.vek", m_mesh, m_error));
    EXPECT_TRUE(failureSays("cannot be opened")) << m_error;
}

TEST_F(MeshFile, RejectsAFolder) {
    EXPECT_FALSE(readMesh(m_folder.path(), m_mesh, m_error));
    EXPECT_TRUE(failureSays("cannot be opened")) << m_error;
}

TEST_F(MeshFile, RejectsEveryPrefixOfAFile) {
    const std::string whole = fiveVertices()
                                  .faces(20001, {0, 1, 2, -1, 0, 2, 4, 3})
                                  .corners(25001, {10, 11, 12, -1, 20, 21, 22, 23})
                                  .end()
                                  .bytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        ASSERT_FALSE(read(whole.substr(0, size))) << size << " bytes";
        ASSERT_FALSE(m_error.empty());
    }
    EXPECT_TRUE(read(whole)) << m_error;
}

TEST_F(MeshFile, RejectsAFileWithoutVertices) {
    EXPECT_FALSE(read(ExchangeFile().faces(20001, {0, 1, 2, -1}).end()));
    EXPECT_TRUE(failureSays("holds no vertices")) << m_error;
}

TEST_F(MeshFile, RejectsAFileWithoutFaces) {
    EXPECT_FALSE(read(fiveVertices().end()));
    EXPECT_TRUE(failureSays("holds no faces")) << m_error;
}

TEST_F(MeshFile, RejectsMoreVerticesThanTheBlockHolds) {
    EXPECT_FALSE(read(
        ExchangeFile().block(10001, 6, bytesOf(kFiveVertices)).faces(20001, {0, 1, 2, -1}).end()));
    EXPECT_TRUE(failureSays("claims more vertices")) << m_error;
}

TEST_F(MeshFile, RejectsMoreFacesThanTheBlockHolds) {
    const std::string face = bytesOf(std::vector<std::int32_t>{0, 1, 2, -1});
    EXPECT_FALSE(read(fiveVertices().block(20001, 0xFFFFFFFF, face).end()));
    EXPECT_TRUE(failureSays("claims more faces")) << m_error;
}

TEST_F(MeshFile, RejectsTooFewCornerValues) {
    EXPECT_FALSE(read(fiveVertices().faces(20001, {0, 1, 2, 3}).corners(25001, {1, 2, 3}).end()));
    EXPECT_TRUE(failureSays("fewer corner values")) << m_error;
}

TEST_F(MeshFile, RejectsAVertexThatIsNotThere) {
    EXPECT_FALSE(read(fiveVertices().faces(20001, {0, 1, 5, -1}).end()));
    EXPECT_FALSE(read(fiveVertices().faces(20001, {0, -1, 2, 3}).end()));
    EXPECT_FALSE(read(fiveVertices().faces(20002, {0, 1, 2, -1}).end()));
    EXPECT_FALSE(read(fiveVertices().faces(20003, {0, 1, -2}).end()));
    EXPECT_TRUE(failureSays("vertex that is not there")) << m_error;
}

TEST_F(MeshFile, RejectsABlockTooSmallForItsHeader) {
    std::string bytes = fiveVertices().faces(20001, {0, 1, 2, -1}).end().bytes();
    bytes[36] = 12;  // the blockSize of the first block
    EXPECT_FALSE(read(bytes));
    EXPECT_TRUE(failureSays("impossible size at offset 32")) << m_error;
}

// Safe on any bytes: the sanitizers watch.
TEST_F(MeshFile, SurvivesMutatedFiles) {
    const std::string whole = fiveVertices()
                                  .faces(20002, {0, 1, 2, 2, 0, 2, 4, 3})
                                  .corners(25001, {10, 11, 12, 12, 20, 21, 22, 23})
                                  .block(90001, 1, bytesOf(std::vector<float>{0.25f, 0.5f}))
                                  .map(45001, "a/b.png")
                                  .end()
                                  .bytes();
    std::mt19937 random(7);
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = whole;
        for (int change = 0; change < 3; ++change) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        if (!read(bytes)) ++refused;
    }
    EXPECT_GT(refused, 200);
    EXPECT_LT(refused, 2000);
}

TEST_F(MeshFile, RejectsWritingIntoAMissingFolder) {
    EXPECT_FALSE(writeMesh(m_folder / "none/mesh.vek", triangleAndQuad(), m_error));
    EXPECT_TRUE(failureSays("cannot be written")) << m_error;
}

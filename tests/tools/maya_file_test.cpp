#include "tools/vek/maya_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/mesh_fixture.h"
#include "tools/vek/mesh_compare.h"
#include "tools/vek/mesh_surface.h"

namespace {

bool same(const Mesh& expected, const Mesh& back) {
    const MeshDifference d = compareMeshes(expected, back);
    return d.maxDistance == 0 && d.verticesMissing + d.verticesAdded + d.facesMissing +
                                         d.facesAdded + d.facesWoundWrong + d.facesDifferent +
                                         d.cornersLost + d.uvsLost ==
                                     0;
}

}  // namespace

TEST(MayaFile, BringsAMeshBackWithAUVForEachCorner) {
    const TempFolder folder;
    Mesh mesh = makeSurface(2000);
    Mesh back;
    std::string error;
    ASSERT_TRUE(writeMayaScene(folder / "a.ma", mesh, error)) << error;
    ASSERT_TRUE(readMayaScene(folder / "a.ma", back, error)) << error;
    EXPECT_FALSE(same(mesh, back)) << "its UVs were shared";
    giveOwnUVs(mesh);
    EXPECT_TRUE(same(mesh, back));
    rewindFaces(mesh);
    EXPECT_FALSE(same(mesh, back));
}

TEST(MayaFile, RejectsWhatItCannotReadOrWrite) {
    const TempFolder folder;
    Mesh mesh;
    std::string error;
    EXPECT_FALSE(readMayaScene(folder / "missing.ma", mesh, error));
    EXPECT_NE(error.find("no faces"), std::string::npos);
    EXPECT_FALSE(writeMayaScene(folder / "missing/a.ma", mesh, error));
    for (const char* face : {"g 3 0 0 0", "f 5 0 0 0 0 0", "f 3 0 0 1", "f 3 0 0 -2",
                             "f 3 0 0 0 mu 0 3 0 0 1", "f 3 0 0 0 mu 1 3 0 0 0", "f 3"}) {
        writeFile(folder / "a.ma",
                  std::string("\".uvst[0].uvsp[0:0]\" 0 0; \".vt[0:0]\" 1 2 3; \".ed[0:0]\" 0 0 0; "
                              "\".fc[0:0]\" -type \"polyFaces\" ") +
                      face + ";");
        EXPECT_FALSE(readMayaScene(folder / "a.ma", mesh, error)) << face;
    }
}

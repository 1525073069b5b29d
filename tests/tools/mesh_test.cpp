#include "tools/vek/mesh.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/tools/mesh_fixture.h"
#include "tools/vek/mesh_compare.h"
#include "tools/vek/mesh_surface.h"

namespace {

// How far the vertices on one side of the middle of the box lie otherwise than on the other side,
// as a share of the box: 0 for a shape that a mirroring in this axis maps to itself.
double lopsidedness(const Mesh& mesh, std::size_t axis) {
    std::vector<double> places;
    for (const MeshPoint& point : mesh.positions) places.push_back(point[axis]);
    std::sort(places.begin(), places.end());
    const MeshBounds bounds = boundsOf(mesh);
    double largest = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double middle = (places[i] + places[places.size() - 1 - i]) / 2;
        largest = std::max(largest, std::abs(middle - bounds.centre(axis)));
    }
    return largest / bounds.size(axis);
}

}  // namespace

TEST(MeshSurface, HasAboutTheFacesAskedFor) {
    for (const std::size_t faces : {std::size_t{1000}, std::size_t{100'000}}) {
        const auto made = static_cast<double>(makeSurface(faces).faces.size());
        EXPECT_NEAR(made / static_cast<double>(faces), 1.0, 0.05) << faces;
    }
}

TEST(MeshSurface, KeepsWithinItsRange) {
    EXPECT_NEAR(static_cast<double>(makeSurface(0).faces.size()), double{kFewestSurfaceFaces}, 50);
}

TEST(MeshSurface, MixesQuadsAndTriangles) {
    const MeshCounts counts = countFaces(makeSurface(1000));
    EXPECT_GT(counts.quads, 300u);
    EXPECT_GT(counts.triangles, 300u);
    EXPECT_EQ(counts.corners, counts.quads * 4 + counts.triangles * 3);
}

TEST(MeshSurface, IsClosedAndItsNeighboursAgree) {
    const MeshEdges edges = edgesOf(makeSurface(1000));
    EXPECT_EQ(edges.open, 0u);
    EXPECT_EQ(edges.disagreeing, 0u);
    EXPECT_EQ(edges.crowded, 0u);
}

TEST(MeshSurface, IsWoundOutwards) {
    EXPECT_GT(signedVolumeOf(makeSurface(1000)), 0.1);
}

TEST(MeshSurface, IsTallerThanWide) {
    const MeshBounds bounds = boundsOf(makeSurface(1000));
    EXPECT_GT(bounds.size(1), 1.3 * bounds.size(0));
    EXPECT_GT(bounds.size(1), 1.3 * bounds.size(2));
}

TEST(MeshSurface, IsSymmetricInNoAxis) {
    const Mesh mesh = makeSurface(10'000);
    for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_GT(lopsidedness(mesh, axis), 0.04) << axis;
    EXPECT_EQ(lopsidedness(unitCube(), 0), 0.0);
}

TEST(MeshSurface, GivesEveryCornerAUVInsideTheMap) {
    const Mesh mesh = makeSurface(1000);
    ASSERT_EQ(mesh.corners.size(), mesh.faces.size());
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        for (std::size_t corner = 0; corner < cornerCount(mesh.faces[i]); ++corner) {
            const auto index = static_cast<std::size_t>(mesh.corners[i][corner]);
            ASSERT_LT(index, mesh.uvs.size());
        }
    }
    for (const MeshUV& uv : mesh.uvs) {
        EXPECT_GE(uv[0], 0.0f);
        EXPECT_GE(uv[1], 0.0f);
        EXPECT_LE(uv[1], 1.0f);
    }
}

TEST(MeshSurface, HasASeam) {
    const Mesh mesh = makeSurface(1000);
    EXPECT_GT(mesh.uvs.size(), mesh.positions.size());
}

TEST(MeshVolume, IsOneForTheUnitCube) {
    EXPECT_DOUBLE_EQ(signedVolumeOf(unitCube()), 1.0);
}

TEST(MeshVolume, IsNegativeWhenTheFacesAreRewound) {
    Mesh cube = unitCube();
    rewindFaces(cube);
    EXPECT_DOUBLE_EQ(signedVolumeOf(cube), -1.0);
}

TEST(MeshVolume, IsExactFarFromTheOrigin) {
    Mesh cube = unitCube();
    for (MeshPoint& point : cube.positions) point[1] += 1'000'000;
    EXPECT_DOUBLE_EQ(signedVolumeOf(cube), 1.0);
}

TEST(MeshBounds, AreZeroWithoutPositions) {
    const MeshBounds bounds = boundsOf(Mesh());
    EXPECT_EQ(bounds.size(0), 0.0);
    EXPECT_EQ(bounds.centre(1), 0.0);
}

TEST(MeshEdges, CountOpenOnes) {
    Mesh cube = unitCube();
    cube.faces.pop_back();
    cube.corners.pop_back();
    EXPECT_EQ(edgesOf(cube).open, 4u);
}

TEST(MeshEdges, CountTheOnesWhereNeighboursDisagree) {
    Mesh cube = unitCube();
    std::swap(cube.faces[0][1], cube.faces[0][3]);
    const MeshEdges edges = edgesOf(cube);
    EXPECT_EQ(edges.disagreeing, 4u);
    EXPECT_EQ(edges.open, 0u);
}

TEST(MeshEdges, CountTheOnesOfMoreThanTwoFaces) {
    Mesh cube = unitCube();
    cube.faces.push_back(cube.faces[0]);
    cube.corners.push_back(cube.corners[0]);
    EXPECT_EQ(edgesOf(cube).crowded, 4u);
}

TEST(MeshRewind, KeepsTheFirstCornerAndTakesTheValuesAlong) {
    Mesh mesh = triangleAndQuad();
    rewindFaces(mesh);
    EXPECT_EQ(mesh.faces[0], (MeshCorners{0, 2, 1, -1}));
    EXPECT_EQ(mesh.corners[0], (MeshCorners{10, 12, 11, -1}));
    EXPECT_EQ(mesh.faces[1], (MeshCorners{0, 3, 4, 2}));
    EXPECT_EQ(mesh.corners[1], (MeshCorners{20, 23, 22, 21}));
}

TEST(MeshTwist, TurnsTheTopByTheWholeAngleAndTheBottomNotAtAll) {
    Mesh cube = unitCube();
    twistAboutY(cube, 90);
    // The bottom corner 1, 0, 0 stays; of the top corners, 1, 1, 1 goes to where 1, 1, 0 was.
    EXPECT_EQ(cube.positions[1], (MeshPoint{1, 0, 0}));
    EXPECT_NEAR(cube.positions[7][0], 1.0, 1e-6);
    EXPECT_NEAR(cube.positions[7][1], 1.0, 1e-6);
    EXPECT_NEAR(cube.positions[7][2], 0.0, 1e-6);
}

TEST(MeshTwist, LeavesAFlatMeshAlone) {
    Mesh mesh = triangleAndQuad();
    for (MeshPoint& point : mesh.positions) point[1] = 3;
    const Mesh before = mesh;
    twistAboutY(mesh, 90);
    EXPECT_EQ(mesh.positions, before.positions);
}

TEST(MeshCompare, FindsNothingInTheSameMesh) {
    const Mesh mesh = makeSurface(1000);
    const MeshDifference difference = compareMeshes(mesh, mesh);
    EXPECT_EQ(difference.maxDistance, 0.0);
    EXPECT_EQ(difference.meanDistance, 0.0);
    EXPECT_EQ(difference.facesWoundWrong, 0u);
    EXPECT_EQ(difference.facesDifferent, 0u);
    EXPECT_EQ(difference.cornersLost, 0u);
    EXPECT_EQ(difference.uvsLost, 0u);
}

TEST(MeshCompare, MeasuresTheLargestAndTheMeanDistance) {
    const Mesh cube = unitCube();
    Mesh back = cube;
    back.positions[3][0] += 3;
    back.positions[3][2] += 4;
    back.positions[5][1] += 1;
    const MeshDifference difference = compareMeshes(cube, back);
    EXPECT_DOUBLE_EQ(difference.maxDistance, 5.0);
    EXPECT_DOUBLE_EQ(difference.meanDistance, 6.0 / 8);
}

TEST(MeshCompare, TakesAPositionThatIsNotANumberForInfinitelyFar) {
    const Mesh cube = unitCube();
    Mesh back = cube;
    back.positions[0][0] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isinf(compareMeshes(cube, back).maxDistance));
}

TEST(MeshCompare, AcceptsAFaceThatStartsAtAnotherCorner) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.faces[1] = {3, 0, 2, 4};
    back.corners[1] = {23, 20, 21, 22};
    const MeshDifference difference = compareMeshes(mesh, back);
    EXPECT_EQ(difference.facesWoundWrong, 0u);
    EXPECT_EQ(difference.facesDifferent, 0u);
    EXPECT_EQ(difference.cornersLost, 0u);
}

TEST(MeshCompare, CountsFacesThatAreWoundWrong) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    rewindFaces(back);
    const MeshDifference difference = compareMeshes(mesh, back);
    EXPECT_EQ(difference.facesWoundWrong, 2u);
    EXPECT_EQ(difference.facesDifferent, 0u);
    EXPECT_EQ(difference.cornersLost, 0u);
}

TEST(MeshCompare, CountsCornersWhoseValuesDidNotMoveAlong) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    rewindFaces(back);
    back.corners = mesh.corners;
    EXPECT_EQ(compareMeshes(mesh, back).cornersLost, 4u);
}

TEST(MeshCompare, CountsEachCornerWithAnotherValue) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.corners[1][3] = 99;
    EXPECT_EQ(compareMeshes(mesh, back).cornersLost, 1u);
}

TEST(MeshCompare, IgnoresTheValueBeyondATriangle) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.corners[0][3] = 99;
    EXPECT_EQ(compareMeshes(mesh, back).cornersLost, 0u);
}

TEST(MeshCompare, CallsAFaceOfOtherVerticesDifferentAndItsCornersLost) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.faces[1] = {0, 4, 2, 3};  // the same vertices, neither in order nor in reverse
    const MeshDifference difference = compareMeshes(mesh, back);
    EXPECT_EQ(difference.facesDifferent, 1u);
    EXPECT_EQ(difference.facesWoundWrong, 0u);
    EXPECT_EQ(difference.cornersLost, 4u);
}

TEST(MeshCompare, CallsATriangleInPlaceOfAQuadDifferent) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.faces[1][3] = kNoCorner;
    EXPECT_EQ(compareMeshes(mesh, back).facesDifferent, 1u);
}

TEST(MeshCompare, CountsWhatIsMissing) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.positions.pop_back();
    back.faces.pop_back();
    back.corners.pop_back();
    const MeshDifference difference = compareMeshes(mesh, back);
    EXPECT_EQ(difference.verticesMissing, 1u);
    EXPECT_EQ(difference.facesMissing, 1u);
    EXPECT_EQ(difference.cornersLost, 4u);
    EXPECT_EQ(difference.verticesAdded + difference.facesAdded, 0u);
}

TEST(MeshCompare, CountsWhatWasAdded) {
    const Mesh mesh = triangleAndQuad();
    Mesh back = mesh;
    back.positions.push_back({0, 0, 0});
    back.faces.push_back(mesh.faces[0]);
    back.corners.push_back(mesh.corners[0]);
    const MeshDifference difference = compareMeshes(mesh, back);
    EXPECT_EQ(difference.verticesAdded, 1u);
    EXPECT_EQ(difference.facesAdded, 1u);
    EXPECT_EQ(difference.cornersLost, 0u);
}

TEST(MeshCompare, CountsUVsThatAreMissingOrOther) {
    const Mesh mesh = makeSurface(1000);
    Mesh back = mesh;
    back.uvs[0][0] += 1;
    back.uvs.pop_back();
    EXPECT_EQ(compareMeshes(mesh, back).uvsLost, 2u);
}

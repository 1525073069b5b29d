#include "formats/edge_smoothness.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

struct Mesh {
    // Adds a face over these vertices, with edges of its own or those that are there.
    void addFace(const std::vector<int>& corners) {
        const std::size_t slot = quads.edges.size();
        quads.edges.resize(slot + 4, MayaQuads::kNoEdge);
        cornerVertices.resize(slot + 4, -1);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const int from = corners[i], to = corners[(i + 1) % corners.size()];
            quads.edges[slot + i] = edgeBetween(from, to);
            cornerVertices[slot + i] = from;
        }
    }

    int edgeBetween(int from, int to) {
        const auto known = names.find({to, from});
        if (known != names.end()) return ~known->second;
        const auto same = names.find({from, to});
        if (same != names.end()) return same->second;
        const int name = static_cast<int>(names.size());
        names[{from, to}] = name;
        return name;
    }

    std::vector<unsigned char> smooth(double threshold) const {
        return findSmoothEdges(quads, names.size(), cornerVertices, vertices, threshold);
    }
    bool isSmooth(int from, int to, double threshold) const {
        return smooth(threshold)[static_cast<std::size_t>(names.at({from, to}))] != 0;
    }

    MayaQuads quads;
    BXArray<int> cornerVertices;
    std::vector<float> vertices;
    std::map<std::pair<int, int>, int> names;
};

// Two triangles that meet in the edge from vertex 0 to vertex 1, their normals so far apart.
Mesh folded(double degrees) {
    Mesh mesh;
    mesh.vertices = {0,    0,
                     0,    0,
                     1,    0,
                     -1,   0.5f,
                     0,    static_cast<float>(std::cos(degrees * kDegree)),
                     0.5f, static_cast<float>(-std::sin(degrees * kDegree))};
    mesh.addFace({0, 1, 2});
    mesh.addFace({1, 0, 3});
    return mesh;
}

double at(float degrees) {
    return smoothThreshold(degrees);
}

}  // namespace

TEST(SmoothThreshold, IsTheCosineOfTheAngle) {
    EXPECT_DOUBLE_EQ(at(30.0f), std::cos(30 * 0.017453292));
    EXPECT_DOUBLE_EQ(at(0.0f), 1.0);
    EXPECT_DOUBLE_EQ(at(179.0f), std::cos(179 * 0.017453292));
}

TEST(SmoothThreshold, BringsTheAngleIntoItsRange) {
    EXPECT_DOUBLE_EQ(at(-30.0f), at(30.0f));
    EXPECT_DOUBLE_EQ(at(200.0f), at(160.0f));
    EXPECT_DOUBLE_EQ(at(180.0f), std::cos(180 * 0.017453292));
    EXPECT_DOUBLE_EQ(at(360.0f), at(0.0f));
    EXPECT_DOUBLE_EQ(at(390.0f), at(30.0f));
    EXPECT_DOUBLE_EQ(at(-3630.0f), at(30.0f));
    EXPECT_TRUE(std::isfinite(at(std::numeric_limits<float>::max())));
}

TEST(SmoothThreshold, IsThatOf30DegreesWhereTheAngleIsNotFinite) {
    EXPECT_DOUBLE_EQ(at(std::numeric_limits<float>::infinity()), at(30.0f));
    EXPECT_DOUBLE_EQ(at(-std::numeric_limits<float>::infinity()), at(30.0f));
    EXPECT_DOUBLE_EQ(at(std::numeric_limits<float>::quiet_NaN()), at(30.0f));
}

TEST(SmoothEdges, LieBetweenFacesLessThanTheAngleApart) {
    EXPECT_FALSE(folded(45).isSmooth(0, 1, at(30.0f)));
    EXPECT_TRUE(folded(20).isSmooth(0, 1, at(30.0f)));
    for (int degrees = 1; degrees < 179; ++degrees) {
        const Mesh mesh = folded(degrees);
        EXPECT_TRUE(mesh.isSmooth(0, 1, at(static_cast<float>(degrees) + 0.01f))) << degrees;
        EXPECT_FALSE(mesh.isSmooth(0, 1, at(static_cast<float>(degrees) - 0.01f))) << degrees;
    }
}

TEST(SmoothEdges, AreNotThoseOfOneFace) {
    const Mesh mesh = folded(0);
    EXPECT_FALSE(mesh.isSmooth(1, 2, at(170.0f)));
    EXPECT_FALSE(mesh.isSmooth(2, 0, at(170.0f)));
}

TEST(SmoothEdges, AreNotThoseOfThreeFaces) {
    Mesh mesh = folded(0);
    mesh.vertices.insert(mesh.vertices.end(), {0, 0.5f, 1});
    EXPECT_TRUE(mesh.isSmooth(0, 1, at(100.0f)));
    mesh.addFace({0, 1, 4});
    EXPECT_FALSE(mesh.isSmooth(0, 1, at(100.0f)));
    mesh.addFace({1, 0, 4});
    EXPECT_FALSE(mesh.isSmooth(0, 1, at(100.0f)));
}

TEST(SmoothEdges, CountAFaceWithoutAnAreaAsOneWithoutANormal) {
    Mesh mesh;
    mesh.vertices = {0, 0, 0, 0, 1, 0, -1, 0.5f, 0, 0, 2, 0};
    mesh.addFace({0, 1, 2});
    mesh.addFace({1, 0, 3});  // its corners are on a line
    EXPECT_FALSE(mesh.isSmooth(0, 1, at(89.0f)));
    // The product of the normals is 0, which is above the cosine of a wider angle.
    EXPECT_TRUE(mesh.isSmooth(0, 1, at(91.0f)));
}

TEST(SmoothEdges, LieBetweenFacesExactlyTheAngleApart) {
    EXPECT_TRUE(folded(0).isSmooth(0, 1, 1.0)) << "the cosine of no angle at all";
}

// Required(R65)
TEST(SmoothEdges, AreHardAroundFacesThatAreTinyBesideTheMesh) {
    const auto innerEdgeIsSmooth = [](float cells, float size) {
        Mesh mesh;
        const float cell = size / cells;
        mesh.vertices = {0, 0, 0, cell, 0, 0, 0, cell, 0, cell, cell, 0, size, size, 0};
        mesh.addFace({0, 1, 2});
        mesh.addFace({2, 1, 3});
        return mesh.isSmooth(1, 2, at(30.0f));
    };
    EXPECT_TRUE(innerEdgeIsSmooth(600, 1));
    EXPECT_FALSE(innerEdgeIsSmooth(1000, 1));
    EXPECT_TRUE(innerEdgeIsSmooth(1000, 10));
    EXPECT_FALSE(innerEdgeIsSmooth(10, 1e-5f));
    EXPECT_TRUE(innerEdgeIsSmooth(10, 1e5f));
    EXPECT_FALSE(innerEdgeIsSmooth(10, 1e7f)) << "the sum of its unit normals is below the bound";
}

TEST(SmoothEdges, AreNotThoseOfAFaceWithAVertexWithoutCoordinates) {
    Mesh first;  // as folded(0), with the face that has none in front
    first.vertices = {0, 0, 0, 0, 1, 0, -1, 0.5f, 0};
    first.addFace({1, 0, 3});
    first.addFace({0, 1, 2});
    EXPECT_EQ(first.smooth(at(170.0f)), std::vector<unsigned char>(5, 0));
    Mesh mesh = folded(0);
    mesh.vertices.resize(9);  // the last one has none
    EXPECT_FALSE(mesh.isSmooth(0, 1, at(170.0f)));
    mesh.vertices.clear();
    EXPECT_EQ(mesh.smooth(at(170.0f)), std::vector<unsigned char>(5, 0));
}

namespace {

using Vector = std::array<double, 3>;

Vector minus(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
Vector crossed(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double product(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// The rule word by word, from the faces' corners and not from their edges.
class Reference {
public:
    Reference(const Mesh& mesh, std::vector<std::vector<int>> faces)
        : m_mesh(mesh), m_faces(std::move(faces)) {
        Vector least = position(0), most = least;
        for (std::size_t v = 0; v < mesh.vertices.size() / 3; ++v) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                least[axis] = std::min(least[axis], position(v)[axis]);
                most[axis] = std::max(most[axis], position(v)[axis]);
            }
        }
        const double millionth = std::sqrt(product(minus(most, least), minus(most, least))) / 1e6;
        m_epsilon = millionth * millionth;
    }

    // 1, 0, or -1 where it lies so near the threshold that either will do.
    int smooth(int from, int to, double threshold) const {
        std::vector<Vector> normals;
        for (const auto& face : m_faces) {
            for (std::size_t i = 0; i < face.size(); ++i) {
                const int a = face[i], b = face[(i + 1) % face.size()];
                if ((a == from && b == to) || (a == to && b == from))
                    normals.push_back(normal(face));
            }
        }
        if (normals.size() != 2) return 0;
        const double cosine = product(normals[0], normals[1]);
        if (std::fabs(cosine - threshold) < 1e-5) return -1;
        return threshold > cosine ? 0 : 1;
    }

private:
    Vector position(std::size_t vertex) const {
        return {double{m_mesh.vertices[3 * vertex]}, double{m_mesh.vertices[3 * vertex + 1]},
                double{m_mesh.vertices[3 * vertex + 2]}};
    }
    Vector corner(const std::vector<int>& face, std::size_t i) const {
        return position(static_cast<std::size_t>(face[i % face.size()]));
    }

    Vector normal(const std::vector<int>& face) const {
        Vector sum = {0, 0, 0};
        for (std::size_t i = 0; i < face.size(); ++i) {
            const Vector p = corner(face, i);
            const Vector c =
                crossed(minus(p, corner(face, i + face.size() - 1)), minus(corner(face, i + 1), p));
            const double squared = product(c, c);
            if (squared <= m_epsilon) continue;
            for (std::size_t axis = 0; axis < 3; ++axis) sum[axis] += c[axis] / std::sqrt(squared);
        }
        const double squared = product(sum, sum);
        if (squared <= m_epsilon) return {0, 0, 0};
        for (double& part : sum) part /= std::sqrt(squared);
        return sum;
    }

    const Mesh& m_mesh;
    std::vector<std::vector<int>> m_faces;
    double m_epsilon;
};

}  // namespace

TEST(SmoothEdges, AreThoseOfAnIndependentComputationOnRandomMeshes) {
    std::mt19937 random(8);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    int smooth = 0, hard = 0;
    for (int round = 0; round < 3000; ++round) {
        Mesh mesh;
        std::vector<std::vector<int>> faces;
        const int vertices = 4 + below(8);
        // On a small lattice: many faces are flat, share places, or have no area.
        for (int i = 0; i < 3 * vertices; ++i) {
            mesh.vertices.push_back(static_cast<float>(below(round % 2 ? 3 : 100)));
        }
        for (int f = 1 + below(12); f > 0; --f) {
            std::set<int> corners;
            while (corners.size() < 3u + static_cast<unsigned>(f % 2))
                corners.insert(below(vertices));
            std::vector<int> face(corners.begin(), corners.end());
            std::shuffle(face.begin(), face.end(), random);
            faces.push_back(face);
            mesh.addFace(face);
        }
        const double threshold = smoothThreshold(static_cast<float>(below(180)) + 0.5f);
        const std::vector<unsigned char> found = mesh.smooth(threshold);
        const Reference reference(mesh, faces);
        for (const auto& [ends, edge] : mesh.names) {
            const int expected = reference.smooth(ends.first, ends.second, threshold);
            if (expected < 0) continue;
            ASSERT_EQ(found[static_cast<std::size_t>(edge)], expected) << round;
            ++(expected ? smooth : hard);
        }
    }
    EXPECT_GT(smooth, 1000);
    EXPECT_GT(hard, 1000);
}

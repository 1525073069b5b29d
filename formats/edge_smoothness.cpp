#include "formats/edge_smoothness.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kDefaultDegrees = 30.0f;
constexpr double kRadiansOfADegree = 0.017453292;

// What is known of an edge: the first slot that has it, or one of these.
constexpr int kNotMet = -1;
constexpr int kHard = -2;
constexpr int kSmooth = -3;

// So far ahead points are fetched, which lie scattered in many meshes.
constexpr std::size_t kSlotsAhead = 64;

struct Direction {
    double x = 0.0, y = 0.0, z = 0.0;
};

double dot(const BXVector3f& a, const BXVector3f& b) {
    return double{a.x} * double{b.x} + double{a.y} * double{b.y} + double{a.z} * double{b.z};
}

Direction between(const float* from, const float* to) {
    return {double{to[0]} - double{from[0]}, double{to[1]} - double{from[1]},
            double{to[2]} - double{from[2]}};
}

Direction cross(const Direction& a, const Direction& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double squaredLength(const Direction& d) {
    return d.x * d.x + d.y * d.y + d.z * d.z;
}

// The square of a millionth of the diagonal of the box around all vertices.
double epsilonOf(const std::vector<float>& vertices) {
    if (vertices.empty()) return 0.0;
    float least[3] = {vertices[0], vertices[1], vertices[2]};
    float most[3] = {vertices[0], vertices[1], vertices[2]};
    for (std::size_t i = 0; i + 2 < vertices.size(); i += 3) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], vertices[i + axis]);
            most[axis] = std::max(most[axis], vertices[i + axis]);
        }
    }
    return squaredLength(between(least, most)) / 1e12;
}

class FaceNormals {
public:
    FaceNormals(const BXArray<int>& cornerVertices, const std::vector<float>& vertices)
        : m_corners(cornerVertices),
          m_vertices(vertices),
          m_vertexCount(vertices.size() / 3),
          m_epsilon(epsilonOf(vertices)) {}

    // Of the face whose first slot is `slot`; false where a vertex of it has no coordinates. Zero
    // for a face without an area.
    bool find(std::size_t slot, int corners, BXVector3f& normal) const {
        const float* points[4];
        for (int i = 0; i < corners; ++i) {
            points[i] = pointAt(slot + static_cast<std::size_t>(i));
            if (!points[i]) return false;
        }
        normal = normalOf(points, corners);
        return true;
    }

    // Has the points of the face fetched that begins at `slot`, if there is one. Inline by force: a
    // call that does nothing but fetch counts as one without effect, and GCC drops it.
    __attribute__((always_inline)) void prefetch(std::size_t slot) const {
        if (slot >= m_corners.size()) return;
        for (std::size_t i = slot; i < slot + 4; ++i) {
            const auto vertex = static_cast<std::size_t>(m_corners[i]);
            if (vertex < m_vertexCount) __builtin_prefetch(&m_vertices[3 * vertex]);
        }
    }

private:
    const float* pointAt(std::size_t slot) const {
        const auto vertex = static_cast<std::size_t>(m_corners[slot]);
        return vertex < m_vertexCount ? &m_vertices[3 * vertex] : nullptr;
    }

    BXVector3f normalOf(const float* const* points, int corners) const {
        Direction sum;
        Direction before = between(points[corners - 1], points[0]);
        for (int i = 0; i < corners; ++i) {
            const Direction after = between(points[i], points[i + 1 < corners ? i + 1 : 0]);
            addUnit(sum, cross(before, after));
            before = after;
        }
        Direction unit;
        addUnit(unit, sum);
        return BXVector3f(static_cast<float>(unit.x), static_cast<float>(unit.y),
                          static_cast<float>(unit.z));
    }

    void addUnit(Direction& sum, const Direction& d) const {
        const double squared = squaredLength(d);
        // Required(R65): an area and a bare direction are held against the same length, so faces
        // have no normal that are tiny beside the mesh, or in a mesh that is tiny or huge.
        if (!(squared > m_epsilon)) return;
        const double scale = 1.0 / std::sqrt(squared);
        sum.x += d.x * scale;
        sum.y += d.y * scale;
        sum.z += d.z * scale;
    }

    const BXArray<int>& m_corners;
    const std::vector<float>& m_vertices;
    std::size_t m_vertexCount;
    double m_epsilon;
};

}  // namespace

double smoothThreshold(float degrees) {
    if (!std::isfinite(degrees)) degrees = kDefaultDegrees;
    double angle = std::fmod(static_cast<double>(degrees), 360.0);
    if (angle < 0.0) angle += 360.0;
    if (angle >= 180.0) angle = 360.0 - angle;
    return std::cos(angle * kRadiansOfADegree);
}

std::vector<unsigned char> findSmoothEdges(const MayaQuads& quads, std::size_t edgeCount,
                                           const BXArray<int>& cornerVertices,
                                           const std::vector<float>& vertices, double threshold) {
    std::vector<int> states(edgeCount, kNotMet);
    std::vector<BXVector3f> normals(quads.count());
    const FaceNormals faceNormals(cornerVertices, vertices);
    for (std::size_t face = 0; face < quads.count(); ++face) {
        const std::size_t slot = 4 * face;
        const int corners = quads.edges[slot + 3] == MayaQuads::kNoEdge ? 3 : 4;
        faceNormals.prefetch(slot + kSlotsAhead);
        const bool known = faceNormals.find(slot, corners, normals[face]);
        for (int i = 0; i < corners; ++i) {
            const std::size_t corner = slot + static_cast<std::size_t>(i);
            const int reference = quads.edges[corner];
            int& state = states[static_cast<std::size_t>(reference < 0 ? ~reference : reference)];
            if (known && state == kNotMet) {
                state = static_cast<int>(corner);
            } else if (known && state >= 0) {
                const auto other = static_cast<std::size_t>(state / 4);
                state = threshold > dot(normals[other], normals[face]) ? kHard : kSmooth;
            } else {
                state = kHard;
            }
        }
    }
    std::vector<unsigned char> smooth(edgeCount);
    for (std::size_t edge = 0; edge < edgeCount; ++edge) smooth[edge] = states[edge] == kSmooth;
    return smooth;
}

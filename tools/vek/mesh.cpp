#include "tools/vek/mesh.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace {

using Vector = std::array<double, 3>;

Vector from(const Vector& origin, const MeshPoint& point) {
    return {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
}

double determinant(const Vector& a, const Vector& b, const Vector& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

// An undirected edge, and which way a face runs along it.
struct EdgeUse {
    std::uint64_t edge;
    bool forward;

    bool operator<(const EdgeUse& other) const { return edge < other.edge; }
};

EdgeUse edgeUse(std::int32_t from, std::int32_t to) {
    const bool forward = from < to;
    const auto low = static_cast<std::uint32_t>(forward ? from : to);
    const auto high = static_cast<std::uint32_t>(forward ? to : from);
    return {(std::uint64_t{low} << 32) | high, forward};
}

std::vector<EdgeUse> sortedEdgeUses(const Mesh& mesh) {
    std::vector<EdgeUse> uses;
    uses.reserve(mesh.faces.size() * 4);
    for (const MeshCorners& face : mesh.faces) {
        const std::size_t count = cornerCount(face);
        for (std::size_t i = 0; i < count; ++i) {
            uses.push_back(edgeUse(face[i], face[(i + 1) % count]));
        }
    }
    std::sort(uses.begin(), uses.end());
    return uses;
}

}  // namespace

MeshCounts countFaces(const Mesh& mesh) {
    MeshCounts counts;
    for (const MeshCorners& face : mesh.faces) {
        ++(isTriangle(face) ? counts.triangles : counts.quads);
        counts.corners += cornerCount(face);
    }
    return counts;
}

MeshBounds boundsOf(const Mesh& mesh) {
    MeshBounds bounds;
    if (mesh.positions.empty()) return bounds;
    const MeshPoint& first = mesh.positions.front();
    bounds.min = bounds.max = {first[0], first[1], first[2]};
    for (const MeshPoint& point : mesh.positions) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            bounds.min[axis] = std::min<double>(bounds.min[axis], point[axis]);
            bounds.max[axis] = std::max<double>(bounds.max[axis], point[axis]);
        }
    }
    return bounds;
}

double signedVolumeOf(const Mesh& mesh) {
    const MeshBounds bounds = boundsOf(mesh);
    // Seen from the middle of the mesh, the terms stay small: nothing is lost far from the origin.
    const Vector origin = {bounds.centre(0), bounds.centre(1), bounds.centre(2)};
    double sixfold = 0;
    for (const MeshCorners& face : mesh.faces) {
        const auto corner = [&](std::size_t i) {
            return from(origin, mesh.positions[static_cast<std::size_t>(face[i])]);
        };
        sixfold += determinant(corner(0), corner(1), corner(2));
        if (!isTriangle(face)) sixfold += determinant(corner(0), corner(2), corner(3));
    }
    return sixfold / 6;
}

void twistAboutY(Mesh& mesh, double degrees) {
    const MeshBounds bounds = boundsOf(mesh);
    if (!(bounds.size(1) > 0)) return;
    const double radiansPerUnit = degrees * std::acos(-1.0) / 180 / bounds.size(1);
    for (MeshPoint& point : mesh.positions) {
        const double angle = (point[1] - bounds.min[1]) * radiansPerUnit;
        const double x = point[0] - bounds.centre(0);
        const double z = point[2] - bounds.centre(2);
        point[0] = static_cast<float>(bounds.centre(0) + std::cos(angle) * x + std::sin(angle) * z);
        point[2] = static_cast<float>(bounds.centre(2) - std::sin(angle) * x + std::cos(angle) * z);
    }
}

void rewindFaces(Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        const std::size_t last = cornerCount(mesh.faces[i]) - 1;
        std::swap(mesh.faces[i][1], mesh.faces[i][last]);
        std::swap(mesh.corners[i][1], mesh.corners[i][last]);
    }
}

float floatOf(std::string_view text) {
    float value = 0.0f;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

void giveOwnUVs(Mesh& mesh) {
    const auto rounded = [](float part) {
        // As it is printed and read again.
        return floatOf(fmt::format("{:.5f}", part));
    };
    std::vector<MeshUV> uvs;
    for (std::size_t f = 0; f < mesh.faces.size(); ++f) {
        for (std::size_t i = 0; i < cornerCount(mesh.faces[f]); ++i) {
            std::int32_t& corner = mesh.corners[f][i];
            const MeshUV uv = corner < 0 ? MeshUV{} : mesh.uvs[static_cast<std::size_t>(corner)];
            corner = static_cast<std::int32_t>(uvs.size());
            uvs.push_back({rounded(uv[0]), rounded(uv[1])});
        }
    }
    mesh.uvs.swap(uvs);
}

MeshEdges edgesOf(const Mesh& mesh) {
    const std::vector<EdgeUse> uses = sortedEdgeUses(mesh);
    MeshEdges edges;
    for (auto use = uses.begin(); use != uses.end();) {
        const auto next = std::upper_bound(use, uses.end(), *use);
        const auto count = next - use;
        if (count == 1) ++edges.open;
        if (count == 2 && use[0].forward == use[1].forward) ++edges.disagreeing;
        if (count > 2) ++edges.crowded;
        use = next;
    }
    return edges;
}

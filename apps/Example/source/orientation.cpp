#include "orientation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

using Vector = std::array<double, 3>;

double determinant(const Vector& a, const Vector& b, const Vector& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

void measureVolume(const GivenMesh& mesh, Orientation& result) {
    double sum = 0;
    double sizes = 0;
    for (const Face& face : mesh.faces) {
        const auto corner = [&](std::size_t i) {
            const Point& point = mesh.positions[static_cast<std::size_t>(face.vertices[i])];
            return Vector{point[0] - result.box.centre(0), point[1] - result.box.centre(1),
                          point[2] - result.box.centre(2)};
        };
        for (std::size_t i = 2; i < face.corners; ++i) {
            const double part = determinant(corner(0), corner(i - 1), corner(i)) / 6;
            sum += part;
            sizes += std::abs(part);
        }
    }
    result.signedVolume = sum;
    result.volumeDoubt = sizes * 1e-9;
}

// (lower vertex, higher vertex), and +1 or -1 for the direction of the use.
using EdgeUse = std::pair<std::pair<std::int32_t, std::int32_t>, int>;

std::vector<EdgeUse> edgeUses(const GivenMesh& mesh) {
    std::vector<EdgeUse> uses;
    uses.reserve(mesh.faces.size() * 4);
    for (const Face& face : mesh.faces) {
        for (std::size_t i = 0; i < face.corners; ++i) {
            const std::int32_t from = face.vertices[i];
            const std::int32_t to = face.vertices[(i + 1) % face.corners];
            uses.push_back({std::minmax(from, to), from < to ? 1 : -1});
        }
    }
    std::sort(uses.begin(), uses.end());
    return uses;
}

void measureEdges(const GivenMesh& mesh, Orientation& result) {
    const std::vector<EdgeUse> uses = edgeUses(mesh);
    result.closed = !uses.empty();
    for (std::size_t first = 0, next = 0; first < uses.size(); first = next) {
        int balance = 0;
        while (next < uses.size() && uses[next].first == uses[first].first) {
            balance += uses[next++].second;
        }
        const std::size_t count = next - first;
        if (count == 1) ++result.openEdges;
        if (count == 2 && balance != 0) ++result.disagreeingEdges;
        if (count > 2) ++result.crowdedEdges;
        if (balance != 0) result.closed = false;
    }
}

}  // namespace

Box boxOf(const std::vector<Point>& positions) {
    Box box;
    if (positions.empty()) return box;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto along = [axis](const Point& a, const Point& b) { return a[axis] < b[axis]; };
        const auto ends = std::minmax_element(positions.begin(), positions.end(), along);
        box.min[axis] = (*ends.first)[axis];
        box.max[axis] = (*ends.second)[axis];
    }
    return box;
}

Orientation measure(const GivenMesh& mesh) {
    Orientation result;
    result.box = boxOf(mesh.positions);
    measureVolume(mesh, result);
    measureEdges(mesh, result);
    return result;
}

std::string findFault(const Orientation& orientation, std::size_t knownFlaws) {
    if (orientation.disagreeingEdges > knownFlaws) {
        return "Neighbouring faces are wound against each other at " +
               std::to_string(orientation.disagreeingEdges) + " edges: a part of the faces was " +
               "rewound and a part was not.";
    }
    if (orientation.insideOut()) {
        return "The mesh is inside out: it was mirrored and its faces were not rewound, or they "
               "were rewound and it was not mirrored.";
    }
    return "";
}

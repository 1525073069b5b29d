#include "tools/vek/mesh_compare.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

enum class Match { Same, Reversed, Different };

struct FaceDifference {
    Match match = Match::Different;
    std::size_t cornersLost = 0;
};

// One face of each mesh, vertices and corner values.
struct FacePair {
    const MeshCorners& expected;
    const MeshCorners& expectedValues;
    const MeshCorners& back;
    const MeshCorners& backValues;
};

// Lays the corners of `pair.back`, from `start` on in steps of `step`, over the expected ones.
// False when the vertices are not the same; otherwise `lost` corners have other values.
bool layOver(const FacePair& pair, std::size_t start, std::size_t step, std::size_t& lost) {
    const std::size_t count = cornerCount(pair.expected);
    lost = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t other = (start + i * step) % count;
        if (pair.expected[i] != pair.back[other]) return false;
        if (pair.expectedValues[i] != pair.backValues[other]) ++lost;
    }
    return true;
}

// Where a face uses a vertex twice, more than one way fits: the one that loses least counts.
FaceDifference compareFaces(const FacePair& pair) {
    const std::size_t count = cornerCount(pair.expected);
    FaceDifference best = {Match::Different, count};
    if (cornerCount(pair.back) != count) return best;
    for (const Match match : {Match::Same, Match::Reversed}) {
        const std::size_t step = match == Match::Same ? 1 : count - 1;
        for (std::size_t start = 0; start < count; ++start) {
            std::size_t lost = 0;
            if (!layOver(pair, start, step, lost)) continue;
            if (best.match == Match::Different || lost < best.cornersLost) best = {match, lost};
        }
        if (best.match == Match::Same) return best;
    }
    return best;
}

double distanceBetween(const MeshPoint& a, const MeshPoint& b) {
    const double distance =
        std::hypot(double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]);
    return std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
}

void comparePositions(const Mesh& expected, const Mesh& back, MeshDifference& difference) {
    const std::size_t here = expected.positions.size();
    const std::size_t there = back.positions.size();
    const std::size_t both = std::min(here, there);
    difference.verticesMissing = here - both;
    difference.verticesAdded = there - both;
    double sum = 0;
    for (std::size_t i = 0; i < both; ++i) {
        const double distance = distanceBetween(expected.positions[i], back.positions[i]);
        difference.maxDistance = std::max(difference.maxDistance, distance);
        sum += distance;
    }
    if (both > 0) difference.meanDistance = sum / static_cast<double>(both);
}

void compareAllFaces(const Mesh& expected, const Mesh& back, MeshDifference& difference) {
    const std::size_t here = expected.faces.size();
    const std::size_t there = back.faces.size();
    const std::size_t both = std::min(here, there);
    difference.facesMissing = here - both;
    difference.facesAdded = there - both;
    for (std::size_t i = 0; i < both; ++i) {
        const FaceDifference face =
            compareFaces({expected.faces[i], expected.corners[i], back.faces[i], back.corners[i]});
        difference.cornersLost += face.cornersLost;
        if (face.match == Match::Reversed) ++difference.facesWoundWrong;
        if (face.match == Match::Different) ++difference.facesDifferent;
    }
    for (std::size_t i = both; i < here; ++i) {
        difference.cornersLost += cornerCount(expected.faces[i]);
    }
}

void compareUVs(const Mesh& expected, const Mesh& back, MeshDifference& difference) {
    for (std::size_t i = 0; i < expected.uvs.size(); ++i) {
        if (i >= back.uvs.size() || expected.uvs[i] != back.uvs[i]) ++difference.uvsLost;
    }
}

}  // namespace

MeshDifference compareMeshes(const Mesh& expected, const Mesh& back) {
    MeshDifference difference;
    comparePositions(expected, back, difference);
    compareAllFaces(expected, back, difference);
    compareUVs(expected, back, difference);
    return difference;
}

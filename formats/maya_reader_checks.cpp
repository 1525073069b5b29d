// What has to hold of a mesh once all of the scene is read.

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "formats/maya_reader.h"

namespace {

bool isEdge(int reference, std::size_t edges) {
    return static_cast<std::size_t>(reference < 0 ? ~reference : reference) < edges;
}

constexpr std::size_t kNone = SIZE_MAX;

// The place, among the stored values, of a face with an edge that is not there; kNone without one.
std::size_t faceWithoutEdge(const MayaQuads& quads, std::size_t edges) {
    for (std::size_t slot = 0; slot < quads.edges.size(); ++slot) {
        const int reference = quads.edges[slot];
        const bool isFree = slot % 4 == 3 && reference == MayaQuads::kNoEdge;
        if (!isFree && !isEdge(reference, edges)) return slot;
    }
    return kNone;
}

std::size_t faceWithoutUV(const MayaQuads& quads, std::size_t uvs) {
    const auto isMissing = [uvs](int index) {
        return index >= 0 && static_cast<std::size_t>(index) >= uvs;
    };
    const auto& all = quads.uvIndices;
    const auto found = std::find_if(all.begin(), all.end(), isMissing);
    return found == all.end() ? kNone : static_cast<std::size_t>(found - all.begin());
}

// The edges of a scene that the split reads are known by their count alone, if at all.
std::size_t faceWithoutEdge(const MayaMesh& mesh) {
    if (mesh.saidEdges < 0) return kNone;
    const auto edges = static_cast<std::size_t>(mesh.saidEdges);
    for (MayaLoops loops(mesh.faceRow); loops.next();) {
        for (int corner = 0; corner < loops.corners(); ++corner) {
            if (!isEdge(loops.edges()[corner], edges)) {
                return static_cast<std::size_t>(loops.edges() - mesh.faceRow.items.data());
            }
        }
    }
    return kNone;
}

std::size_t faceWithoutUV(const MayaMesh& mesh) {
    for (MayaLoops loops(mesh.faceRow); loops.next();) {
        const int* const uvs = loops.uvs();
        for (int corner = 0; uvs && corner < loops.corners(); ++corner) {
            if (uvs[corner] < 0 || static_cast<std::size_t>(uvs[corner]) >= mesh.uvs.size()) {
                return static_cast<std::size_t>(uvs - mesh.faceRow.items.data());
            }
        }
    }
    return kNone;
}

// Where the statement begins that holds the stored value.
std::int64_t faceStatementAt(const MayaMesh& mesh, std::size_t stored) {
    const auto next =
        std::upper_bound(mesh.faceStatements.begin(), mesh.faceStatements.end(), stored,
                         [](std::size_t at, const MayaFaceStatement& s) { return at < s.stored; });
    return std::prev(next)->begin;
}

// UVs that no face uses stay as they are.
void keepUVText(MayaMesh& mesh) {
    auto& all = mesh.statements;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [](const MayaStatement& s) { return s.thing == kMayaUVs; }),
              all.end());
}

}  // namespace

bool MayaReader::checkMeshes() {
    return std::all_of(m_meshes.begin(), m_meshes.end(),
                       [this](MayaMesh& mesh) { return checkMesh(mesh); });
}

bool MayaReader::checkMesh(MayaMesh& mesh) {
    const bool merge = m_dialect == MayaDialect::Merge;
    const auto incomplete = [&](MayaRanges& ranges, MayaThing thing, const char* reason) {
        return !ranges.complete() && !refuseAt(mesh.firstStatement[thingNumber(thing)], reason);
    };
    if (incomplete(mesh.uvRanges, kMayaUVs, "UVs that do not match their count") ||
        incomplete(mesh.vertexRanges, kMayaVertices, "vertices that do not match their count") ||
        incomplete(mesh.faceRanges, kMayaFaces, "faces that do not match their count") ||
        (merge && incomplete(mesh.edgeRanges, kMayaEdges, "edges that do not match their count"))) {
        return false;
    }
    std::size_t bad =
        merge ? faceWithoutEdge(mesh.quads, mesh.edges.size() / 2) : faceWithoutEdge(mesh);
    if (bad != kNone) {
        return refuseAt(faceStatementAt(mesh, bad), "a face with an edge that is not there");
    }
    bad = merge ? faceWithoutUV(mesh.quads, mesh.uvs.size()) : faceWithoutUV(mesh);
    if (bad != kNone) {
        return refuseAt(faceStatementAt(mesh, bad), "a face with a UV that is not there");
    }
    mesh.uvRanges.putInOrder(mesh.uvs);
    mesh.vertexRanges.putInOrder(mesh.vertices);
    mesh.edgeRanges.putInOrder(mesh.edges);
    mesh.faceRanges.putInOrder(mesh.quads.edges);
    mesh.faceRanges.putInOrder(mesh.quads.uvIndices);
    mesh.faceRanges.putInOrder(mesh.faceRow.items);
    const bool usesUVs = merge ? !mesh.quads.uvIndices.empty() : mesh.faceRow.usesUVs;
    if (!usesUVs) keepUVText(mesh);
    return true;
}

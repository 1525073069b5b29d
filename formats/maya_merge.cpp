// Maya scenes on their way from the host: UVs shared, edges marked, faces wound for the target.

#include "formats/maya_merge.h"

#include <utility>

#include "bridge/bx_vek.h"
#include "config/bx_generic_config_file_parser.h"
#include "formats/bx_uv_merge_algo.h"
#include "formats/edge_smoothness.h"
#include "formats/maya_reader.h"
#include "formats/maya_rewrite.h"
#include "formats/maya_text.h"
#include "formats/merge_uvs.h"

namespace {

constexpr float kDefaultAngle = 30.0f;

float smoothAngle() {
    bool found = false;
    const BXString value = BXGenericConfigFileParser::findTokenInConfigFile(
        BXVek::getAppFile("Maya", "Vek_Config.txt"), "SMOOTH_ANGLE", &found);
    return found ? BXGenericConfigFileParser::paramToFloat(value.c_str()) : kDefaultAngle;
}

// The vertex that each slot's edge begins at; -1 for the free slot of a triangle.
BXArray<int> cornerVerticesOf(const MayaMesh& mesh) {
    const std::vector<int>& references = mesh.quads.edges;
    BXArray<int> vertices(references.size());
    for (std::size_t slot = 0; slot < references.size(); ++slot) {
        const int reference = references[slot];
        if (reference == MayaQuads::kNoEdge) {
            vertices[slot] = -1;
        } else if (reference >= 0) {
            vertices[slot] = mesh.edges[2 * static_cast<std::size_t>(reference)];
        } else {
            vertices[slot] = mesh.edges[2 * static_cast<std::size_t>(~reference) + 1];
        }
    }
    return vertices;
}

class MergedMeshes : public MayaRegenerator {
public:
    explicit MergedMeshes(bool reverse) : m_reverse(reverse) {}

    void put(const MayaMesh& mesh, MayaThing thing, MayaWriter& writer) const override {
        if (thing == kMayaUVs) putUVs(mesh, writer);
        if (thing == kMayaEdges) putEdges(mesh, writer);
        if (thing == kMayaFaces) putFaces(mesh, writer);
    }

private:
    static void putUVs(const MayaMesh& mesh, MayaWriter& writer) {
        const auto count = static_cast<std::int64_t>(mesh.uvs.size());
        putMayaUVs(writer, count,
                   [&](std::int64_t i) { writer.putUV(mesh.uvs[static_cast<std::size_t>(i)]); });
    }

    static void putEdges(const MayaMesh& mesh, MayaWriter& writer) {
        const auto count = static_cast<std::int64_t>(mesh.smooth.size());
        putMayaEdges(writer, count, [&](std::int64_t i) {
            const auto edge = static_cast<std::size_t>(i);
            writer.putInt(mesh.edges[2 * edge]);
            writer.putInt(mesh.edges[2 * edge + 1]);
            writer.putInt(mesh.smooth[edge]);
        });
    }

    void putFaces(const MayaMesh& mesh, MayaWriter& writer) const {
        const MayaQuads& quads = mesh.quads;
        putMayaFaces(writer, static_cast<std::int64_t>(quads.count()), [&](std::int64_t face) {
            const std::size_t slot = 4 * static_cast<std::size_t>(face);
            const int corners = quads.edges[slot + 3] == MayaQuads::kNoEdge ? 3 : 4;
            putMayaLoop(writer, " f", &quads.edges[slot], corners, m_reverse);
            if (quads.uvIndices.empty()) return;
            putMayaList(writer, " mu 0", &quads.uvIndices[slot], corners, m_reverse);
        });
    }

    bool m_reverse;
};

}  // namespace

double mayaSmoothThreshold() {
    return smoothThreshold(smoothAngle());
}

void mergeMayaMesh(MayaMesh& mesh, double threshold) {
    BXArray<int> cornerVertices = cornerVerticesOf(mesh);
    mesh.smooth = findSmoothEdges(mesh.quads, mesh.edges.size() / 2, cornerVertices, mesh.vertices,
                                  threshold);
    std::vector<float>().swap(mesh.vertices);
    if (mesh.quads.uvIndices.empty()) return;
    weldUVs(mesh.uvs, mesh.quads.uvIndices, std::move(cornerVertices));
}

bool BXUVMergeAlgo::mergeUVsInMayaFile(const BXString& path) {
    const double threshold = mayaSmoothThreshold();
    BXFile file(path.getValidFilePath(), BXFile::Access::ReadWrite);
    if (!file.isOpen() || file.size() == 0) return false;
    MayaReader reader(file, MayaDialect::Merge);
    if (!reader.read()) return false;
    for (MayaMesh& mesh : reader.meshes()) mergeMayaMesh(mesh, threshold);
    return rewriteMayaScene(file, reader.textEnd(), reader.meshes(),
                            MergedMeshes(BXVek::s_exportReverse));
}

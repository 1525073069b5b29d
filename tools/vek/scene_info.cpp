#include "tools/vek/scene_info.h"

#include <algorithm>

#include "formats/maya_merge.h"
#include "formats/maya_reader.h"

namespace {

std::uint64_t lineAt(const BXFile& file, std::int64_t offset) {
    std::uint64_t line = 1;
    char piece[65536];
    for (std::int64_t at = 0; at < offset;) {
        const auto wanted = static_cast<std::size_t>(
            std::min<std::int64_t>(offset - at, static_cast<std::int64_t>(sizeof piece)));
        const std::size_t came = file.readAt(at, piece, wanted);
        if (came == 0) break;
        line += static_cast<std::uint64_t>(std::count(piece, piece + came, '\n'));
        at += static_cast<std::int64_t>(came);
    }
    return line;
}

void refuse(const BXFile& file, const MayaReader& reader, SceneInfo::Operation& operation) {
    operation.refuses = true;
    operation.reason = reader.refusal().reason;
    operation.line = lineAt(file, reader.refusal().offset);
}

bool writesAnew(const MayaMesh& mesh, MayaThing thing) {
    return std::any_of(mesh.statements.begin(), mesh.statements.end(),
                       [thing](const MayaStatement& s) { return s.thing == thing; });
}

void inspectMerge(const BXFile& file, SceneInfo::Operation& merge) {
    MayaReader reader(file, MayaDialect::Merge);
    if (!reader.read()) return refuse(file, reader, merge);
    const double threshold = mayaSmoothThreshold();
    for (MayaMesh& mesh : reader.meshes()) {
        mergeMayaMesh(mesh, threshold);
        if (writesAnew(mesh, kMayaUVs)) merge.uvs += mesh.uvs.size();
        if (writesAnew(mesh, kMayaFaces)) merge.faces += mesh.quads.count();
        merge.edges += mesh.smooth.size();
        merge.smoothEdges +=
            static_cast<std::uint64_t>(std::count(mesh.smooth.begin(), mesh.smooth.end(), 1));
    }
}

SceneInfo::Mesh infoOf(const MayaMesh& mesh) {
    SceneInfo::Mesh info;
    info.name = mesh.name;
    info.vertices = mesh.saidVertices;
    info.edges = mesh.saidEdges;
    info.uvs = mesh.uvs.size();
    info.faces = static_cast<std::uint64_t>(mesh.faceRanges.entries());
    info.corners = static_cast<std::uint64_t>(mesh.faceRow.corners);
    for (MayaLoops loops(mesh.faceRow); loops.next();) {
        if (loops.isHole()) {
            ++info.holes;
        } else {
            ++(loops.corners() == 3   ? info.triangles
               : loops.corners() == 4 ? info.quads
                                      : info.others);
        }
        for (const MayaLoops::List& list : loops.lists()) {
            (list.kind == MayaFaceRow::kUVs ? info.uvSets : info.colourSets).insert(list.set);
        }
    }
    return info;
}

void inspectSplit(const BXFile& file, SceneInfo& info) {
    MayaReader reader(file, MayaDialect::Split);
    if (!reader.read()) return refuse(file, reader, info.split);
    for (const MayaMesh& mesh : reader.meshes()) {
        info.meshes.push_back(infoOf(mesh));
        if (writesAnew(mesh, kMayaUVs)) {
            info.split.uvs += static_cast<std::uint64_t>(mesh.faceRow.corners);
        }
        info.split.faces += info.meshes.back().faces;
    }
}

}  // namespace

bool inspectScene(const std::string& path, SceneInfo& info) {
    const BXFile file(path.c_str(), BXFile::Access::Read);
    if (!file.isOpen()) return false;
    info.fileSize = file.size();
    inspectMerge(file, info.merge);
    inspectSplit(file, info);
    return true;
}

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>

#include "tools/vek/commands.h"
#include "tools/vek/scene_info.h"

namespace {

constexpr std::size_t kMeshesInText = 100;

std::string countOrNone(int count) {
    return count < 0 ? "-" : std::to_string(count);
}

void print(const SceneInfo::Mesh& mesh) {
    fmt::print("mesh {}: {} vertices, {} edges, {} UVs, {} faces\n",
               mesh.name.empty() ? "(no name)" : mesh.name, countOrNone(mesh.vertices),
               countOrNone(mesh.edges), mesh.uvs, mesh.faces);
    fmt::print("    {} triangles, {} quads, {} of other sizes, {} holes; {} corners\n",
               mesh.triangles, mesh.quads, mesh.others, mesh.holes, mesh.corners);
    if (!mesh.uvSets.empty()) fmt::print("    UV sets in use: {}\n", fmt::join(mesh.uvSets, ", "));
    if (!mesh.colourSets.empty()) {
        fmt::print("    colour sets in use: {}\n", fmt::join(mesh.colourSets, ", "));
    }
}

std::string refusal(const SceneInfo::Operation& operation) {
    return fmt::format("refuses it: {} (the statement at line {})", operation.reason,
                       operation.line);
}

void print(const std::string& path, const SceneInfo& info) {
    fmt::print("{}: {} bytes", path, info.fileSize);
    if (!info.split.refuses) {
        fmt::print(", {} mesh{} with data", info.meshes.size(),
                   info.meshes.size() == 1 ? "" : "es");
    }
    fmt::print("\n");
    const std::size_t shown = std::min(kMeshesInText, info.meshes.size());
    for (std::size_t i = 0; i < shown; ++i) print(info.meshes[i]);
    if (info.meshes.size() > shown) fmt::print("and {} meshes more\n", info.meshes.size() - shown);
    if (info.merge.refuses) {
        fmt::print("The merge (VekPostExport) {}.\n", refusal(info.merge));
    } else {
        fmt::print(
            "The merge (VekPostExport) writes {} UVs, {} edges of which {} are smooth, and {} "
            "faces.\n",
            info.merge.uvs, info.merge.edges, info.merge.smoothEdges, info.merge.faces);
    }
    if (info.split.refuses) {
        fmt::print("The split (VekPreImport) {}.\n", refusal(info.split));
    } else {
        fmt::print("The split (VekPreImport) writes {} UVs and {} faces.\n", info.split.uvs,
                   info.split.faces);
    }
}

nlohmann::json jsonOf(const SceneInfo::Operation& operation) {
    if (operation.refuses) {
        return {{"refuses", true}, {"reason", operation.reason}, {"line", operation.line}};
    }
    return {{"refuses", false}, {"uvs", operation.uvs}, {"faces", operation.faces}};
}

nlohmann::json jsonOf(const SceneInfo::Mesh& mesh) {
    nlohmann::json json = {{"name", mesh.name},           {"uvs", mesh.uvs},
                           {"faces", mesh.faces},         {"corners", mesh.corners},
                           {"triangles", mesh.triangles}, {"quads", mesh.quads},
                           {"others", mesh.others},       {"holes", mesh.holes},
                           {"uv_sets", mesh.uvSets},      {"colour_sets", mesh.colourSets}};
    if (mesh.vertices >= 0) json["vertices"] = mesh.vertices;
    if (mesh.edges >= 0) json["edges"] = mesh.edges;
    return json;
}

void printJson(const SceneInfo& info) {
    nlohmann::json json = {{"size", info.fileSize}, {"meshes", nlohmann::json::array()}};
    for (const auto& mesh : info.meshes) json["meshes"].push_back(jsonOf(mesh));
    json["merge"] = jsonOf(info.merge);
    if (!info.merge.refuses) {
        json["merge"]["edges"] = info.merge.edges;
        json["merge"]["smooth_edges"] = info.merge.smoothEdges;
    }
    json["split"] = jsonOf(info.split);
    fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int showSceneInfo(const std::string& path, bool json) {
    SceneInfo info;
    if (!inspectScene(path, info)) {
        fmt::print(stderr, "vek: {} cannot be read\n", path);
        return 2;
    }
    if (json) {
        printJson(info);
    } else {
        print(path, info);
    }
    return info.merge.refuses && info.split.refuses ? 1 : 0;
}

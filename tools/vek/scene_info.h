#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

// What a Maya scene holds, and what the merge and the split would do with it. Any bytes can be
// looked at.
struct SceneInfo {
    struct Mesh {
        std::string name;
        int vertices = -1, edges = -1;  // as their counts say; -1 where there is none
        std::uint64_t uvs = 0, faces = 0, corners = 0;
        std::uint64_t triangles = 0, quads = 0, others = 0;  // by the corners of the outer loop
        std::uint64_t holes = 0;
        std::set<int> uvSets, colourSets;  // that faces use
    };
    struct Operation {
        bool refuses = false;
        std::string reason;
        std::uint64_t line = 0;  // of the statement; 0 where it is none
        // What is written anew, in all meshes.
        std::uint64_t uvs = 0, smoothEdges = 0, edges = 0, faces = 0;
    };

    std::int64_t fileSize = 0;
    std::vector<Mesh> meshes;  // as the split reads them; empty where it refuses
    Operation merge, split;
};

// False when the file cannot be opened for reading.
bool inspectScene(const std::string& path, SceneInfo& info);

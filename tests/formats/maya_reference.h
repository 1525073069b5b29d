#pragma once

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Maya scenes read the slow and plain way, whoever wrote them: statement by statement, every form.
namespace maya_reference {

struct Loop {
    bool isHole = false;
    std::vector<int> edges;
    // The indices of each list, by its word ("mu", "mc") and the number of its set.
    std::map<std::pair<std::string, int>, std::vector<int>> lists;
};

struct Mesh {
    std::vector<std::array<double, 2>> uvs;  // read up to the letter e of an exponent
    std::vector<std::array<int, 3>> edges;
    std::vector<std::vector<Loop>> faces;
    std::vector<int> ranges;  // entries of each range statement, UVs, edges and faces
    bool usesUVs() const;
    // The UV of a corner; zero where it has none.
    std::array<double, 2> uv(const Loop& loop, std::size_t corner) const;
};

struct Scene {
    std::vector<Mesh> meshes;  // the fragment in front of all nodes first
    std::string rest;          // the text without the statements of UVs and faces
    std::string restOfRest;    // and without those of edges
};

Scene read(const std::string& text);

}  // namespace maya_reference

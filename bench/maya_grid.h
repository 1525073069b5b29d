#pragma once

#include <string>

// A grid of quads as a Maya scene, as the host writes it, and as an OBJ file: every face corner has
// a UV entry of its own, of the same value where faces meet.
struct MayaGrid {
    int side;       // quads along a side
    bool shuffled;  // vertices, edges and faces in random order

    void writeScene(const std::string& path) const;
    void writeObj(const std::string& path) const;
};

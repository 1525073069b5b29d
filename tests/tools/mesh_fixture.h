#pragma once

#include "tools/vek/mesh.h"

// A cube of side 1 at the origin, wound outwards. Vertex v is at x = bit 0, y = bit 1, z = bit 2.
inline Mesh unitCube() {
    Mesh mesh;
    for (int v = 0; v < 8; ++v) {
        mesh.positions.push_back({static_cast<float>(v & 1), static_cast<float>(v >> 1 & 1),
                                  static_cast<float>(v >> 2 & 1)});
    }
    mesh.faces = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                  {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
    for (std::int32_t i = 0; i < 6; ++i)
        mesh.corners.push_back({4 * i, 4 * i + 1, 4 * i + 2, 4 * i + 3});
    return mesh;
}

// The triangle 0, 1, 2 and the quad 0, 2, 4, 3, with corner values of their own and no UV list.
inline Mesh triangleAndQuad() {
    Mesh mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 1}, {1, 2, 1}};
    mesh.faces = {{0, 1, 2, kNoCorner}, {0, 2, 4, 3}};
    mesh.corners = {{10, 11, 12, kNoCorner}, {20, 21, 22, 23}};
    return mesh;
}

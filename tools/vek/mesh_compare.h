#pragma once

#include <cstddef>

#include "tools/vek/mesh.h"

// How far a mesh is from the one expected. Vertices and faces are compared by their number.
struct MeshDifference {
    double maxDistance = 0;   // between positions; infinite where one of them is not a number
    double meanDistance = 0;  // over the vertices that both have
    std::size_t verticesMissing = 0;
    std::size_t verticesAdded = 0;
    std::size_t facesMissing = 0;
    std::size_t facesAdded = 0;
    std::size_t facesWoundWrong = 0;  // the expected corners in the reverse order
    std::size_t facesDifferent = 0;   // other corners than the expected ones
    std::size_t cornersLost = 0;      // face corners without the expected value
    std::size_t uvsLost = 0;          // entries of the UV list that are missing or other
};

// A face may start at another of its corners; that is no difference.
MeshDifference compareMeshes(const Mesh& expected, const Mesh& back);

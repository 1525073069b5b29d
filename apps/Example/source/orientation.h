#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "given_mesh.h"

// This application's space is left-handed with z up. In numbers: the faces of a mesh that is the
// right way out enclose a positive signed volume. On the screen they turn clockwise.

struct Box {
    std::array<double, 3> min{};
    std::array<double, 3> max{};

    double centre(std::size_t axis) const { return (min[axis] + max[axis]) / 2; }
    double size(std::size_t axis) const { return max[axis] - min[axis]; }
};
Box boxOf(const std::vector<Point>& positions);

struct Orientation {
    Box box;
    std::size_t openEdges = 0;         // used by one face
    std::size_t disagreeingEdges = 0;  // used by two faces in the same direction
    std::size_t crowdedEdges = 0;      // used by more than two faces
    bool closed = false;               // each edge is used as often one way as the other
    double signedVolume = 0;
    double volumeDoubt = 0;  // how far rounding may have moved it

    bool insideOut() const { return closed && signedVolume < -volumeDoubt; }
};
Orientation measure(const GivenMesh& mesh);

// Empty when the mesh is as this application needs it, otherwise a sentence. A mesh may have been
// announced with `knownFlaws` edges where neighbours were never wound alike.
std::string findFault(const Orientation& orientation, std::size_t knownFlaws);

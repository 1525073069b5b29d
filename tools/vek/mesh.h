#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using MeshPoint = std::array<float, 3>;
using MeshUV = std::array<float, 2>;
// One value per corner of a face. A negative fourth vertex index marks a triangle.
using MeshCorners = std::array<std::int32_t, 4>;

constexpr std::int32_t kNoCorner = -1;

// The name of a map file that goes with the mesh. The kind is the id of its block.
struct MeshMap {
    std::uint32_t kind = 0;
    std::string name;
    float param = 0.0f;
};

// A block of an exchange file with its payload as it came.
struct MeshBlock {
    std::uint32_t id = 0;
    std::uint32_t count = 0;
    float param = 0.0f;
    std::string payload;
};

// A mesh as the host holds it: right-handed, y up, faces counter-clockwise seen from outside.
// The readers of mesh_file.h and obj_file.h make sure that every vertex index is in range.
struct Mesh {
    std::vector<MeshPoint> positions;
    std::vector<MeshCorners> faces;    // vertex indices
    std::vector<MeshCorners> corners;  // as long as faces: indices into uvs, kNoCorner where none
    std::vector<MeshUV> uvs;
    std::vector<MeshMap> maps;
    std::vector<MeshBlock> otherBlocks;
};

inline bool isTriangle(const MeshCorners& face) {
    return face[3] < 0;
}
inline std::size_t cornerCount(const MeshCorners& face) {
    return isTriangle(face) ? 3 : 4;
}

struct MeshCounts {
    std::size_t triangles = 0;
    std::size_t quads = 0;
    std::size_t corners = 0;
};
MeshCounts countFaces(const Mesh& mesh);

// The smallest box around all positions; all zero for a mesh without any.
struct MeshBounds {
    std::array<double, 3> min{};
    std::array<double, 3> max{};

    double centre(std::size_t axis) const { return (min[axis] + max[axis]) / 2; }
    double size(std::size_t axis) const { return max[axis] - min[axis]; }
};
MeshBounds boundsOf(const Mesh& mesh);

// The volume that a closed mesh encloses; negative when its faces are wound inwards. For an open
// mesh a number without a meaning.
double signedVolumeOf(const Mesh& mesh);

// Turns each vertex about the vertical line through the centre of the bounds: not at all at the
// bottom, by the whole angle at the top, right-handed about +y.
void twistAboutY(Mesh& mesh, double degrees);

// Reverses every face about its first corner; the corner values stay with their corners.
void rewindFaces(Mesh& mesh);

// The number that a text begins with, with a point whatever the locale; 0 where it is none.
float floatOf(std::string_view text);

// Gives each face corner a UV of its own, in the order of the faces, with five decimal places; a
// corner without one gets (0, 0).
void giveOwnUVs(Mesh& mesh);

// How the faces meet. Where neighbours are wound alike, they use their edge once each way.
struct MeshEdges {
    std::size_t open = 0;         // used by one face only
    std::size_t disagreeing = 0;  // used by two faces in the same direction
    std::size_t crowded = 0;      // used by more than two faces
};
MeshEdges edgesOf(const Mesh& mesh);

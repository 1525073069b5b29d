#pragma once

#include <string>

#include "tools/vek/mesh.h"

// The block that carries a mesh's UV list, count x 2 float32. The corner values are indices into
// it. It is this tool's own: to the bridge and to target applications it is an unknown block.
constexpr std::uint32_t kVekUVList = 90001;

// Writes the mesh as an exchange file: vertices, faces (20001), corner values (25001), the UV list,
// its maps, its other blocks. False, with a sentence in `error`, when not all could be written or
// when a block would grow past the 4 GiB that the format can state.
bool writeMesh(const std::string& path, const Mesh& mesh, std::string& error);

// Reads an exchange file with any of the three kinds of faces. False, with a sentence in `error`,
// when it is not one or is damaged: an incomplete block, a count that its block does not hold, a
// face with a vertex that is not there, no end block. Takes no more memory than a few times what
// the file really holds.
bool readMesh(const std::string& path, Mesh& mesh, std::string& error);

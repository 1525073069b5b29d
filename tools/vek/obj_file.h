#pragma once

#include <cstddef>
#include <string>

#include "tools/vek/mesh.h"

// What had to be changed to hold an OBJ file as a mesh of triangles and quads with UVs.
struct ObjNotes {
    std::size_t facesCut = 0;      // had more than four corners and were cut into triangles
    std::size_t facesSkipped = 0;  // had fewer than three corners
    std::size_t uvsMade = 0;  // corners had none and were given their vertex's place from above
};

// False, with a sentence in `error`, when the file cannot be read, has no faces, or has a face
// with a vertex that is not there.
bool loadObj(const std::string& path, Mesh& mesh, ObjNotes& notes, std::string& error);

// Positions, UVs and faces. False, with a sentence in `error`, when not all could be written.
bool saveObj(const std::string& path, const Mesh& mesh, std::string& error);

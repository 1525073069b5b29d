#pragma once

#include <string>

#include "tools/vek/mesh.h"

// Writes the mesh as the host writes a Maya scene: a UV for each face corner, in the order of the
// faces. False, with a sentence in `error`, when not all could be written.
bool writeMayaScene(const std::string& path, const Mesh& mesh, std::string& error);

// Reads the one mesh of a scene, with counts and ranges apart, as the host and the bridge write it.
// Reads the numbers as they stand, exponents too. False, with a sentence in `error`, when there is
// none, or it is damaged.
bool readMayaScene(const std::string& path, Mesh& mesh, std::string& error);

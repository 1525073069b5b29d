#pragma once

#include <cstddef>

#include "tools/vek/mesh.h"

constexpr std::size_t kFewestSurfaceFaces = 200;
constexpr std::size_t kMostSurfaceFaces = 10'000'000;

// A closed vase of about `faces` faces, quads and triangles mixed: taller than wide, leaning, with
// lobes and a lip, so that no mirroring or turning goes unnoticed. UV-mapped with a seam. `faces`
// is brought into the range above.
Mesh makeSurface(std::size_t faces);

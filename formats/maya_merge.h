#pragma once

#include "formats/maya_mesh.h"

// The cosine of the configured SMOOTH_ANGLE, see smoothThreshold.
double mayaSmoothThreshold();

// What the merge does to a mesh that was read for it and not refused: shares its UVs, marks its
// edges, and gives the memory of its vertices back.
void mergeMayaMesh(MayaMesh& mesh, double threshold);

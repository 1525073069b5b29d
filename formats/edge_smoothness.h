#pragma once

#include <vector>

#include "formats/maya_mesh.h"
#include "foundation/bx_array.h"

// Which edges of a mesh are smooth.
//   quads          the faces; every edge reference is one of `edgeCount` edges
//   cornerVertices the vertex of each slot, negative for none
//   vertices       three coordinates each
//   threshold      the cosine of the largest angle between the normals of two faces at which the
//                  edge between them is smooth
// The result is 1 for each smooth edge and 0 for each hard one. Hard are also the edges of one face
// only, those of three and more, those of faces with a vertex that has no coordinates, and those of
// faces that are tiny beside the mesh: the cross product of two sides of a corner, and the sum of
// these as unit vectors, count only where they are longer than a millionth of the bounding box's
// diagonal. In a mesh millions across, that is no face at all.
std::vector<unsigned char> findSmoothEdges(const MayaQuads& quads, std::size_t edgeCount,
                                           const BXArray<int>& cornerVertices,
                                           const std::vector<float>& vertices, double threshold);

// The cosine for an angle in degrees, any number of turns of it and in either direction; 30 degrees
// for one that is not finite.
double smoothThreshold(float degrees);

#pragma once

#include "formats/vectors.h"
#include "foundation/bx_array.h"

// BXUVMergeAlgo::mergeUVs in the memory of its arguments: one index and one vertex for each corner,
// of which there is one at least. Uses up vertexIndices.
void weldUVs(BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices, BXArray<int>&& vertexIndices);

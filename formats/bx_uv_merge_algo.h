#pragma once

#include "formats/vectors.h"
#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// What happens to a file after the host has exported it (merge) and before the host imports it
// (split). The names speak of UVs; for exchange files the two bring positions and winding into the
// other side's orientation.
class BXUVMergeAlgo {
public:
    // Turns one UV per corner into shared UV points.
    //   uvs            in: the UVs that uvIndices refers to, or one per corner if that is empty;
    //                  out: the points, numbered by vertex, in a vertex from its last corner back
    //   uvIndices      in: per corner an index into uvs, negative for none; out: per corner the
    //                  index of its point, -1 for a corner without a vertex
    //   vertexIndices  per corner its vertex, negative for none
    //   vertexCount    vertices there are, or negative: one more than the largest index
    // A point is shared by the corners of one vertex whose UVs are equal as floats (-0 equals +0,
    // NaN nothing), and never across vertices. A UV index beyond uvs counts as none. False, with
    // everything as it was, when uvs or vertexIndices is empty, or a vertex is not below
    // vertexCount.
    static bool mergeUVs(BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices,
                         const BXArray<int>& vertexIndices, int vertexCount);

    // Bring an exchange file, in place, into the orientation of the target application (merge) or
    // of the host (split), under the settings in BXVek. False when the file cannot be opened for
    // reading and writing, is empty, does not begin with the magic (in any letter case), or when a
    // transfer failed. Damage is no failure: what is found whole is transformed. The file is
    // changed where it stands, a piece at a time; until the last byte is in place its magic is
    // blank, so that every reader refuses what an interruption left.
    //
    // Where the settings ask for nothing (no switch of this direction, scale 1, no offset along x
    // and y) both also set BXVek::s_offsetZ to 0, for good.
    static bool mergeUVsInVekFile(const BXString& path);
    static bool splitUVsInVekFile(const BXString& path);

    // Prepare a Maya scene, in place, for the target application (merge) or for the host (split).
    // The merge lets corners of one vertex with equal UVs share one point and marks each edge as
    // hard or smooth by the angle between its faces (SMOOTH_ANGLE in the configuration file of the
    // application "Maya", 30 degrees without it); the split gives each corner a point of its own.
    // Both rewind the faces where their direction mirrors (BXVek), and copy everything that they do
    // not recognise. See docs/maya-scenes.md.
    //
    // False, with the file as it was, when it cannot be opened for reading and writing, is empty,
    // or holds a statement that contradicts itself or that they cannot do justice to.
    static bool mergeUVsInMayaFile(const BXString& path);
    static bool splitUVsInMayaFile(const BXString& path);
};

#pragma once

#include <cstdint>

#include "formats/maya_writer.h"

// The statements as they are written anew.

template <class PutUV>
void putMayaUVs(MayaWriter& writer, std::int64_t count, PutUV putUV) {
    writer.putCount("\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s ", count,
                    " \".uvst[0].uvsp\";\n");
    writer.putRanges("\tsetAttr \".uvst[0].uvsp[", "]\" -type \"float2\"\n", 250, count, putUV);
}

template <class PutEdge>
void putMayaEdges(MayaWriter& writer, std::int64_t count, PutEdge putEdge) {
    writer.putCount("\tsetAttr -s ", count, " \".ed\";\n");
    writer.putRanges("\tsetAttr \".ed[", "]\"\n", 165, count, putEdge);
}

template <class PutFace>
void putMayaFaces(MayaWriter& writer, std::int64_t count, PutFace putFace) {
    writer.putCount("\tsetAttr -s ", count, " \".fc\";\n");
    writer.putRanges("\tsetAttr \".fc[", "]\" -type \"polyFaces\"\n", 500, count, putFace);
}

// A loop's edge references, or, to wind it the other way, each of them the other way from the last
// to the first: the first corner stays the first.
inline void putMayaLoop(MayaWriter& writer, const char* name, const int* edges, int corners,
                        bool reverse) {
    writer.put(name);
    writer.putInt(corners);
    if (!reverse) {
        for (int i = 0; i < corners; ++i) writer.putInt(edges[i]);
    } else {
        for (int i = corners - 1; i >= 0; --i) writer.putInt(~edges[i]);
    }
}

// A list with an index for each corner of a loop, in the order of that loop's corners as written.
inline void putMayaList(MayaWriter& writer, const char* name, const int* indices, int corners,
                        bool reverse) {
    writer.put(name);
    writer.putInt(corners);
    if (!reverse) {
        for (int i = 0; i < corners; ++i) writer.putInt(indices[i]);
    } else {
        writer.putInt(indices[0]);
        for (int i = corners - 1; i > 0; --i) writer.putInt(indices[i]);
    }
}

#pragma once

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/maya_ranges.h"
#include "formats/vectors.h"
#include "foundation/bx_array.h"

// What the recognised statements of one mesh node hold.

enum MayaThing : unsigned int {
    kMayaUVs = 1,
    kMayaEdges = 2,
    kMayaVertices = 4,
    kMayaFaces = 8,
};

// From 0 on, in the order of the bits.
inline int thingNumber(MayaThing thing) {
    return __builtin_ctz(thing);
}

// A statement's text, from its line's start through its ';' and, where nothing else follows on the
// line, the line's end.
struct MayaStatement {
    MayaThing thing;
    std::int64_t begin;
    std::int64_t end;
};

// Faces of three or four corners, in four slots each: edge references, and UV indices if any face
// has them. A reference e >= 0 is edge e from its first vertex to its second, a negative one edge
// ~e the other way.
struct MayaQuads {
    static constexpr int kNoEdge = INT_MAX;  // the fourth slot of a triangle
    static constexpr int kNoUV = -1;         // likewise, and of a corner without one

    std::size_t count() const { return edges.size() / 4; }

    std::vector<int> edges;
    BXArray<int> uvIndices;  // empty, or one for each slot
};

// Faces of any shape, as a row of numbers: a loop (kFace or kHole, its length, its edge
// references), then its lists (kUVs or kColours, the number of the set, and an index for each
// corner).
struct MayaFaceRow {
    enum Item : int { kFace, kHole, kUVs, kColours };

    std::vector<int> items;
    std::int64_t corners = 0;  // of all loops
    bool usesUVs = false;      // whether a loop has a list of UV set 0
};

// Walks over the loops of a row of faces.
class MayaLoops {
public:
    struct List {
        MayaFaceRow::Item kind;
        int set;
        const int* indices;
    };

    explicit MayaLoops(const MayaFaceRow& row)
        : m_next(row.items.data()), m_end(m_next + row.items.size()) {}

    // Moves to the next loop, and before the first; false behind the last.
    bool next();
    bool isHole() const { return m_loop[0] == MayaFaceRow::kHole; }
    int corners() const { return m_loop[1]; }
    const int* edges() const { return m_loop + 2; }
    // The loop's list of UV set 0, or null.
    const int* uvs() const { return m_uvs; }
    // Its lists, in their order.
    const std::vector<List>& lists() const { return m_lists; }

private:
    const int* m_loop = nullptr;
    const int* m_next;
    const int* m_end;
    const int* m_uvs = nullptr;
    std::vector<List> m_lists;
};

inline bool MayaLoops::next() {
    if (m_next == m_end) return false;
    m_loop = m_next;
    m_next += 2 + corners();
    m_uvs = nullptr;
    m_lists.clear();
    while (m_next < m_end && *m_next != MayaFaceRow::kFace && *m_next != MayaFaceRow::kHole) {
        m_lists.push_back({static_cast<MayaFaceRow::Item>(m_next[0]), m_next[1], m_next + 2});
        if (m_next[0] == MayaFaceRow::kUVs && m_next[1] == 0) m_uvs = m_next + 2;
        m_next += 2 + corners();
    }
    return true;
}

struct MayaFaceStatement {
    std::int64_t begin;
    std::size_t stored;
};

struct MayaMesh {
    std::string name;  // of its node; empty in a fragment
    // What a count says, of vertices only when read for the split; -1 for nothing.
    int saidVertices = -1, saidEdges = -1;

    MayaRanges uvRanges, edgeRanges, vertexRanges, faceRanges;
    // Where the first statement of each thing begins, by the number of the thing's bit; -1: none.
    std::int64_t firstStatement[4] = {-1, -1, -1, -1};
    // The statements with faces: where each begins, and where its values do among the stored ones.
    std::vector<MayaFaceStatement> faceStatements;
    BXArray<BXVector2f> uvs;
    std::vector<int> edges;             // two vertices each
    std::vector<float> vertices;        // three coordinates each
    MayaQuads quads;                    // when read for the merge
    MayaFaceRow faceRow;                // when read for the split
    std::vector<unsigned char> smooth;  // 1 for each smooth edge, found by the merge
    bool isSplit = false;               // whether it is as a split left it, found by the split
    // Statements that give UVs, edges or faces and are written anew, in the order of the text.
    std::vector<MayaStatement> statements;
};

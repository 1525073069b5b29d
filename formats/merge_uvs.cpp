#include "formats/merge_uvs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

#include "formats/bx_uv_merge_algo.h"

namespace {

// Above this many points at one vertex a table finds an equal one sooner than a look at each.
constexpr std::size_t kPointsForTable = 24;

// Both parts as bits, with -0 counted as 0: equal keys are equal UVs, where neither part is NaN.
std::uint64_t keyOf(const BXVector2f& uv) {
    const float parts[2] = {uv.x + 0.0f, uv.y + 0.0f};
    std::uint64_t key;
    std::memcpy(&key, parts, sizeof key);
    return key;
}

bool hasNaN(const BXVector2f& uv) {
    return uv.x != uv.x || uv.y != uv.y;
}

// The indexes of the points of one vertex of many, by their UV. Points with a NaN, which equal
// nothing, are not in it.
class PointTable {
public:
    explicit PointTable(const BXArray<BXVector2f>& points) : m_points(points) {
        // Where this object lies differs from run to run, so that no file can be made whose points
        // all fall on one slot. The indexes do not depend on it.
        m_seed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(this)) * kMixer;
    }

    // Empties the table for a vertex whose points begin at this one.
    void begin(std::size_t firstPoint) {
        m_first = firstPoint;
        m_slots.clear();
        m_used = 0;
    }

    // Has fetched where the search for this UV begins.
    __attribute__((always_inline)) void fetch(const BXVector2f& uv) const {
        if (!m_slots.empty()) __builtin_prefetch(&m_slots[firstSlot(hashOf(keyOf(uv)))]);
    }

    // The index of the point with this UV, or `fresh`, which then stands for it.
    int findOrAdd(const BXVector2f& uv, int fresh) {
        if (2 * m_used >= m_slots.size()) grow();
        const std::uint64_t key = keyOf(uv), hash = hashOf(key);
        std::size_t slot = firstSlot(hash);
        for (; m_slots[slot].point >= 0; slot = nextSlot(slot)) {
            if (m_slots[slot].tag == tagOf(hash) && keyOf(pointAt(m_slots[slot])) == key) {
                return m_slots[slot].point;
            }
        }
        m_slots[slot] = {tagOf(hash), fresh};
        ++m_used;
        return fresh;
    }

private:
    // The tag keeps a search from looking at other points, which lie elsewhere.
    struct Slot {
        std::uint32_t tag;
        int point;  // -1: free
    };

    static constexpr std::size_t kPointsAhead = 16;
    static constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15u;

    // Every bit of the key reaches every one of the upper bits. Points whose parts have few bits
    // set, as those of a grid, would crowd the lower ones after a single multiplication.
    std::uint64_t hashOf(std::uint64_t key) const {
        key = (key ^ m_seed) * kMixer;
        return (key ^ key >> 32) * kMixer;
    }
    static std::uint32_t tagOf(std::uint64_t hash) { return static_cast<std::uint32_t>(hash); }
    std::size_t firstSlot(std::uint64_t hash) const {
        return static_cast<std::size_t>(hash >> m_shift);
    }
    std::size_t nextSlot(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }
    const BXVector2f& pointAt(const Slot& slot) const {
        return m_points[static_cast<std::size_t>(slot.point)];
    }

    // Also takes in the points that were made before there was a table. By the points and not by
    // the slots: their memory lies in a row.
    void grow() {
        constexpr std::size_t kFewest = 128;
        m_slots.assign(std::max(kFewest, 4 * m_slots.size()), Slot{0, -1});
        m_shift = 64;
        for (std::size_t size = m_slots.size(); size > 1; size /= 2) --m_shift;
        m_used = 0;
        for (std::size_t point = m_first; point < m_points.size(); ++point) {
            if (point + kPointsAhead < m_points.size()) fetch(m_points[point + kPointsAhead]);
            if (hasNaN(m_points[point])) continue;
            const std::uint64_t hash = hashOf(keyOf(m_points[point]));
            std::size_t slot = firstSlot(hash);
            while (m_slots[slot].point >= 0) slot = nextSlot(slot);
            m_slots[slot] = {tagOf(hash), static_cast<int>(point)};
            ++m_used;
        }
    }

    const BXArray<BXVector2f>& m_points;
    std::size_t m_first = 0;    // the first point of the vertex
    std::vector<Slot> m_slots;  // a power of two of them
    int m_shift = 64;           // leaves of a hash the bits that number the slots
    std::uint64_t m_seed;
    std::size_t m_used = 0;
};

// The points of one vertex, found again by their UV.
class VertexPoints {
public:
    explicit VertexPoints(BXArray<BXVector2f>& points) : m_points(points), m_table(points) {}

    void beginVertex() {
        m_first = m_points.size();
        m_table.begin(m_first);
    }

    // Has fetched what indexOf looks at first at a vertex of many points. Inline by force: a call
    // that does nothing but fetch counts as one without effect, and GCC drops it.
    __attribute__((always_inline)) void fetch(const BXVector2f& uv) const { m_table.fetch(uv); }

    // The index of the vertex's point with this UV, which is made if there is none.
    int indexOf(const BXVector2f& uv) {
        const std::size_t count = m_points.size() - m_first;
        if (count >= kPointsForTable) return indexByTable(uv);
        const BXVector2f* const points = m_points.data() + m_first;
        for (std::size_t i = 0; i < count; ++i) {
            if (points[i].x == uv.x && points[i].y == uv.y) return static_cast<int>(m_first + i);
        }
        return add(uv);
    }

private:
    int add(const BXVector2f& uv) {
        m_points.push_back(uv);
        return static_cast<int>(m_points.size()) - 1;
    }

    int indexByTable(const BXVector2f& uv) {
        if (hasNaN(uv)) return add(uv);
        const int fresh = static_cast<int>(m_points.size());
        const int index = m_table.findOrAdd(uv, fresh);
        return index == fresh ? add(uv) : index;
    }

    BXArray<BXVector2f>& m_points;
    std::size_t m_first = 0;
    PointTable m_table;
};

// So many corners ahead memory is fetched whose place only their vertex tells.
constexpr std::size_t kAhead = 32;

// Puts in place of each corner's vertex the vertex's corner before it, or -1, and takes the UV from
// corners without a vertex. The result is the last corner of each vertex.
std::vector<int> chainCorners(BXArray<int>& corners, std::size_t vertexCount,
                              BXArray<int>& uvIndices) {
    std::vector<int> last(vertexCount, -1);
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
        const int vertex = corners[corner];
        if (corner + kAhead < corners.size() && corners[corner + kAhead] >= 0) {
            __builtin_prefetch(&last[static_cast<std::size_t>(corners[corner + kAhead])], 1);
        }
        if (vertex < 0) {
            uvIndices[corner] = -1;
            continue;
        }
        int& head = last[static_cast<std::size_t>(vertex)];
        corners[corner] = head;
        head = static_cast<int>(corner);
    }
    return last;
}

// Vertices by their rank among those that have a corner: the order stays, and the chains' memory
// does not depend on the numbers that a caller or a file may hold.
std::size_t rankVertices(BXArray<int>& corners) {
    std::vector<int> used(corners.begin(), corners.end());
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    used.erase(used.begin(), std::lower_bound(used.begin(), used.end(), 0));
    for (int& vertex : corners) {
        if (vertex < 0) continue;
        vertex =
            static_cast<int>(std::lower_bound(used.begin(), used.end(), vertex) - used.begin());
    }
    return used.size();
}

std::size_t vertexCountOf(BXArray<int>& corners) {
    const int largest = *std::max_element(corners.begin(), corners.end());
    const std::size_t count = largest < 0 ? 0 : static_cast<std::size_t>(largest) + 1;
    constexpr std::size_t kVerticesForACorner = 4;
    return count <= kVerticesForACorner * corners.size() ? count : rankVertices(corners);
}

BXVector2f uvAt(const BXArray<BXVector2f>& uvs, int index) {
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < uvs.size();
    return isThere ? uvs[static_cast<std::size_t>(index)] : BXVector2f();
}

// Walks the chains of many vertices side by side: where corners lie scattered, each step of a chain
// waits for memory, and the steps of different chains wait together.
class Welder {
public:
    Welder(const BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices, const BXArray<int>& previous,
           BXArray<BXVector2f>& points)
        : m_uvs(uvs), m_uvIndices(uvIndices), m_previous(previous), m_points(points) {}

    static constexpr std::size_t kVerticesAtOnce = 64;

    void weld(const int* last, std::size_t vertices) {
        for (std::size_t i = 0; i < vertices; ++i) {
            m_chains[i].next = last[i];
            m_chains[i].length = 0;
            fetch(last[i]);
        }
        followChains(vertices);
        for (std::size_t i = 0; i < vertices; ++i) findIndices(m_chains[i]);
        for (std::size_t i = 0; i < vertices; ++i) findUVs(m_chains[i]);
        for (std::size_t i = 0; i < vertices; ++i) weld(m_chains[i]);
    }

private:
    static constexpr int kCornersAtOnce = 8;

    // The last corners of a vertex, and the one before them.
    struct Chain {
        int next;
        int length;
        int corners[kCornersAtOnce];
        int indices[kCornersAtOnce];
        BXVector2f uvs[kCornersAtOnce];
    };

    static std::size_t at(int corner) { return static_cast<std::size_t>(corner); }

    // Has fetched what the next step of a chain looks at. Inline by force, as above.
    __attribute__((always_inline)) void fetch(int corner) const {
        if (corner < 0) return;
        __builtin_prefetch(&m_previous[at(corner)]);
        __builtin_prefetch(&m_uvIndices[at(corner)], 1);
    }

    void followChains(std::size_t vertices) {
        bool any = true;
        for (int step = 0; any && step < kCornersAtOnce; ++step) {
            any = false;
            for (std::size_t i = 0; i < vertices; ++i) {
                Chain& chain = m_chains[i];
                if (chain.next < 0) continue;
                chain.corners[chain.length++] = chain.next;
                chain.next = m_previous[at(chain.next)];
                fetch(chain.next);
                any = true;
            }
        }
    }

    void findIndices(Chain& chain) const {
        for (int i = 0; i < chain.length; ++i) {
            const int index = m_uvIndices[at(chain.corners[i])];
            chain.indices[i] = index;
            if (index >= 0) __builtin_prefetch(m_uvs.data() + index);
        }
    }

    void findUVs(Chain& chain) const {
        for (int i = 0; i < chain.length; ++i) chain.uvs[i] = uvAt(m_uvs, chain.indices[i]);
    }

    void weld(const Chain& chain) {
        m_points.beginVertex();
        for (int i = 0; i < chain.length; ++i) {
            m_uvIndices[at(chain.corners[i])] = m_points.indexOf(chain.uvs[i]);
        }
        for (int corner = chain.next; corner >= 0;) corner = weldSome(corner);
    }

    // The next corners of a vertex that has many. The one behind them, or -1.
    int weldSome(int corner) {
        constexpr int kSome = 32;
        int corners[kSome];
        BXVector2f uvs[kSome];
        int count = 0;
        for (; count < kSome && corner >= 0; ++count, corner = m_previous[at(corner)]) {
            corners[count] = corner;
            uvs[count] = uvAt(m_uvs, m_uvIndices[at(corner)]);
            m_points.fetch(uvs[count]);
        }
        for (int i = 0; i < count; ++i) {
            m_uvIndices[at(corners[i])] = m_points.indexOf(uvs[i]);
        }
        return corner;
    }

    const BXArray<BXVector2f>& m_uvs;
    BXArray<int>& m_uvIndices;
    const BXArray<int>& m_previous;
    VertexPoints m_points;
    Chain m_chains[kVerticesAtOnce] = {};
};

}  // namespace

void weldUVs(BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices, BXArray<int>&& vertexIndices) {
    const std::vector<int> last =
        chainCorners(vertexIndices, vertexCountOf(vertexIndices), uvIndices);
    BXArray<BXVector2f> points;
    points.reserve(vertexIndices.size());
    Welder welder(uvs, uvIndices, vertexIndices, points);
    for (std::size_t vertex = 0; vertex < last.size(); vertex += Welder::kVerticesAtOnce) {
        welder.weld(&last[vertex], std::min(Welder::kVerticesAtOnce, last.size() - vertex));
    }
    uvs.swap(points);
}

bool BXUVMergeAlgo::mergeUVs(BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices,
                             const BXArray<int>& vertexIndices, int vertexCount) {
    if (uvs.empty() || vertexIndices.empty()) return false;
    const int largest = *std::max_element(vertexIndices.begin(), vertexIndices.end());
    if (vertexCount >= 0 && largest >= vertexCount) return false;
    const std::size_t corners = vertexIndices.size();
    if (uvIndices.empty()) {
        uvIndices.resize(corners);
        std::iota(uvIndices.begin(), uvIndices.end(), 0);
    }
    uvIndices.resize(corners, -1);
    weldUVs(uvs, uvIndices, BXArray<int>(vertexIndices));
    return true;
}

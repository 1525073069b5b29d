#include "formats/merge_uvs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <unordered_map>
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

// The points of one vertex, found again by their UV.
class VertexPoints {
public:
    explicit VertexPoints(BXArray<BXVector2f>& points) : m_points(points) {}

    void beginVertex() {
        m_first = m_points.size();
        if (!m_table.empty()) m_table.clear();
    }

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
        // Equal to nothing, so each is a point of its own.
        if (hasNaN(uv)) return add(uv);
        if (m_table.empty()) fillTable();
        const auto found = m_table.emplace(keyOf(uv), static_cast<int>(m_points.size()));
        if (found.second) m_points.push_back(uv);
        return found.first->second;
    }

    void fillTable() {
        for (std::size_t i = m_first; i < m_points.size(); ++i) {
            if (!hasNaN(m_points[i])) m_table.emplace(keyOf(m_points[i]), static_cast<int>(i));
        }
    }

    BXArray<BXVector2f>& m_points;
    std::size_t m_first = 0;
    std::unordered_map<std::uint64_t, int> m_table;
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

    void followChains(std::size_t vertices) {
        bool any = true;
        for (int step = 0; any && step < kCornersAtOnce; ++step) {
            any = false;
            for (std::size_t i = 0; i < vertices; ++i) {
                Chain& chain = m_chains[i];
                if (chain.next < 0) continue;
                chain.corners[chain.length++] = chain.next;
                chain.next = m_previous[at(chain.next)];
                any = true;
            }
        }
    }

    void findIndices(Chain& chain) const {
        for (int i = 0; i < chain.length; ++i) chain.indices[i] = m_uvIndices[at(chain.corners[i])];
    }

    void findUVs(Chain& chain) const {
        for (int i = 0; i < chain.length; ++i) chain.uvs[i] = uvAt(m_uvs, chain.indices[i]);
    }

    void weld(const Chain& chain) {
        m_points.beginVertex();
        for (int i = 0; i < chain.length; ++i) {
            m_uvIndices[at(chain.corners[i])] = m_points.indexOf(chain.uvs[i]);
        }
        for (int corner = chain.next; corner >= 0; corner = m_previous[at(corner)]) {
            int& index = m_uvIndices[at(corner)];
            index = m_points.indexOf(uvAt(m_uvs, index));
        }
    }

    const BXArray<BXVector2f>& m_uvs;
    BXArray<int>& m_uvIndices;
    const BXArray<int>& m_previous;
    VertexPoints m_points;
    Chain m_chains[kVerticesAtOnce];
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

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

#include "formats/bx_uv_merge_algo.h"

namespace {

// Above this many points at one vertex a table finds an equal one sooner than a look at each.
constexpr std::size_t kPointsForTable = 24;

std::size_t vertexCountOf(const BXArray<int>& vertexIndices, int vertexCount) {
    if (vertexCount >= 0) return static_cast<std::size_t>(vertexCount);
    const int largest = *std::max_element(vertexIndices.begin(), vertexIndices.end());
    return largest < 0 ? 0 : static_cast<std::size_t>(largest) + 1;
}

// The corners of each vertex, linked from its last corner back to its first.
struct CornerChains {
    CornerChains(const BXArray<int>& vertexIndices, std::size_t vertexCount)
        : last(vertexCount, -1), previous(vertexIndices.size(), -1) {
        for (std::size_t corner = 0; corner < vertexIndices.size(); ++corner) {
            const int vertex = vertexIndices[corner];
            if (vertex < 0 || static_cast<std::size_t>(vertex) >= vertexCount) continue;
            int& head = last[static_cast<std::size_t>(vertex)];
            previous[corner] = head;
            head = static_cast<int>(corner);
        }
    }

    std::vector<int> last;
    std::vector<int> previous;
};

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
    explicit VertexPoints(const BXArray<BXVector2f>& points) : m_points(points) {}

    void begin() {
        m_first = m_points.size();
        m_table.clear();
    }

    // The index of the vertex's point with this UV, or -1.
    int find(const BXVector2f& uv) {
        if (hasNaN(uv)) return -1;
        if (m_points.size() - m_first < kPointsForTable) return findOneByOne(uv);
        if (m_table.empty()) fillTable();
        const auto known = m_table.find(keyOf(uv));
        return known == m_table.end() ? -1 : known->second;
    }

    // To be called after each point that was appended.
    void added() {
        if (m_table.empty() || hasNaN(m_points.back())) return;
        m_table.emplace(keyOf(m_points.back()), static_cast<int>(m_points.size()) - 1);
    }

private:
    int findOneByOne(const BXVector2f& uv) const {
        for (std::size_t i = m_first; i < m_points.size(); ++i) {
            if (m_points[i].x == uv.x && m_points[i].y == uv.y) return static_cast<int>(i);
        }
        return -1;
    }

    void fillTable() {
        for (std::size_t i = m_first; i < m_points.size(); ++i) {
            if (!hasNaN(m_points[i])) m_table.emplace(keyOf(m_points[i]), static_cast<int>(i));
        }
    }

    const BXArray<BXVector2f>& m_points;
    std::size_t m_first = 0;
    std::unordered_map<std::uint64_t, int> m_table;
};

// The UV that each corner had before the merge.
class CornerUVs {
public:
    CornerUVs(const BXArray<BXVector2f>& uvs, const BXArray<int>& indices)
        : m_uvs(uvs), m_indices(indices) {}

    BXVector2f operator[](std::size_t corner) const {
        if (m_indices.empty()) return corner < m_uvs.size() ? m_uvs[corner] : BXVector2f();
        if (corner >= m_indices.size() || m_indices[corner] < 0) return BXVector2f();
        const auto index = static_cast<std::size_t>(m_indices[corner]);
        return index < m_uvs.size() ? m_uvs[index] : BXVector2f();
    }

private:
    const BXArray<BXVector2f>& m_uvs;
    const BXArray<int>& m_indices;
};

}  // namespace

bool BXUVMergeAlgo::mergeUVs(BXArray<BXVector2f>& uvs, BXArray<int>& uvIndices,
                             const BXArray<int>& vertexIndices, int vertexCount) {
    if (uvs.empty() || vertexIndices.empty()) return false;

    const CornerChains chains(vertexIndices, vertexCountOf(vertexIndices, vertexCount));
    const CornerUVs cornerUVs(uvs, uvIndices);
    BXArray<BXVector2f> points;
    BXArray<int> pointIndices(vertexIndices.size(), -1);
    VertexPoints vertexPoints(points);
    for (const int last : chains.last) {
        vertexPoints.begin();
        for (int corner = last; corner >= 0;) {
            const auto c = static_cast<std::size_t>(corner);
            const BXVector2f uv = cornerUVs[c];
            int point = vertexPoints.find(uv);
            if (point < 0) {
                point = static_cast<int>(points.size());
                points.push_back(uv);
                vertexPoints.added();
            }
            pointIndices[c] = point;
            corner = chains.previous[c];
        }
    }
    uvs.swap(points);
    uvIndices.swap(pointIndices);
    return true;
}

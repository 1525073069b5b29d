#include "bench/maya_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Quad = std::array<int, 4>;

// The grid's parts under the names that the file gives them.
class Parts {
public:
    explicit Parts(const MayaGrid& grid) : m_side(grid.side) {
        const std::size_t vertexCount = size(m_side + 1) * size(m_side + 1);
        vertexOf = names(vertexCount, grid.shuffled, 1);
        const std::size_t edgeCount = 2 * size(m_side) * size(m_side + 1);
        edgeOf = names(edgeCount, false, 2);
        quads.resize(size(m_side) * size(m_side));
        std::iota(quads.begin(), quads.end(), 0);
        placeOf.resize(vertexCount);
        for (std::size_t i = 0; i < vertexCount; ++i)
            placeOf[size(vertexOf[i])] = static_cast<int>(i);
    }

    int at(int column, int row) const { return vertexOf[size(row * (m_side + 1) + column)]; }
    int across(int column, int row) const { return edgeOf[size(row * m_side + column)]; }
    int up(int column, int row) const {
        return edgeOf[size(m_side * (m_side + 1) + row * (m_side + 1) + column)];
    }
    int side() const { return m_side; }

    std::array<double, 3> position(int vertex) const {
        const int place = placeOf[size(vertex)];
        const double x = place % (m_side + 1), y = place / (m_side + 1);
        return {x * 0.1, 10.0 * std::sin(x * 0.01) * std::cos(y * 0.013), y * 0.1};
    }
    std::array<double, 2> uv(int column, int row) const {
        return {double(column) / m_side, double(row) / m_side};
    }

    std::vector<int> vertexOf, edgeOf, placeOf;
    std::vector<int> quads;

private:
    static std::size_t size(int n) { return static_cast<std::size_t>(n); }
    static std::vector<int> names(std::size_t count, bool shuffled, unsigned seed) {
        std::vector<int> all(count);
        std::iota(all.begin(), all.end(), 0);
        std::mt19937 random(seed);
        if (shuffled) std::shuffle(all.begin(), all.end(), random);
        return all;
    }

    int m_side;
};

class Text {
public:
    explicit Text(const std::string& path) : m_file(std::fopen(path.c_str(), "wb")) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { std::fclose(m_file); }

    template <class... Values>
    void put(const char* format, Values... values) {
        std::fprintf(m_file, format, values...);
    }

    // The count of a thing, then its entries in ranges.
    template <class Put>
    void ranges(const char* count, const char* name, const char* type, int inRange, int total,
                Put putEntry) {
        put(count, total);
        for (int first = 0; first < total; first += inRange) {
            const int end = std::min(first + inRange, total);
            put("\tsetAttr \"%s[%d:%d]\"%s\n", name, first, end - 1, type);
            for (int i = first; i < end; ++i) putEntry(i);
            put(";\n");
        }
    }

private:
    std::FILE* m_file;
};

struct Corner {
    int column, row;
};

void cornersOf(int quad, int side, Corner (&corners)[4]) {
    const int column = quad % side, row = quad / side;
    corners[0] = {column, row};
    corners[1] = {column + 1, row};
    corners[2] = {column + 1, row + 1};
    corners[3] = {column, row + 1};
}

}  // namespace

void MayaGrid::writeScene(const std::string& path) const {
    const Parts parts(*this);
    const int quadCount = static_cast<int>(parts.quads.size());
    Text text(path);
    text.put("//Maya ASCII 8.5 scene\nrequires maya \"8.5\";\ncreateNode mesh -n \"grid\";\n");
    text.ranges(
        "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";"
        "setAttr -s %d \".uvst[0].uvsp\";\n",
        ".uvst[0].uvsp", " -type \"float2\"", 250, 4 * quadCount, [&](int i) {
            Corner corners[4];
            cornersOf(parts.quads[static_cast<std::size_t>(i / 4)], side, corners);
            const auto uv = parts.uv(corners[i % 4].column, corners[i % 4].row);
            text.put(" %.5f %.5f", uv[0], uv[1]);
        });
    text.ranges("\tsetAttr -s %d \".vt\";\n", ".vt", "", 166, (side + 1) * (side + 1), [&](int i) {
        const auto p = parts.position(i);
        text.put(" %.6g %.6g %.6g", p[0], p[1], p[2]);
    });
    std::vector<std::array<int, 2>> edges(parts.edgeOf.size());
    for (int row = 0; row <= side; ++row) {
        for (int column = 0; column < side; ++column) {
            edges[static_cast<std::size_t>(parts.across(column, row))] = {
                parts.at(column, row), parts.at(column + 1, row)};
            edges[static_cast<std::size_t>(parts.up(row, column))] = {parts.at(row, column),
                                                                      parts.at(row, column + 1)};
        }
    }
    text.ranges("\tsetAttr -s %d \".ed\";\n", ".ed", "", 165, static_cast<int>(edges.size()),
                [&](int i) {
                    const auto& edge = edges[static_cast<std::size_t>(i)];
                    text.put(" %d %d 0", edge[0], edge[1]);
                });
    text.ranges("\tsetAttr -s %d \".fc\";\n", ".fc", " -type \"polyFaces\"", 500, quadCount,
                [&](int i) {
                    const int quad = parts.quads[static_cast<std::size_t>(i)];
                    const int column = quad % side, row = quad / side;
                    text.put(" f 4 %d %d %d %d mu 0 4 %d %d %d %d", parts.across(column, row),
                             parts.up(column + 1, row), ~parts.across(column, row + 1),
                             ~parts.up(column, row), 4 * i, 4 * i + 1, 4 * i + 2, 4 * i + 3);
                });
    text.put("createNode transform -n \"last\";\n// End of grid.ma\n");
}

void MayaGrid::writeObj(const std::string& path) const {
    const Parts parts(*this);
    Text text(path);
    for (int i = 0; i < (side + 1) * (side + 1); ++i) {
        const auto p = parts.position(i);
        text.put("v %.6g %.6g %.6g\n", p[0], p[1], p[2]);
    }
    for (const int quad : parts.quads) {
        Corner corners[4];
        cornersOf(quad, side, corners);
        for (const Corner& corner : corners) {
            const auto uv = parts.uv(corner.column, corner.row);
            text.put("vt %.5f %.5f\n", uv[0], uv[1]);
        }
    }
    int next = 1;
    for (const int quad : parts.quads) {
        Corner corners[4];
        cornersOf(quad, side, corners);
        text.put("f");
        for (const Corner& corner : corners) {
            text.put(" %d/%d", parts.at(corner.column, corner.row) + 1, next++);
        }
        text.put("\n");
    }
}

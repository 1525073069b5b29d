#include "tools/vek/mesh_surface.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr double kPi = 3.14159265358979323846;

struct ProfilePoint {
    double radius;
    double height;
};

// From the middle of the foot up the outside, over the rim, and down the inside to its floor.
constexpr ProfilePoint kProfile[] = {
    {0.00, 0.00}, {0.45, 0.00}, {0.52, 0.04}, {0.66, 0.35}, {0.82, 0.80},
    {0.84, 1.20}, {0.70, 1.70}, {0.46, 2.20}, {0.42, 2.50}, {0.52, 2.80},
    {0.54, 2.85}, {0.48, 2.86}, {0.35, 2.50}, {0.38, 2.20}, {0.62, 1.70},
    {0.76, 1.20}, {0.74, 0.80}, {0.58, 0.35}, {0.40, 0.16}, {0.00, 0.14},
};
constexpr double kHeight = 2.86;

// A smooth curve through b and c, at 0 <= t <= 1 between them; a and d are their neighbours.
double curve(double a, double b, double c, double d, double t) {
    return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

ProfilePoint profileAt(double along) {
    const std::size_t last = std::size(kProfile) - 1;
    const double scaled = along * static_cast<double>(last);
    const std::size_t i = std::min(static_cast<std::size_t>(scaled), last - 1);
    const ProfilePoint& a = kProfile[i == 0 ? 0 : i - 1];
    const ProfilePoint& b = kProfile[i];
    const ProfilePoint& c = kProfile[i + 1];
    const ProfilePoint& d = kProfile[std::min(i + 2, last)];
    const double t = scaled - static_cast<double>(i);
    return {curve(a.radius, b.radius, c.radius, d.radius, t),
            curve(a.height, b.height, c.height, d.height, t)};
}

// Inside and outside are bent alike, so the wall keeps its thickness and never meets itself.
MeshPoint bent(const ProfilePoint& point, double angle) {
    const double h = point.height / kHeight;
    const double lobes = 0.10 * h * std::sin(3 * angle + 2 * h) + 0.05 * std::cos(angle - 0.4);
    const double lip = 0.80 * std::pow(h, 6) * std::exp(6 * (std::cos(angle - 0.5) - 1));
    const double radius = point.radius * (1 + lobes + lip);
    return {static_cast<float>(radius * std::cos(angle) + 0.30 * h * h),
            static_cast<float>(point.height),
            static_cast<float>(radius * std::sin(angle) - 0.30 * h * h * h)};
}

// A grid that runs round the vase in `segments` and along the profile in `rings`. Its first and
// last line are single points.
class SurfaceGrid {
public:
    explicit SurfaceGrid(std::size_t faces) {
        // A quarter of the cells is cut in two; cells are about as high as they are wide.
        const double cells = static_cast<double>(faces) / 1.25;
        m_segments = static_cast<std::size_t>(std::lround(std::sqrt(cells / 2)));
        m_rings = static_cast<std::size_t>(std::lround(cells / static_cast<double>(m_segments)));
    }

    Mesh build() {
        addPositions();
        addUVs();
        for (std::size_t ring = 0; ring < m_rings; ++ring) {
            for (std::size_t segment = 0; segment < m_segments; ++segment) addCell(ring, segment);
        }
        return std::move(m_mesh);
    }

private:
    struct Corner {
        std::size_t line;
        std::size_t column;
    };

    double angleOf(std::size_t column) const {
        return 2 * kPi * static_cast<double>(column) / static_cast<double>(m_segments);
    }
    double alongOf(std::size_t line) const {
        return static_cast<double>(line) / static_cast<double>(m_rings);
    }
    bool isPole(std::size_t line) const { return line == 0 || line == m_rings; }

    void addPositions() {
        m_mesh.positions.reserve((m_rings - 1) * m_segments + 2);
        for (std::size_t line = 0; line <= m_rings; ++line) {
            const ProfilePoint point = profileAt(alongOf(line));
            const std::size_t columns = isPole(line) ? 1 : m_segments;
            for (std::size_t column = 0; column < columns; ++column) {
                m_mesh.positions.push_back(bent(point, angleOf(column)));
            }
        }
    }

    // Each line has one UV more than vertices: the seam is at both ends of the map.
    void addUVs() {
        m_mesh.uvs.reserve((m_rings + 1) * (m_segments + 1));
        for (std::size_t line = 0; line <= m_rings; ++line) {
            for (std::size_t column = 0; column <= m_segments; ++column) {
                const double middle = isPole(line) ? 0.5 : 0.0;
                const double u = (static_cast<double>(column) + middle) / double(m_segments);
                m_mesh.uvs.push_back({static_cast<float>(u), static_cast<float>(alongOf(line))});
            }
        }
    }

    std::int32_t vertexAt(const Corner& corner) const {
        if (corner.line == 0) return 0;
        const std::size_t before = 1 + (corner.line - 1) * m_segments;
        const std::size_t column = corner.line == m_rings ? 0 : corner.column % m_segments;
        return static_cast<std::int32_t>(before + column);
    }
    std::int32_t uvAt(const Corner& corner) const {
        return static_cast<std::int32_t>(corner.line * (m_segments + 1) + corner.column);
    }

    void addFace(const Corner& a, const Corner& b, const Corner& c) {
        m_mesh.faces.push_back({vertexAt(a), vertexAt(b), vertexAt(c), kNoCorner});
        m_mesh.corners.push_back({uvAt(a), uvAt(b), uvAt(c), kNoCorner});
    }
    void addFace(const Corner& a, const Corner& b, const Corner& c, const Corner& d) {
        m_mesh.faces.push_back({vertexAt(a), vertexAt(b), vertexAt(c), vertexAt(d)});
        m_mesh.corners.push_back({uvAt(a), uvAt(b), uvAt(c), uvAt(d)});
    }

    // Up the profile first, then round: counter-clockwise seen from outside.
    void addCell(std::size_t ring, std::size_t segment) {
        const Corner a = {ring, segment};
        const Corner b = {ring + 1, segment};
        const Corner c = {ring + 1, segment + 1};
        const Corner d = {ring, segment + 1};
        if (ring == 0) return addFace(a, b, c);
        if (ring + 1 == m_rings) return addFace(a, b, d);
        if (ring % 8 >= 2) return addFace(a, b, c, d);
        if (segment % 2 == 0) {
            addFace(a, b, c);
            addFace(a, c, d);
        } else {
            addFace(a, b, d);
            addFace(b, c, d);
        }
    }

    std::size_t m_segments = 0;
    std::size_t m_rings = 0;
    Mesh m_mesh;
};

}  // namespace

Mesh makeSurface(std::size_t faces) {
    return SurfaceGrid(std::clamp(faces, kFewestSurfaceFaces, kMostSurfaceFaces)).build();
}

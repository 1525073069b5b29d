#include "given_mesh.h"

#include <cmath>
#include <cstring>

namespace {

std::size_t lastBlock(const ExchangeFile& file, BlockId from, BlockId to) {
    std::size_t found = file.blocks.size();
    for (std::size_t i = 0; i < file.blocks.size(); ++i) {
        if (file.blocks[i].id >= from && file.blocks[i].id <= to) found = i;
    }
    return found;
}

std::string takePositions(const Block& block, std::vector<Point>& positions) {
    if (block.count > block.payload.size() / sizeof(Point)) {
        return "The mesh claims more vertices than it holds.";
    }
    positions.resize(block.count);
    if (block.count > 0) {
        std::memcpy(positions.data(), block.payload.data(), block.count * sizeof(Point));
    }
    for (const Point& point : positions) {
        for (const float coordinate : point) {
            if (!std::isfinite(coordinate)) return "The mesh has a position that is not a number.";
        }
    }
    return "";
}

bool isTriangle(const std::array<std::int32_t, 4>& vertices, std::uint32_t kind) {
    switch (kind) {
        case kFacesNegative:
            return vertices[3] < 0;
        case kFacesRepeated:
            return vertices[3] == vertices[2];
        default:
            return true;
    }
}

bool isInRange(const Face& face, std::size_t vertexCount) {
    for (std::size_t i = 0; i < face.corners; ++i) {
        const std::int32_t vertex = face.vertices[i];
        if (vertex < 0 || static_cast<std::size_t>(vertex) >= vertexCount) return false;
    }
    return true;
}

std::string takeFaces(const Block& block, GivenMesh& mesh) {
    const std::size_t stored = (block.id == kTriangles ? 3 : 4) * sizeof(std::int32_t);
    if (block.count > block.payload.size() / stored) {
        return "The mesh claims more faces than it holds.";
    }
    mesh.faces.resize(block.count);
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        Face& face = mesh.faces[i];
        std::memcpy(face.vertices.data(), block.payload.data() + i * stored, stored);
        face.corners = isTriangle(face.vertices, block.id) ? 3 : 4;
        if (!isInRange(face, mesh.positions.size())) {
            return "Face " + std::to_string(i) + " of the mesh uses a vertex that is not there.";
        }
    }
    return "";
}

}  // namespace

std::string takeMesh(const ExchangeFile& file, GivenMesh& mesh) {
    const std::size_t vertices = lastBlock(file, kVertices, kVertices);
    const std::size_t faces = lastBlock(file, kFacesNegative, kTriangles);
    if (vertices == file.blocks.size()) return "The exchange file holds no vertices.";
    if (faces == file.blocks.size()) return "The exchange file holds no faces.";
    const std::string problem = takePositions(file.blocks[vertices], mesh.positions);
    return problem.empty() ? takeFaces(file.blocks[faces], mesh) : problem;
}

void putPositions(const std::vector<Point>& positions, ExchangeFile& file) {
    const std::size_t vertices = lastBlock(file, kVertices, kVertices);
    if (vertices == file.blocks.size() || positions.empty()) return;
    std::memcpy(file.blocks[vertices].payload.data(), positions.data(),
                positions.size() * sizeof(Point));
}

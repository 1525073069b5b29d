#include "tools/vek/mesh_file.h"

#include <cstdio>
#include <cstring>
#include <limits>

#include "formats/bx_vek_file.h"

namespace {

bool isMap(std::uint32_t id) {
    return id == kVekMap0 || id == kVekMap1 || id == kVekMap2;
}

class MeshWriter {
public:
    explicit MeshWriter(const std::string& path) : m_file(path.c_str(), "wb") {}

    bool write(const Mesh& mesh) {
        bool done = m_file.writeVekFileHeader();
        done = done && writeBlock(kVekVertices, mesh.positions);
        done = done && writeBlock(kVekFacesNegative, mesh.faces);
        done = done && writeBlock(kVekCorners1, mesh.corners);
        done = done && writeBlock(kVekUVList, mesh.uvs);
        for (const MeshMap& map : mesh.maps) {
            const char* name = map.name.c_str();
            done = done && writeBytes(map.kind, map.param, 0, std::strlen(name) + 1, name);
        }
        for (const MeshBlock& block : mesh.otherBlocks) {
            done = done && writeBytes(block.id, block.param, block.count, block.payload.size(),
                                      block.payload.data());
        }
        return done && m_file.writeEndVekBlock() && std::fflush(m_file.m_file) == 0;
    }

private:
    template <class Element>
    bool writeBlock(std::uint32_t id, const std::vector<Element>& elements) {
        return writeBytes(id, 0.0f, elements.size(), elements.size() * sizeof(Element),
                          elements.data());
    }

    bool writeBytes(std::uint32_t id, float param, std::size_t count, std::size_t size,
                    const void* bytes) {
        constexpr std::size_t kLargest = std::numeric_limits<std::uint32_t>::max() - 19;
        if (size > kLargest) return false;
        return m_file.writeVekBlock(id, param, static_cast<unsigned>(count),
                                    static_cast<unsigned>(size), bytes);
    }

    BXVekFile m_file;
};

// The blocks as they lie in the file, each complete; of a kind that occurs twice, the last.
struct MeshBlocks {
    MeshBlock vertices;
    MeshBlock faces;
    MeshBlock corners;
    MeshBlock uvs;
};

// Reads the framing. The failures are sentences without the file's name.
class BlockReader {
public:
    explicit BlockReader(const std::string& path) : m_file(path.c_str(), "rb") {
        if (!m_file.isOpen()) return;
        fseeko(m_file.m_file, 0, SEEK_END);
        m_size = ftello(m_file.m_file);
        fseeko(m_file.m_file, 0, SEEK_SET);
    }

    // Empty when all went well.
    std::string read(MeshBlocks& blocks, Mesh& mesh) {
        if (!m_file.isOpen()) return "cannot be opened";
        if (!m_file.readVekFileHeader()) return "is not a mesh exchange file";
        MeshBlock block;
        for (;;) {
            const std::string failure = readBlock(block);
            if (!failure.empty()) return failure;
            if (block.id == kVekEnd) return "";
            keep(block, blocks, mesh);
        }
    }

private:
    std::string readBlock(MeshBlock& block) {
        const std::int64_t offset = ftello(m_file.m_file);
        const std::string place = " at offset " + std::to_string(offset);
        Vek_Header header;
        if (!m_file.readVekBlockHeader(header)) return "has no end block" + place;
        block = {header.id, header.count, header.param, ""};
        if (header.id == kVekEnd) return "";
        const std::int64_t size = std::int64_t{header.blockSize} - kVekBlockHeaderSize;
        if (size < 0) return "holds a block with an impossible size" + place;
        if (size > m_size - offset - kVekBlockHeaderSize) return "ends inside the block" + place;
        block.payload.resize(static_cast<std::size_t>(size));
        const std::size_t came =
            std::fread(block.payload.data(), 1, block.payload.size(), m_file.m_file);
        return came == block.payload.size() ? "" : "cannot be read" + place;
    }

    static void keep(MeshBlock& block, MeshBlocks& blocks, Mesh& mesh) {
        switch (block.id) {
            case kVekVertices:
                blocks.vertices = std::move(block);
                return;
            case kVekFacesNegative:
            case kVekFacesRepeated:
            case kVekTriangles:
                blocks.faces = std::move(block);
                return;
            case kVekCorners1:
            case kVekCorners2:
                blocks.corners = std::move(block);
                return;
            case kVekUVList:
                blocks.uvs = std::move(block);
                return;
            default:
                break;
        }
        if (isMap(block.id)) {
            mesh.maps.push_back({block.id, block.payload.c_str(), block.param});
        } else {
            mesh.otherBlocks.push_back(std::move(block));
        }
    }

    BXVekFile m_file;
    std::int64_t m_size = 0;
};

// The elements that the block says it has. False when it does not hold that many.
template <class Element>
bool elementsOf(const MeshBlock& block, std::vector<Element>& elements) {
    if (block.count > block.payload.size() / sizeof(Element)) return false;
    elements.resize(block.count);
    // An empty vector has no memory to copy to.
    if (block.count > 0) {
        std::memcpy(elements.data(), block.payload.data(), block.count * sizeof(Element));
    }
    return true;
}

// As elementsOf, for values laid out like the faces: each kind becomes a negative fourth.
bool cornersOf(MeshBlock block, std::uint32_t faceKind, std::uint32_t faceCount,
               std::vector<MeshCorners>& corners) {
    block.count = faceCount;
    if (faceKind != kVekTriangles) return elementsOf(block, corners);
    std::vector<std::array<std::int32_t, 3>> triangles;
    if (!elementsOf(block, triangles)) return false;
    corners.clear();
    corners.reserve(triangles.size());
    for (const auto& t : triangles) corners.push_back({t[0], t[1], t[2], kNoCorner});
    return true;
}

// All kinds of triangles become one: the fourth of both vertices and corner values is kNoCorner.
void unifyTriangles(Mesh& mesh, std::uint32_t faceKind) {
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        MeshCorners& face = mesh.faces[i];
        const bool repeated = faceKind == kVekFacesRepeated && face[3] == face[2];
        if (isTriangle(face) || repeated) face[3] = mesh.corners[i][3] = kNoCorner;
    }
}

bool verticesAreThere(const Mesh& mesh, const MeshCorners& face) {
    for (std::size_t i = 0; i < cornerCount(face); ++i) {
        if (face[i] < 0 || static_cast<std::size_t>(face[i]) >= mesh.positions.size()) return false;
    }
    return true;
}

// A fourth index below zero marks a triangle in one kind of faces only.
bool hasStrayNegative(const Mesh& mesh, std::uint32_t faceKind) {
    if (faceKind != kVekFacesRepeated) return false;
    for (const MeshCorners& face : mesh.faces) {
        if (face[3] < 0) return true;
    }
    return false;
}

std::string assemble(const MeshBlocks& blocks, Mesh& mesh) {
    const MeshBlock& faces = blocks.faces;
    if (blocks.vertices.id == kVekEnd) return "holds no vertices";
    if (faces.id == kVekEnd) return "holds no faces";
    if (!elementsOf(blocks.vertices, mesh.positions)) return "claims more vertices than it holds";
    if (!cornersOf(faces, faces.id, faces.count, mesh.faces)) {
        return "claims more faces than it holds";
    }
    mesh.corners.assign(mesh.faces.size(), {kNoCorner, kNoCorner, kNoCorner, kNoCorner});
    const bool hasCorners = blocks.corners.id != kVekEnd;
    if (hasCorners && !cornersOf(blocks.corners, faces.id, faces.count, mesh.corners)) {
        return "holds fewer corner values than faces need";
    }
    if (!elementsOf(blocks.uvs, mesh.uvs)) return "claims more UVs than it holds";
    if (hasStrayNegative(mesh, faces.id)) return "has a face with a vertex that is not there";
    unifyTriangles(mesh, faces.id);
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        if (!verticesAreThere(mesh, mesh.faces[i])) {
            return "has a vertex that is not there in face " + std::to_string(i);
        }
    }
    return "";
}

}  // namespace

bool writeMesh(const std::string& path, const Mesh& mesh, std::string& error) {
    if (MeshWriter(path).write(mesh)) return true;
    error = "The mesh cannot be written: " + path;
    return false;
}

bool readMesh(const std::string& path, Mesh& mesh, std::string& error) {
    mesh = Mesh();
    MeshBlocks blocks;
    std::string failure = BlockReader(path).read(blocks, mesh);
    if (failure.empty()) failure = assemble(blocks, mesh);
    if (failure.empty()) return true;
    error = "The file " + failure + ": " + path;
    return false;
}

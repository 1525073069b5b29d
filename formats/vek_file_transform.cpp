#include "formats/vek_file_transform.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "formats/vek_blocks.h"
#include "formats/vek_face_rewind.h"
#include "formats/vek_header.h"
#include "foundation/bx_string.h"
#include "os/bx_file.h"

namespace {

// Small enough to stay in the processor's cache between reading and writing, and a multiple of
// every element's size.
constexpr std::int64_t kPiece = std::int64_t{48} * 4096;
constexpr std::int64_t kVertexSize = 12;

class Transform {
public:
    Transform(BXFile& file, std::int64_t size) : m_file(file), m_size(size) {}

    bool run(const VekPositionMap& map, bool rewind) {
        if (!findVekBlocks(m_file, m_size, m_blocks)) return false;
        // Memory first: when there is none, the file is still untouched.
        const std::int64_t room = std::min(2 * kPiece, m_size);
        m_buffer.reset(new char[static_cast<std::size_t>(room)]);
        const bool mapsVertices = m_blocks.vertices.id != 0 && !map.isIdentity();
        const bool rewindsFaces = m_blocks.faces.id != 0 && rewind;
        char magic[kVekMagicSize];
        if (m_file.readAt(0, magic, sizeof magic) != sizeof magic) return false;
        if (mapsVertices || rewindsFaces) {
            const char blank[kVekMagicSize] = {};
            if (!m_file.writeAt(0, blank, sizeof blank)) return false;
        }
        if (mapsVertices && !mapVertices(map)) return false;
        if (rewindsFaces && !rewindFaces()) return false;
        // Also where nothing changed: the file has been rewritten, and its time says so.
        return m_file.writeAt(0, magic, sizeof magic);
    }

private:
    // How many whole groups of `stride` bytes the file holds from `offset` on, at most `wanted`.
    std::int64_t groupsThere(std::int64_t offset, std::int64_t stride, std::int64_t wanted) const {
        return std::min(wanted, std::max<std::int64_t>(0, m_size - offset) / stride);
    }

    bool read(std::int64_t offset, char* bytes, std::int64_t count) const {
        return m_file.readAt(offset, bytes, static_cast<std::size_t>(count)) ==
               static_cast<std::size_t>(count);
    }

    bool write(std::int64_t offset, const char* bytes, std::int64_t count) {
        return m_file.writeAt(offset, bytes, static_cast<std::size_t>(count));
    }

    bool mapVertices(const VekPositionMap& map) {
        const VekBlockPlace& vertices = m_blocks.vertices;
        const std::int64_t count = groupsThere(vertices.payload, kVertexSize, vertices.count);
        std::int64_t offset = vertices.payload;
        const std::int64_t end = offset + count * kVertexSize;
        while (offset < end) {
            const std::int64_t size = std::min(kPiece, end - offset);
            if (!read(offset, m_buffer.get(), size)) return false;
            map.apply(reinterpret_cast<float*>(m_buffer.get()),
                      static_cast<std::size_t>(size / kVertexSize));
            if (!write(offset, m_buffer.get(), size)) return false;
            offset += size;
        }
        return true;
    }

    // The number of steps that the walk over the faces takes, if nothing stops it.
    std::int64_t facesToWalk() const {
        const std::int64_t count = m_blocks.faces.count;
        // Required(R61): the walk over triangles ends where it would for four-index faces, and so
        // runs a third of its length or a little more past the last triangle, into whatever follows
        // in the file.
        if (m_blocks.faces.id == kVekTriangles) return (count * 16 + 11) / 12;
        return count;
    }

    bool rewindFaces() {
        const VekBlockPlace& faces = m_blocks.faces;
        const VekBlockPlace& corners = m_blocks.corners;
        const auto stride = static_cast<std::int64_t>(vekFaceStride(faces.id));
        const std::int64_t steps = facesToWalk();
        const std::int64_t faceSteps = groupsThere(faces.payload, stride, steps);
        // Four-index corner values stop with their faces, which say what is a triangle.
        const std::int64_t cornerLimit = faces.id == kVekTriangles ? steps : faceSteps;
        const std::int64_t cornerSteps =
            corners.id == 0 ? 0 : groupsThere(corners.payload, stride, cornerLimit);
        const std::int64_t both = std::min(faceSteps, cornerSteps);
        return rewindInStep(both) && rewindOne(faces.payload, both, faceSteps, Only::Faces) &&
               rewindOne(corners.payload, both, cornerSteps, Only::Corners);
    }

    // The first `steps` faces with their corner values, in two windows, or in one where the two
    // runs lie so close that the windows would overlap.
    bool rewindInStep(std::int64_t steps) {
        const auto stride = static_cast<std::int64_t>(vekFaceStride(m_blocks.faces.id));
        const std::int64_t faces = m_blocks.faces.payload;
        const std::int64_t corners = m_blocks.corners.payload;
        const std::int64_t distance = std::abs(corners - faces);
        const std::int64_t stepsAtOnce = kPiece / stride;
        for (std::int64_t step = 0; step < steps; step += stepsAtOnce) {
            const std::int64_t count = std::min(stepsAtOnce, steps - step);
            const std::int64_t size = count * stride;
            const bool apart = distance >= size;
            const bool done =
                apart ? rewindApart(faces + step * stride, corners + step * stride, size)
                      : rewindTogether(faces + step * stride, corners + step * stride, size);
            if (!done) return false;
        }
        return true;
    }

    bool rewindApart(std::int64_t faces, std::int64_t corners, std::int64_t size) {
        char* const faceWindow = m_buffer.get();
        char* const cornerWindow = m_buffer.get() + size;
        if (!read(faces, faceWindow, size) || !read(corners, cornerWindow, size)) return false;
        rewind(faceWindow, cornerWindow, size);
        return write(faces, faceWindow, size) && write(corners, cornerWindow, size);
    }

    bool rewindTogether(std::int64_t faces, std::int64_t corners, std::int64_t size) {
        const std::int64_t begin = std::min(faces, corners);
        const std::int64_t whole = std::max(faces, corners) + size - begin;
        char* const window = m_buffer.get();
        if (!read(begin, window, whole)) return false;
        rewind(window + (faces - begin), window + (corners - begin), size);
        return write(begin, window, whole);
    }

    enum class Only { Faces, Corners };

    // Steps [from, to) of the run at `payload` alone.
    bool rewindOne(std::int64_t payload, std::int64_t from, std::int64_t to, Only only) {
        const auto stride = static_cast<std::int64_t>(vekFaceStride(m_blocks.faces.id));
        std::int64_t offset = payload + from * stride;
        const std::int64_t end = payload + to * stride;
        while (offset < end) {
            const std::int64_t size = std::min(kPiece, end - offset);
            char* const window = m_buffer.get();
            if (!read(offset, window, size)) return false;
            if (only == Only::Faces) rewind(window, nullptr, size);
            if (only == Only::Corners) rewind(nullptr, window, size);
            if (!write(offset, window, size)) return false;
            offset += size;
        }
        return true;
    }

    void rewind(char* faces, char* corners, std::int64_t size) const {
        const std::uint32_t kind = m_blocks.faces.id;
        rewindVekFaces(kind, faces, corners, static_cast<std::size_t>(size) / vekFaceStride(kind));
    }

    BXFile& m_file;
    const std::int64_t m_size;
    VekBlocks m_blocks;
    std::unique_ptr<char[]> m_buffer;
};

bool hasMagic(const BXFile& file, std::int64_t size) {
    if (size < kVekMagicSize) return false;
    char magic[kVekMagicSize + 1] = {};
    if (file.readAt(0, magic, kVekMagicSize) != kVekMagicSize) return false;
    return BXString::cmpNoCase(magic, kVekMagic, kVekMagicSize) == 0;
}

}  // namespace

bool transformVekFile(const char* path, const VekPositionMap& map, bool rewind) {
    BXFile file(path, BXFile::Access::ReadWrite);
    if (!file.isOpen()) return false;
    const std::int64_t size = file.size();
    return hasMagic(file, size) && Transform(file, size).run(map, rewind);
}

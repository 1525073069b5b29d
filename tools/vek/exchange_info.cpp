#include "tools/vek/exchange_info.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#include "formats/vek_header.h"
#include "foundation/bx_string.h"
#include "os/bx_file.h"

namespace {

constexpr std::int64_t kPiece = 48 * 4096;

bool isFaceKind(std::uint32_t id) {
    return id == kVekFacesNegative || id == kVekFacesRepeated || id == kVekTriangles;
}

bool isCornerKind(std::uint32_t id) {
    return id == kVekCorners1 || id == kVekCorners2;
}

bool isMapKind(std::uint32_t id) {
    return id == kVekMap0 || id == kVekMap1 || id == kVekMap2;
}

class Inspector {
public:
    Inspector(const BXFile& file, ExchangeInfo& info) : m_file(file), m_info(info) {}

    void run() {
        m_info.fileSize = m_file.size();
        if (!checkHeader()) return;
        walk();
        if (m_vertices.id) inspectVertices();
        if (m_faces.id) inspectFaces();
        checkCorners();
    }

private:
    void problem(std::int64_t offset, std::string sentence) {
        // A file of nothing but damage says so a hundred times at most.
        if (m_info.problems.size() < 100) m_info.problems.push_back({offset, std::move(sentence)});
    }

    bool checkHeader() {
        char magic[5] = {};
        const std::size_t came = m_file.readAt(0, magic, 4);
        if (came == 4 && std::memcmp(magic, "\0\0\0\0", 4) == 0) {
            problem(0, "The magic is blank: a rewriting of this file was interrupted.");
        } else if (came < 4 || BXString::cmpNoCase(magic, kVekMagic, 4) != 0) {
            problem(0, "This is no exchange file: it does not begin with \"Vekb\".");
            m_info.isExchangeFile = false;
            return false;
        } else if (std::memcmp(magic, kVekMagic, 4) != 0) {
            problem(0, "The magic is in other letter case: it is turned, but readers refuse it.");
        }
        if (m_info.fileSize >= kVekFileHeaderSize) {
            char reserved[kVekFileHeaderSize - kVekMagicSize];
            m_file.readAt(kVekMagicSize, reserved, sizeof reserved);
            m_info.reservedIsZero =
                std::all_of(reserved, reserved + sizeof reserved, [](char c) { return c == 0; });
            return true;
        }
        problem(m_info.fileSize, "The file ends inside its header.");
        return false;
    }

    void walk() {
        std::int64_t at = kVekFileHeaderSize;
        while (true) {
            if (m_info.fileSize - at < kVekBlockHeaderSize) {
                problem(at, at == m_info.fileSize ? "The end block is missing."
                                                  : "A block header does not fit into the file.");
                return;
            }
            ExchangeInfo::Block block = headerAt(at);
            if (block.id == kVekEnd) return checkEnd(block);
            if (block.size < kVekBlockHeaderSize) {
                problem(at + 4, fmt::format("The block {} states a size of {}, less than its own "
                                            "header: nothing behind it is reached.",
                                            block.id, block.size));
                return;
            }
            note(block);
            at += block.size;
            if (at > m_info.fileSize) {
                problem(block.offset + 4,
                        fmt::format("The block {} states {} bytes and the file "
                                    "holds {} of them.",
                                    block.id, block.size, m_info.fileSize - block.offset));
                return;
            }
        }
    }

    ExchangeInfo::Block headerAt(std::int64_t offset) const {
        Vek_Header header;
        m_file.readAt(offset, &header, sizeof header);
        return {offset, header.id, header.blockSize, header.count, header.param, ""};
    }

    void note(ExchangeInfo::Block& block) {
        if (block.size % 4 != 0) {
            problem(block.offset + 4, fmt::format("The size of block {}, {}, is no multiple of 4.",
                                                  block.id, block.size));
        }
        checkCount(block);
        if (isMapKind(block.id)) readName(block);
        if (block.id == kVekVertices) m_vertices = block;
        if (isFaceKind(block.id)) m_faces = block;
        if (isCornerKind(block.id)) m_corners = block;
        if (m_info.blockCount++ < ExchangeInfo::kMostBlocks) m_info.blocks.push_back(block);
    }

    static std::uint32_t elementSize(std::uint32_t id) {
        if (id == kVekVertices || id == kVekTriangles) return 12;
        return isFaceKind(id) ? 16 : 0;
    }

    // The elements that the block really holds, at most as many as it states.
    std::uint64_t held(const ExchangeInfo::Block& block) const {
        const std::int64_t end = std::min(m_info.fileSize, block.offset + block.size);
        const std::int64_t payload = std::max<std::int64_t>(0, end - block.offset - 16);
        return std::min<std::uint64_t>(block.count,
                                       static_cast<std::uint64_t>(payload) / elementSize(block.id));
    }

    void checkCount(const ExchangeInfo::Block& block) {
        if (elementSize(block.id) == 0 || held(block) == block.count) return;
        problem(block.offset + 8, fmt::format("The block {} states {} elements and holds {}.",
                                              block.id, block.count, held(block)));
    }

    void readName(ExchangeInfo::Block& block) {
        char name[4096];
        const std::int64_t size =
            std::min<std::int64_t>(sizeof name, block.size - kVekBlockHeaderSize);
        const std::size_t came =
            m_file.readAt(block.offset + 16, name, static_cast<std::size_t>(size));
        const void* const end = came ? std::memchr(name, '\0', came) : nullptr;
        block.text.assign(static_cast<const char*>(name),
                          end ? static_cast<const char*>(end) : name + came);
        if (!end) {
            problem(block.offset + 16,
                    fmt::format("The name in block {} does not end with a NUL.", block.id));
        }
    }

    void checkEnd(const ExchangeInfo::Block& block) {
        if (block.size != 0 || block.count != 0)
            problem(block.offset, "The end block is not all zero.");
        const std::int64_t rest = m_info.fileSize - block.offset - kVekBlockHeaderSize;
        if (rest > 0) {
            problem(block.offset + 16, fmt::format("{} bytes follow the end block.", rest));
        }
    }

    // Calls `visit` with each element of the block, and its offset.
    template <class Visit>
    void forEach(const ExchangeInfo::Block& block, Visit visit) {
        const auto size = static_cast<std::int64_t>(elementSize(block.id));
        const std::unique_ptr<char[]> piece(new char[kPiece]);
        std::int64_t at = block.offset + 16;
        const std::int64_t end = at + static_cast<std::int64_t>(held(block)) * size;
        while (at < end) {
            const auto wanted = static_cast<std::size_t>(std::min(kPiece, end - at));
            if (m_file.readAt(at, piece.get(), wanted) != wanted) return;
            for (std::size_t i = 0; i < wanted; i += static_cast<std::size_t>(size)) {
                visit(piece.get() + i, at + static_cast<std::int64_t>(i));
            }
            at += static_cast<std::int64_t>(wanted);
        }
    }

    void inspectVertices() {
        m_info.hasVertices = true;
        m_info.vertices = held(m_vertices);
        std::fill_n(m_info.least, 3, INFINITY);
        std::fill_n(m_info.greatest, 3, -INFINITY);
        forEach(m_vertices, [&](const char* bytes, std::int64_t offset) {
            float position[3];
            std::memcpy(position, bytes, sizeof position);
            for (int axis = 0; axis < 3; ++axis) {
                if (!std::isfinite(position[axis])) {
                    problem(offset + 4 * axis, "A position is not a finite number.");
                    continue;
                }
                m_info.least[axis] = std::min(m_info.least[axis], position[axis]);
                m_info.greatest[axis] = std::max(m_info.greatest[axis], position[axis]);
            }
        });
    }

    void inspectFaces() {
        m_info.hasFaces = true;
        std::vector<bool> used(static_cast<std::size_t>(m_info.vertices));
        forEach(m_faces, [&](const char* bytes, std::int64_t offset) {
            std::int32_t corners[4] = {0, 0, 0, -1};
            std::memcpy(corners, bytes, elementSize(m_faces.id));
            const bool triangle =
                m_faces.id == kVekFacesRepeated ? corners[3] == corners[2] : corners[3] < 0;
            const int count = triangle ? 3 : 4;
            ++(triangle ? m_info.faces.triangles : m_info.faces.quads);
            if (!allThere(corners, count, used)) {
                ++m_info.faces.outOfRange;
                problem(offset, "A face has a vertex that is not there.");
            }
            if (hasTwice(corners, count)) ++m_info.faces.degenerate;
        });
        m_info.faces.unusedVertices =
            static_cast<std::uint64_t>(std::count(used.begin(), used.end(), false));
    }

    static bool allThere(const std::int32_t* corners, int count, std::vector<bool>& used) {
        bool all = true;
        for (int i = 0; i < count; ++i) {
            const bool there =
                corners[i] >= 0 && static_cast<std::size_t>(corners[i]) < used.size();
            if (there) used[static_cast<std::size_t>(corners[i])] = true;
            all = all && there;
        }
        return all;
    }

    static bool hasTwice(const std::int32_t* corners, int count) {
        for (int i = 0; i < count; ++i) {
            if (std::find(corners + i + 1, corners + count, corners[i]) != corners + count)
                return true;
        }
        return false;
    }

    void checkCorners() {
        if (!m_corners.id || !m_faces.id) return;
        const std::uint64_t wanted = held(m_faces) * elementSize(m_faces.id);
        const std::uint64_t there = m_corners.size - kVekBlockHeaderSize;
        if (there >= wanted) return;
        problem(m_corners.offset, fmt::format("The block {} has corner values for {} bytes of the "
                                              "faces' {}.",
                                              m_corners.id, there, wanted));
    }

    const BXFile& m_file;
    ExchangeInfo& m_info;
    ExchangeInfo::Block m_vertices, m_faces, m_corners;
};

}  // namespace

bool inspectExchangeFile(const std::string& path, ExchangeInfo& info) {
    const BXFile file(path.c_str(), BXFile::Access::Read);
    if (!file.isOpen()) return false;
    Inspector(file, info).run();
    std::stable_sort(info.problems.begin(), info.problems.end(),
                     [](const auto& a, const auto& b) { return a.offset < b.offset; });
    return true;
}

const char* blockMeaning(std::uint32_t id) {
    switch (id) {
        case kVekVertices:
            return "vertices";
        case kVekFacesNegative:
            return "faces, -1 marks a triangle";
        case kVekFacesRepeated:
            return "faces, a repeated index marks a triangle";
        case kVekTriangles:
            return "triangles";
        case kVekCorners1:
        case kVekCorners2:
            return "corner values";
        case kVekMap0:
            return "map 0";
        case kVekMap1:
            return "map 1";
        case kVekMap2:
            return "map 2";
        default:
            return "unknown, skipped";
    }
}

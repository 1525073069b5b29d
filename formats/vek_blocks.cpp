#include "formats/vek_blocks.h"

#include <algorithm>
#include <cstring>

#include "formats/vek_header.h"

namespace {

// Reads headers through a window: a file of nothing but small blocks has millions of them.
class HeaderReader {
public:
    HeaderReader(const BXFile& file, std::int64_t fileSize) : m_file(file), m_fileSize(fileSize) {}

    // False where no header fits, and when reading failed.
    bool read(std::int64_t offset, Vek_Header& header) {
        if (m_fileSize - offset < kVekBlockHeaderSize) return false;
        const std::int64_t inWindow = offset - m_start;
        if (inWindow < 0 || inWindow + kVekBlockHeaderSize > m_filled)
            return refill(offset, header);
        std::memcpy(&header, m_window + inWindow, sizeof header);
        return true;
    }

    bool failed() const { return m_failed; }

private:
    bool refill(std::int64_t offset, Vek_Header& header) {
        const std::int64_t wanted = std::min<std::int64_t>(sizeof m_window, m_fileSize - offset);
        m_start = offset;
        m_filled = static_cast<std::int64_t>(
            m_file.readAt(offset, m_window, static_cast<std::size_t>(wanted)));
        m_failed = m_filled < wanted;
        if (m_failed) return false;
        std::memcpy(&header, m_window, sizeof header);
        return true;
    }

    const BXFile& m_file;
    const std::int64_t m_fileSize;
    std::int64_t m_start = 0;
    std::int64_t m_filled = 0;
    bool m_failed = false;
    char m_window[4096] = {};
};

void note(VekBlocks& blocks, const Vek_Header& header, std::int64_t offset) {
    const VekBlockPlace place = {header.id, header.count, offset + kVekBlockHeaderSize};
    switch (header.id) {
        case kVekVertices:
            blocks.vertices = place;
            break;
        case kVekFacesNegative:
        case kVekFacesRepeated:
        case kVekTriangles:
            blocks.faces = place;
            break;
        case kVekCorners1:
        case kVekCorners2:
            blocks.corners = place;
            break;
        default:
            break;
    }
}

}  // namespace

bool findVekBlocks(const BXFile& file, std::int64_t fileSize, VekBlocks& blocks) {
    HeaderReader headers(file, fileSize);
    Vek_Header header;
    std::int64_t offset = kVekFileHeaderSize;
    while (headers.read(offset, header) && header.id != kVekEnd) {
        if (header.blockSize < kVekBlockHeaderSize) break;
        note(blocks, header, offset);
        offset += header.blockSize;
    }
    return !headers.failed();
}

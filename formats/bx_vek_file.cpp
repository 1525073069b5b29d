#include "formats/bx_vek_file.h"

#include <sys/types.h>

#include <algorithm>
#include <cstring>
#include <string>

static_assert(sizeof(off_t) == 8, "exchange files grow past 4 GiB");

BXVekFile::BXVekFile(const BXString& path, const char* mode) : BXBinaryFile(path, mode) {}

bool BXVekFile::readVekFileHeader() const {
    char header[kVekFileHeaderSize];
    if (!readBytes(header, sizeof header)) return false;
    return std::memcmp(header, kVekMagic, kVekMagicSize) == 0;
}

bool BXVekFile::readVekBlockHeader(Vek_Header& header) const {
    char* field = reinterpret_cast<char*>(&header);
    for (int i = 0; i < 4; ++i, field += 4) {
        char bytes[4];
        if (!readBytes(bytes, sizeof bytes)) return false;
        std::memcpy(field, bytes, sizeof bytes);
    }
    return true;
}

void BXVekFile::skipVekBlock(const Vek_Header& header) const {
    if (!isOpen()) return;
    const std::int64_t distance = std::int64_t{header.blockSize} - kVekBlockHeaderSize;
    fseeko(m_file, static_cast<off_t>(distance), SEEK_CUR);
}

bool BXVekFile::readVekText(const Vek_Header& header, BXString& text) const {
    std::int64_t left = std::int64_t{header.blockSize} - kVekBlockHeaderSize;
    if (left < 0 || !isOpen() || !holdsMore(left)) return false;
    // In pieces up to the NUL: a name is short, whatever the block says of its size.
    std::string name;
    while (left > 0 && name.find('\0') == std::string::npos) {
        char piece[4096];
        const std::int64_t size = std::min<std::int64_t>(left, sizeof piece);
        if (!readBytes(piece, static_cast<std::size_t>(size))) return false;
        name.append(piece, static_cast<std::size_t>(size));
        left -= size;
    }
    text = BXString(name.c_str());
    return true;
}

bool BXVekFile::holdsMore(std::int64_t count) const {
    const off_t position = ftello(m_file);
    if (position < 0 || fseeko(m_file, 0, SEEK_END) != 0) return false;
    const off_t end = ftello(m_file);
    if (fseeko(m_file, position, SEEK_SET) != 0) return false;
    return end - position >= count;
}

bool BXVekFile::writeVekFileHeader() {
    char header[kVekFileHeaderSize] = {};
    std::memcpy(header, kVekMagic, kVekMagicSize);
    return writeBytes(header, sizeof header);
}

bool BXVekFile::writeVekBlock(unsigned int id, float param, unsigned int count,
                              unsigned int dataSize, const void* data) {
    const unsigned int blockSize = (dataSize + 19u) & ~3u;
    const bool headerWritten = write(static_cast<int>(id)) && write(static_cast<int>(blockSize)) &&
                               write(static_cast<int>(count)) && write(param);
    if (!headerWritten || !writeBytes(data, dataSize)) return false;
    const char zeros[4] = {};
    return writeBytes(zeros, blockSize - (dataSize + kVekBlockHeaderSize));
}

bool BXVekFile::writeEndVekBlock() {
    bool written = true;
    for (int field = 0; field < 4; ++field) written = write(0) && written;
    return written;
}

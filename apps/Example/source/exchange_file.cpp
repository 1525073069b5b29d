#include "exchange_file.h"

#include <sys/stat.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace {

constexpr std::size_t kBlockHeader = 16;

// A folder or a pipe is no file to read.
bool isRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool readBytes(const std::string& path, std::string& bytes) {
    if (!isRegularFile(path)) return false;
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}

std::uint32_t numberAt(const std::string& bytes, std::size_t offset) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

void append(std::string& bytes, std::uint32_t number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

std::string damagedAt(const std::string& path, std::size_t offset, const char* what) {
    return "The file is damaged at offset " + std::to_string(offset) + ", " + what + ": " + path;
}

std::string splitIntoBlocks(const std::string& path, const std::string& bytes, ExchangeFile& file) {
    std::size_t offset = file.header.size();
    for (;;) {
        const std::size_t left = bytes.size() - offset;
        if (left < kBlockHeader) return damagedAt(path, offset, "where it has no end");
        Block block = {numberAt(bytes, offset), numberAt(bytes, offset + 8),
                       numberAt(bytes, offset + 12), ""};
        if (block.id == kEnd) return "";
        const std::size_t size = numberAt(bytes, offset + 4);
        if (size < kBlockHeader) return damagedAt(path, offset, "a block too small for its header");
        if (size > left) return damagedAt(path, offset, "a block larger than the rest of the file");
        block.payload.assign(bytes, offset + kBlockHeader, size - kBlockHeader);
        file.blocks.push_back(std::move(block));
        offset += size;
    }
}

}  // namespace

std::string readExchangeFile(const std::string& path, ExchangeFile& file) {
    std::string bytes;
    if (!readBytes(path, bytes)) return "The exchange file cannot be read: " + path;
    if (bytes.size() < file.header.size() || bytes.compare(0, 4, "Vekb") != 0) {
        return "This is not a mesh exchange file: " + path;
    }
    std::memcpy(file.header.data(), bytes.data(), file.header.size());
    return splitIntoBlocks(path, bytes, file);
}

std::string writeExchangeFile(const std::string& path, const ExchangeFile& file) {
    std::string bytes(file.header.data(), file.header.size());
    for (const Block& block : file.blocks) {
        append(bytes, block.id);
        append(bytes, static_cast<std::uint32_t>(block.payload.size() + kBlockHeader));
        append(bytes, block.count);
        append(bytes, block.param);
        bytes += block.payload;
    }
    bytes.append(kBlockHeader, '\0');
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out ? "" : "The exchange file cannot be written: " + path;
}

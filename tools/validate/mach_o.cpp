#include "tools/validate/mach_o.h"

#include <cstdint>

namespace {

const char kThin64[] = "\xCF\xFA\xED\xFE", kThin32[] = "\xCE\xFA\xED\xFE";
const char kFat[] = "\xCA\xFE\xBA\xBE";
constexpr std::size_t kFirstRecord = 8, kRecordSize = 20;
constexpr std::uint32_t k64BitProcessor = 0x01000000;
// Other files begin with the same four bytes; a great number follows there.
constexpr std::uint32_t kMostRecords = 16;

// A big-endian number; 0 past the end.
std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    if (bytes.size() < at + 4) return 0;
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

// A little-endian number; 0 past the end.
std::uint32_t smallNumberAt(const std::string& bytes, std::size_t at) {
    const std::uint32_t number = numberAt(bytes, at);
    return number >> 24 | (number >> 8 & 0xFF00) | (number << 8 & 0xFF0000) | number << 24;
}

// Where the file for this word size begins; npos where there is none.
std::size_t beginOf(const std::string& bytes, int bits) {
    if (bytes.compare(0, 4, bits == 64 ? kThin64 : kThin32) == 0) return 0;
    if (bytes.compare(0, 4, kFat) != 0) return bytes.npos;
    const std::uint32_t count = numberAt(bytes, 4);
    for (std::size_t i = 0; i < count && i < kMostRecords; ++i) {
        const std::size_t record = kFirstRecord + i * kRecordSize;
        const std::uint32_t processor = numberAt(bytes, record);
        const bool is64 = (processor & k64BitProcessor) != 0;
        if (processor != 0 && is64 == (bits == 64)) return numberAt(bytes, record + 8);
    }
    return bytes.npos;
}

}  // namespace

MachOKind machOKind(const std::string& bytes, int bits) {
    constexpr std::size_t kType = 12;
    constexpr std::uint32_t kObject = 1, kProgram = 2, kLibrary = 6, kBundle = 8;
    const std::size_t begin = beginOf(bytes, bits);
    if (begin == bytes.npos) return MachOKind::Other;
    switch (smallNumberAt(bytes, begin + kType)) {
        case kObject:
            return MachOKind::Object;
        case kProgram:
            return MachOKind::Program;
        case kLibrary:
        case kBundle:
            return MachOKind::Library;
        default:
            return MachOKind::Other;
    }
}

MachOSizes machOSizes(const std::string& bytes) {
    MachOSizes sizes;
    sizes.has64 = bytes.compare(0, 4, kThin64) == 0;
    sizes.has32 = bytes.compare(0, 4, kThin32) == 0;
    if (bytes.compare(0, 4, kFat) != 0) return sizes;
    const std::uint32_t count = numberAt(bytes, 4);
    if (count > kMostRecords) return sizes;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t processor = numberAt(bytes, kFirstRecord + i * kRecordSize);
        if (processor == 0) continue;
        (processor & k64BitProcessor ? sizes.has64 : sizes.has32) = true;
    }
    return sizes;
}

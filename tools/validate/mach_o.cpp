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

}  // namespace

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

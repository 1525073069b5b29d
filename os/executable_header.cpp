#include "os/executable_header.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

// A header's 32-bit numbers; the caller sees to it that they are there.
class Head {
public:
    Head(const void* bytes, std::size_t size)
        : m_bytes(static_cast<const unsigned char*>(bytes)), m_size(size) {}

    std::size_t size() const { return m_size; }
    std::uint32_t bigAt(std::size_t at) const { return bytesAt(at, at + 1, at + 2, at + 3); }
    std::uint32_t littleAt(std::size_t at) const { return bytesAt(at + 3, at + 2, at + 1, at); }
    unsigned int byteAt(std::size_t at) const { return m_bytes[at]; }

private:
    std::uint32_t bytesAt(std::size_t a, std::size_t b, std::size_t c, std::size_t d) const {
        return std::uint32_t{m_bytes[a]} << 24 | std::uint32_t{m_bytes[b]} << 16 |
               std::uint32_t{m_bytes[c]} << 8 | std::uint32_t{m_bytes[d]};
    }

    const unsigned char* m_bytes;
    std::size_t m_size;
};

// A Java class file begins as a fat header does; its version stands where the count is.
constexpr std::uint32_t kMostParts = 42;

BXArray<long> partsOf(const Head& head, std::size_t entrySize) {
    BXArray<long> kinds;
    const std::uint32_t count = head.bigAt(4);
    if (count > kMostParts) return kinds;
    for (std::size_t at = 8; kinds.size() < count && at + entrySize <= head.size();
         at += entrySize) {
        kinds.push_back(static_cast<long>(head.bigAt(at)));
    }
    return kinds;
}

BXArray<long> elfKind(const Head& head) {
    struct Machine {
        unsigned int elf;
        long machO;
    };
    constexpr Machine kMachines[] = {
        {3, 7}, {62, 0x01000007}, {40, 12}, {183, 0x0100000C}, {20, 18}, {21, 0x01000012},
    };
    if (head.size() < 20) return {};
    const bool isLittle = head.byteAt(5) == 1;
    const unsigned int machine =
        isLittle ? head.byteAt(18) | head.byteAt(19) << 8 : head.byteAt(19) | head.byteAt(18) << 8;
    for (const Machine& known : kMachines) {
        if (known.elf == machine) return {known.machO};
    }
    return {};
}

}  // namespace

BXArray<long> bxArchitecturesOf(const void* bytes, std::size_t size) {
    const Head head(bytes, size);
    if (size < 8) return {};
    switch (head.bigAt(0)) {
        case 0xFEEDFACE:
        case 0xFEEDFACF:
            return {static_cast<long>(head.bigAt(4))};
        case 0xCEFAEDFE:
        case 0xCFFAEDFE:
            return {static_cast<long>(head.littleAt(4))};
        case 0xCAFEBABE:
            return partsOf(head, 20);
        case 0xCAFEBABF:
            return partsOf(head, 32);
        case 0x7F454C46:
            return elfKind(head);
        default:
            return {};
    }
}

// Reads whatever bytes as items of the binary stream. The first byte of the input says how many
// items, the next ones which, the rest is the file.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "formats/bx_binary_file.h"

namespace {

constexpr int kKinds = 11;

template <class Array>
void readArray(const BXBinaryFile& stream, Array& array) {
    const Array before = array;
    if (stream.read(array) || array.empty() || array.size() != before.size()) return;
    // Read or not, every element can be looked at.
    volatile auto last = array.back();
    (void)last;
}

struct Items {
    BXString text;
    BXArray<int> ints;
    BXArray<unsigned int> unsigneds;
    BXArray<unsigned short> shorts;
    BXArray<unsigned char> bytes;
    BXArray<BXVector2f> points;
    BXArray<BXVector3f> places;
    BXBoolArray bits;
};

void readOne(BXBinaryFile& stream, Items& items, int kind) {
    int number = 0;
    float real = 0.0f;
    switch (kind % kKinds) {
        case 0:
            stream.read(number);
            break;
        case 1:
            stream.read(real);
            break;
        case 2:
            stream.read(items.text);
            break;
        case 3:
            readArray(stream, items.ints);
            break;
        case 4:
            readArray(stream, items.unsigneds);
            break;
        case 5:
            readArray(stream, items.shorts);
            break;
        case 6:
            readArray(stream, items.bytes);
            break;
        case 7:
            stream.read(items.points);
            break;
        case 8:
            stream.read(items.places);
            break;
        case 9:
            stream.read(items.bits);
            break;
        default:
            stream.readAlignData(kind - 128);
            break;
    }
}

// What holds of the items whatever the file holds.
void check(const Items& items, std::size_t fileSize) {
    const std::size_t most = (std::size_t{1} << 20) + fileSize;
    const bool sound =
        static_cast<std::size_t>(items.text.length()) <= most && items.ints.size() * 4 <= most &&
        items.unsigneds.size() * 4 <= most && items.shorts.size() * 2 <= most &&
        items.bytes.size() <= most && items.points.size() * 8 <= most &&
        items.places.size() * 12 <= most &&
        static_cast<std::size_t>(items.bits.count()) <= fileSize &&
        items.bits.getNumberOfBitSet() + items.bits.getNumberOfBitCleared() == items.bits.count();
    if (!sound) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static const int file = memfd_create("items", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    const std::size_t count = data[0] % 17 < size ? data[0] % 17 : size - 1;
    const std::uint8_t* const kinds = data + 1;
    const std::size_t fileSize = size - 1 - count;
    if (ftruncate(file, 0) != 0) return 0;
    if (pwrite(file, kinds + count, fileSize, 0) != static_cast<ssize_t>(fileSize)) return 0;

    BXBinaryFile stream(path.c_str(), "rb");
    if (!stream.isOpen()) std::abort();
    stream.m_packArrays = data[0] & 0x80;
    Items items;
    for (std::size_t i = 0; i < count; ++i) {
        readOne(stream, items, kinds[i]);
        check(items, fileSize);
    }
    return 0;
}

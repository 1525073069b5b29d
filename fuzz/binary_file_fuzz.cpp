// Reads whatever bytes as items of the binary stream, and holds each against what the bytes say.
// The first byte of the input says how many items, the next ones which, the rest is the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "formats/bx_binary_file.h"
#include "fuzz/support.h"

namespace {

constexpr int kKinds = 11;

// What is always taken for a count, whatever the size of the file.
constexpr std::size_t kAlwaysTaken = std::size_t{1} << 20;

// The file as a reader of bytes sees it. After the first failure nothing is known of the place in
// the file, and nothing is expected of what is read.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool known() const { return m_known; }
    void lose() { m_known = false; }
    std::size_t left() const { return m_size - m_at; }
    const std::uint8_t* here() const { return m_data + m_at; }
    void skip(std::size_t count) { m_at += count; }

    bool takeCount(std::int32_t& count) {
        if (left() < sizeof count) return false;
        std::memcpy(&count, here(), sizeof count);
        skip(sizeof count);
        return true;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
    bool m_known = true;
};

std::size_t zerosBehind(std::size_t payload) {
    return (4 - payload % 4) % 4;
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

template <class Element>
bool sameBytes(const BXArray<Element>& a, const BXArray<Element>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Element)) == 0);
}

template <class Element>
void readArray(const BXBinaryFile& stream, Bytes& file, BXArray<Element>& array) {
    const BXArray<Element> before = array;
    const bool came = stream.read(array);
    if (!file.known()) return expect(array.size() * sizeof(Element) <= kAlwaysTaken + (1u << 16));

    std::int32_t count = 0;
    if (!file.takeCount(count) || count < 0) {
        file.lose();
        return expect(!came && sameBytes(array, before));
    }
    const std::size_t wanted = static_cast<std::size_t>(count) * sizeof(Element);
    const bool wraps = wanted / sizeof(Element) != static_cast<std::size_t>(count);
    const std::size_t there = wraps ? file.left() : std::min(wanted, file.left());
    if (!wraps && wanted <= kAlwaysTaken) {
        expect(array.size() == static_cast<std::size_t>(count));
    } else {
        expect(array.size() == (there + sizeof(Element) - 1) / sizeof(Element));
    }
    const auto* const read = reinterpret_cast<const std::uint8_t*>(array.data());
    if (there > 0) expect(std::memcmp(read, file.here(), there) == 0);
    for (std::size_t i = there; i < array.size() * sizeof(Element); ++i) expect(read[i] == 0);
    file.skip(there);

    const bool padded = sizeof(Element) < 4 && !stream.m_packArrays;
    const std::size_t zeros = padded ? zerosBehind(wanted) : 0;
    const bool whole = !wraps && there == wanted && file.left() >= zeros;
    expect(came == whole);
    if (!whole) return file.lose();
    file.skip(zeros);
}

void readText(const BXBinaryFile& stream, Bytes& file, BXString& text) {
    const BXString before(text);
    const bool came = stream.read(text);
    if (!file.known()) return;
    std::int32_t length = 0;
    if (!file.takeCount(length) || length < 0) {
        file.lose();
        return expect(!came && text == before);
    }
    const auto wanted = static_cast<std::size_t>(length);
    const std::size_t there = std::min(wanted, file.left());
    const auto* const chars = reinterpret_cast<const char*>(file.here());
    const std::string expected(chars, std::find(chars, chars + there, '\0'));
    expect(expected == text.c_str());
    file.skip(there);
    const bool whole = there == wanted && file.left() >= zerosBehind(wanted);
    expect(came == whole);
    if (!whole) return file.lose();
    file.skip(zerosBehind(wanted));
}

void readBits(const BXBinaryFile& stream, Bytes& file, BXBoolArray& bits) {
    const BXBoolArray before(bits);
    const bool came = stream.read(bits);
    expect(bits.getNumberOfBitSet() + bits.getNumberOfBitCleared() == bits.count());
    if (!file.known()) return;
    std::int32_t count = 0;
    const bool counted = file.takeCount(count) && count >= 0;
    const auto wanted = counted ? static_cast<std::size_t>(count) : 0;
    const std::size_t zeros = stream.m_packArrays ? 0 : zerosBehind(wanted);
    const bool whole = counted && file.left() >= wanted && file.left() - wanted >= zeros;
    expect(came == whole);
    expect(bits.count() == (whole ? count : before.count()));
    for (int i = 0; i < bits.count(); ++i) {
        expect(bits.get(i) == (whole ? file.here()[i] != 0 : before.get(i)));
    }
    if (!whole) return file.lose();
    file.skip(wanted + zeros);
}

template <class Number>
void readNumber(const BXBinaryFile& stream, Bytes& file) {
    Number number = 5;
    const bool came = stream.read(number);
    if (!file.known()) return;
    expect(came == (file.left() >= sizeof number));
    if (!came) return file.lose();
    expect(std::memcmp(&number, file.here(), sizeof number) == 0);
    file.skip(sizeof number);
}

void readPadding(const BXBinaryFile& stream, Bytes& file, int n) {
    const bool came = stream.readAlignData(n);
    if (!file.known()) return;
    const auto wanted = static_cast<std::size_t>(std::max((n + 3) / 4 * 4 - n, 0));
    expect(came == (file.left() >= wanted));
    if (!came) return file.lose();
    file.skip(wanted);
}

void readOne(const BXBinaryFile& stream, Bytes& file, Items& items, int kind) {
    switch (kind % kKinds) {
        case 0:
            return readNumber<int>(stream, file);
        case 1:
            return readNumber<float>(stream, file);
        case 2:
            return readText(stream, file, items.text);
        case 3:
            return readArray(stream, file, items.ints);
        case 4:
            return readArray(stream, file, items.unsigneds);
        case 5:
            return readArray(stream, file, items.shorts);
        case 6:
            return readArray(stream, file, items.bytes);
        case 7:
            return readArray(stream, file, items.points);
        case 8:
            return readArray(stream, file, items.places);
        case 9:
            return readBits(stream, file, items.bits);
        default:
            return readPadding(stream, file, kind - 128);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static const FuzzFile file;
    const std::size_t count = data[0] % 17 < size ? data[0] % 17 : size - 1;
    const std::uint8_t* const kinds = data + 1;
    const std::size_t fileSize = size - 1 - count;
    file.write({reinterpret_cast<const char*>(kinds + count), fileSize});

    BXBinaryFile stream(file.path(), "rb");
    expect(stream.isOpen());
    stream.m_packArrays = data[0] & 0x80;
    Bytes bytes(kinds + count, fileSize);
    Items items;
    for (std::size_t i = 0; i < count; ++i) readOne(stream, bytes, items, kinds[i]);
    return 0;
}

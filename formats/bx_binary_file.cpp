#include "formats/bx_binary_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "os/bx_file.h"

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "numbers are written as they lie in memory: a big-endian build has to swap them"
#endif

namespace {

int paddingOf(std::int64_t n) {
    return static_cast<int>((n + 3) / 4 * 4 - n);
}

// Memory that a count may ask for whatever the size of the file.
constexpr std::int64_t kAlwaysTaken = 1 << 20;

// Arrays grow by pieces that stay in the cache between being zeroed and being filled.
constexpr std::size_t kPieceBytes = std::size_t{256} << 10;

// The padding of so many bytes is that of what they leave beyond a multiple of 4.
int beyondFours(std::size_t bytes) {
    return static_cast<int>(bytes % 4);
}

}  // namespace

BXBinaryFile::BXBinaryFile(const BXString& path, const char* mode) {
    open(path, mode);
}

BXBinaryFile::~BXBinaryFile() {
    close();
}

bool BXBinaryFile::open(const BXString& path, const char* mode) {
    close();
    m_file = BXFile::openStream(path.getValidFilePath(), mode);
    return isOpen();
}

void BXBinaryFile::close() {
    if (!isOpen()) return;
    std::fclose(m_file);
    m_file = BXDiskServer::s_invalidFile;
}

bool BXBinaryFile::writeBytes(const void* bytes, std::size_t count) {
    if (!isOpen()) return false;
    return count == 0 || std::fwrite(bytes, 1, count, m_file) == count;
}

std::size_t BXBinaryFile::readUpTo(void* bytes, std::size_t count) const {
    return isOpen() && count > 0 ? std::fread(bytes, 1, count, m_file) : 0;
}

bool BXBinaryFile::readBytes(void* bytes, std::size_t count) const {
    return isOpen() && readUpTo(bytes, count) == count;
}

// How many of `count` elements to make room for: all, but where they need more memory than the
// whole file could fill, only those that it could hold. Throws bad_alloc for what no memory of
// this word size holds.
int BXBinaryFile::roomFor(int count, int elementSize) const {
    const std::int64_t bytes = std::int64_t{count} * elementSize;
    std::int64_t room = count;
    struct stat status;
    if (bytes > kAlwaysTaken && fstat(fileno(m_file), &status) == 0 && S_ISREG(status.st_mode) &&
        bytes > status.st_size) {
        room = std::min(room, (status.st_size + elementSize - 1) / elementSize);
    }
    if (room * elementSize > static_cast<std::int64_t>(PTRDIFF_MAX)) throw std::bad_alloc();
    return static_cast<int>(room);
}

bool BXBinaryFile::readCount(int& count) const {
    return read(count) && count >= 0;
}

bool BXBinaryFile::write(int value) {
    return writeBytes(&value, sizeof value);
}

bool BXBinaryFile::write(float value) {
    return writeBytes(&value, sizeof value);
}

bool BXBinaryFile::write(const BXString& text) {
    if (text.isEmpty()) return write(1) && write(0);
    const int length = text.length() + 1;
    if (!write(length) || !writeBytes(text.c_str(), static_cast<std::size_t>(length))) return false;
    return writeAlignData(length);
}

template <class Element>
bool BXBinaryFile::writeArray(const BXArray<Element>& array) {
    if (array.size() > static_cast<std::size_t>(INT_MAX)) return false;
    return write(static_cast<int>(array.size())) &&
           writeBytes(array.data(), array.size() * sizeof(Element));
}

template <class Element>
bool BXBinaryFile::writePaddedArray(const BXArray<Element>& array) {
    if (!writeArray(array)) return false;
    return m_packArrays || writeAlignData(beyondFours(array.size() * sizeof(Element)));
}

bool BXBinaryFile::write(const BXArray<int>& array) {
    return writeArray(array);
}

bool BXBinaryFile::write(const BXArray<unsigned int>& array) {
    return writeArray(array);
}

bool BXBinaryFile::write(const BXArray<unsigned short>& array) {
    return writePaddedArray(array);
}

bool BXBinaryFile::write(const BXArray<unsigned char>& array) {
    return writePaddedArray(array);
}

bool BXBinaryFile::write(const BXArray<BXVector2f>& array) {
    return writeArray(array);
}

bool BXBinaryFile::write(const BXArray<BXVector3f>& array) {
    return writeArray(array);
}

bool BXBinaryFile::write(const BXBoolArray& bits) {
    BXArray<unsigned char> bytes(static_cast<std::size_t>(bits.count()));
    for (int i = bits.findFirst(true); i >= 0; i = bits.findFirst(true, i + 1)) {
        bytes[static_cast<std::size_t>(i)] = 1;
    }
    return write(bytes);
}

bool BXBinaryFile::writeAlignData(int n) {
    bool written = true;
    const char zero = 0;
    for (int left = paddingOf(n); left > 0; --left) written = writeBytes(&zero, 1) && written;
    return written;
}

bool BXBinaryFile::writeAsciiString(const BXString& text) {
    return writeBytes(text.c_str(), static_cast<std::size_t>(text.length()));
}

bool BXBinaryFile::read(int& value) const {
    return readBytes(&value, sizeof value);
}

bool BXBinaryFile::read(float& value) const {
    return readBytes(&value, sizeof value);
}

bool BXBinaryFile::read(BXString& text) const {
    int length = 0;
    if (!readCount(length)) return false;
    const int room = roomFor(length, 1);
    text.create(room, '\0');
    const std::size_t came = readUpTo(text.data(), static_cast<std::size_t>(room));
    return came == static_cast<std::size_t>(length) && readAlignData(length);
}

template <class Element>
bool BXBinaryFile::readArray(BXArray<Element>& array) const {
    int count = 0;
    if (!readCount(count)) return false;
    const auto room = static_cast<std::size_t>(roomFor(count, sizeof(Element)));
    if (array.size() > room) array.resize(room);
    array.reserve(room);
    for (std::size_t done = 0; done < room;) {
        const std::size_t piece = std::min(room - done, kPieceBytes / sizeof(Element));
        const std::size_t bytes = piece * sizeof(Element);
        if (array.size() < done + piece) array.resize(done + piece);
        const std::size_t came = readUpTo(array.data() + done, bytes);
        if (came < bytes) {
            // What was in the array before must not look like elements of the file.
            std::memset(reinterpret_cast<char*>(array.data() + done) + came, 0, bytes - came);
            // A count that the file could explain keeps its elements; of another, what was read.
            const std::size_t whole = (came + sizeof(Element) - 1) / sizeof(Element);
            array.resize(done + (room == static_cast<std::size_t>(count) ? piece : whole));
            if (room == static_cast<std::size_t>(count)) array.resize(room);
            return false;
        }
        done += piece;
    }
    return room == static_cast<std::size_t>(count);
}

template <class Element>
bool BXBinaryFile::readPaddedArray(BXArray<Element>& array) const {
    if (!readArray(array)) return false;
    return m_packArrays || readAlignData(beyondFours(array.size() * sizeof(Element)));
}

bool BXBinaryFile::read(BXArray<int>& array) const {
    return readArray(array);
}

bool BXBinaryFile::read(BXArray<unsigned int>& array) const {
    return readArray(array);
}

bool BXBinaryFile::read(BXArray<unsigned short>& array) const {
    return readPaddedArray(array);
}

bool BXBinaryFile::read(BXArray<unsigned char>& array) const {
    return readPaddedArray(array);
}

bool BXBinaryFile::read(BXArray<BXVector2f>& array) const {
    return readArray(array);
}

bool BXBinaryFile::read(BXArray<BXVector3f>& array) const {
    return readArray(array);
}

bool BXBinaryFile::read(BXBoolArray& bits) const {
    BXArray<unsigned char> bytes;
    if (!read(bytes)) return false;
    const int count = static_cast<int>(bytes.size());
    bits.assign(count, false);
    for (int i = 0; i < count; ++i) {
        if (bytes[static_cast<std::size_t>(i)]) bits.set(i);
    }
    return true;
}

bool BXBinaryFile::readAlignData(int n) const {
    bool came = true;
    char ignored;
    for (int left = paddingOf(n); left > 0; --left) came = readBytes(&ignored, 1) && came;
    return came;
}

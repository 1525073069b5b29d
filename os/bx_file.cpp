#include "os/bx_file.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

static_assert(sizeof(off_t) == 8, "exchange files grow past 4 GiB");

namespace {

constexpr mode_t kNewFileMode = 0666;  // less what the process's mask takes
constexpr std::size_t kMostLineFeeds = 4096;

// A descriptor of a regular file, with its size, or -1. Opening does not wait: a pipe without a
// partner would never let go of the host. Nor does a terminal become the host's own.
int openRegular(const char* path, int flags, std::int64_t& size) {
    if (!path) return -1;
    int descriptor;
    do {
        descriptor = open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFileMode);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) return -1;
    struct stat status;
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        size = static_cast<std::int64_t>(status.st_size);
        return descriptor;
    }
    ::close(descriptor);
    return -1;
}

// The flags of open for a mode of fopen; -1 for none of them.
int flagsOf(const char* mode) {
    const bool both = std::strchr(mode, '+') != nullptr;
    switch (mode[0]) {
        case 'r':
            return both ? O_RDWR : O_RDONLY;
        case 'w':
            return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_TRUNC |
                   (std::strchr(mode, 'x') ? O_EXCL : 0);
        case 'a':
            return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_APPEND;
        default:
            return -1;
    }
}

// True iff all bytes were written.
template <class Write>
bool writeAll(const void* bytes, std::size_t count, Write write) {
    const char* rest = static_cast<const char*>(bytes);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t written = write(rest + done, count - done, done);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += static_cast<std::size_t>(written);
    }
    return true;
}

}  // namespace

BXFile::BXFile(const char* path, Access access) noexcept
    : BXFile(path, access == Access::Read ? O_RDONLY : O_RDWR) {}

BXFile::BXFile(const char* path, int flags) noexcept
    : m_descriptor(openRegular(path, flags, m_size)) {}

BXFile::BXFile(BXFile&& other) noexcept : m_size(other.m_size), m_descriptor(other.m_descriptor) {
    other.m_descriptor = -1;
}

BXFile& BXFile::operator=(BXFile&& other) noexcept {
    std::swap(m_size, other.m_size);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

BXFile::~BXFile() {
    close();
}

void BXFile::close() noexcept {
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = -1;
}

std::int64_t BXFile::size() const noexcept {
    return isOpen() ? m_size : 0;
}

bool BXFile::endsBy(std::int64_t offset) const noexcept {
    struct stat status;
    return fstat(m_descriptor, &status) == 0 && status.st_size <= offset;
}

std::size_t BXFile::readAt(std::int64_t offset, void* bytes, std::size_t count) const noexcept {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t came = pread(m_descriptor, static_cast<char*>(bytes) + done, count - done,
                                   offset + static_cast<std::int64_t>(done));
        if (came < 0 && errno == EINTR) continue;
        if (came <= 0) break;
        done += static_cast<std::size_t>(came);
    }
    return done;
}

bool BXFile::writeAt(std::int64_t offset, const void* bytes, std::size_t count) noexcept {
    const bool whole =
        writeAll(bytes, count, [&](const char* from, std::size_t size, std::size_t done) {
            return pwrite(m_descriptor, from, size, offset + static_cast<std::int64_t>(done));
        });
    if (whole) m_size = std::max(m_size, offset + static_cast<std::int64_t>(count));
    return whole;
}

bool BXFile::truncate(std::int64_t size) noexcept {
    int result;
    do {
        result = ftruncate(m_descriptor, size);
    } while (result != 0 && errno == EINTR);
    if (result == 0) m_size = size;
    return result == 0;
}

bool BXFile::extend(std::int64_t size) noexcept {
    static const char zeros[4096] = {};
    const std::int64_t before = this->size();
    for (std::int64_t end = before; end < size;) {
        const auto count = static_cast<std::size_t>(
            std::min<std::int64_t>(size - end, static_cast<std::int64_t>(sizeof zeros)));
        if (!writeAt(end, zeros, count)) {
            truncate(before);
            return false;
        }
        end += static_cast<std::int64_t>(count);
    }
    return true;
}

std::int64_t BXFile::freeSpace() const noexcept {
    struct statvfs disk;
    if (fstatvfs(m_descriptor, &disk) != 0) return INT64_MAX;
    return static_cast<std::int64_t>(disk.f_bavail) * static_cast<std::int64_t>(disk.f_frsize);
}

std::unique_ptr<char[]> BXFile::readAll(std::size_t& size, std::size_t before,
                                        std::size_t after) const {
    const std::int64_t inFile = this->size();
    if (inFile > static_cast<std::int64_t>(PTRDIFF_MAX - before - after)) return nullptr;
    size = static_cast<std::size_t>(inFile);
    std::unique_ptr<char[]> bytes(new char[before + size + after]);
    if (readAt(0, bytes.get() + before, size) != size) return nullptr;
    return bytes;
}

bool BXFile::readWhole(const char* path, std::string& contents, std::int64_t limit) {
    const BXFile file(path, Access::Read);
    if (!file.isOpen()) return false;
    const std::size_t before = contents.size();
    const auto room = static_cast<std::int64_t>(contents.max_size() - before);
    if (file.size() > std::min(limit, room)) return false;
    const auto size = static_cast<std::size_t>(file.size());
    contents.resize(before + size);
    if (file.readAt(0, &contents[before], size) == size) return true;
    contents.resize(before);
    return false;
}

bool BXFile::overwrite(const char* path, const void* bytes, std::size_t count) noexcept {
    bool opened;
    return overwrite(path, bytes, count, opened);
}

bool BXFile::overwrite(const char* path, const void* bytes, std::size_t count,
                       bool& opened) noexcept {
    BXFile file(path, O_WRONLY | O_CREAT);
    opened = file.isOpen();
    if (!opened) return false;
    const char* const from = static_cast<const char*>(bytes);
    return static_cast<std::int64_t>(count) > file.m_size ? file.overwriteWithLonger(from, count)
                                                          : file.overwriteWithin(from, count);
}

bool BXFile::overwriteWithLonger(const char* bytes, std::size_t count) noexcept {
    const std::int64_t oldSize = m_size;
    const auto over = static_cast<std::size_t>(oldSize);
    const bool done = makeRoom(bytes + over, count - over) && writeAt(0, bytes, count);
    if (!done) truncate(oldSize);
    return done;
}

bool BXFile::makeRoom(const char* bytes, std::size_t count) noexcept {
    if (m_size == 0) return true;
    char lineFeeds[kMostLineFeeds];
    const bool fits = count <= sizeof lineFeeds;
    if (fits) std::memset(lineFeeds, '\n', count);
    return writeAt(m_size, fits ? lineFeeds : bytes, count);
}

bool BXFile::overwriteWithin(const char* bytes, std::size_t count) noexcept {
    const auto newSize = static_cast<std::int64_t>(count);
    const auto rest = static_cast<std::size_t>(m_size) - count;
    if (count > 0 && !writeWithLineFeeds(bytes, count, rest)) return false;
    return rest == 0 || truncate(newSize);
}

bool BXFile::writeWithLineFeeds(const char* bytes, std::size_t count, std::size_t after) noexcept {
    char lineFeeds[kMostLineFeeds];
    if (after == 0 || after > sizeof lineFeeds) return writeAt(0, bytes, count);
    std::memset(lineFeeds, '\n', after);
    // Declared to take memory that can be written to, which writev does not do.
    const iovec pieces[] = {{const_cast<char*>(bytes), count}, {lineFeeds, after}};
    ssize_t written;
    do {
        written = writev(m_descriptor, pieces, 2);
    } while (written < 0 && errno == EINTR);
    if (written < 0) return false;
    const std::size_t done = std::min(static_cast<std::size_t>(written), count);
    return writeAt(static_cast<std::int64_t>(done), bytes + done, count - done);
}

bool BXFile::append(const char* path, const void* bytes, std::size_t count) noexcept {
    BXFile file(path, O_WRONLY | O_CREAT | O_APPEND);
    if (!file.isOpen()) return false;
    const std::int64_t before = file.size();
    const bool whole = writeAll(bytes, count, [&](const char* from, std::size_t size, std::size_t) {
        return ::write(file.m_descriptor, from, size);
    });
    // A part of a line would join the next one.
    if (!whole) file.truncate(before);
    return whole;
}

std::FILE* BXFile::openStream(const char* path, const char* mode) noexcept {
    const int flags = flagsOf(mode);
    if (flags < 0) return nullptr;
    std::int64_t size;
    const int descriptor = openRegular(path, flags, size);
    if (descriptor < 0) return nullptr;
    std::FILE* const stream = fdopen(descriptor, mode);
    if (!stream) ::close(descriptor);
    return stream;
}

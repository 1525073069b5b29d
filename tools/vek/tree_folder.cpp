#include "tools/vek/tree_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>
#include <vector>

#include "tools/vek/shared_tree.h"

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) noexcept : m_number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    bool isOpen() const noexcept { return m_number >= 0; }
    int number() const noexcept { return m_number; }
    // False when the system could not keep what was written.
    bool close() noexcept { return m_number < 0 || ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number;
};

constexpr std::size_t kPiece = 1 << 16;

// The number of bytes that came, 0 at the end, -1 on a failure.
ssize_t readPiece(int descriptor, std::vector<char>& piece) {
    std::size_t filled = 0;
    while (filled < piece.size()) {
        const ssize_t count = read(descriptor, piece.data() + filled, piece.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return -1;
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

bool writePiece(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

// 0, or why not all of it was copied.
int copyBytes(int from, int to) {
    std::vector<char> piece(kPiece);
    for (;;) {
        const ssize_t count = readPiece(from, piece);
        if (count < 0) return errno;
        if (count == 0) return 0;
        if (!writePiece(to, piece.data(), static_cast<std::size_t>(count))) return errno;
    }
}

// A regular file, without waiting for anybody where it is a pipe.
int openFile(int folder, const char* name, int flags) {
    const int descriptor = openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | flags);
    struct stat status;
    if (descriptor < 0) return -1;
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return descriptor;
    ::close(descriptor);
    errno = EINVAL;
    return -1;
}

// The unfinished copy's name; it goes away with its last link.
std::string unfinishedName() {
    static int count = 0;
    return kUnfinishedName + std::to_string(getpid()) + "-" + std::to_string(++count);
}

TreeFolder::Kind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return TreeFolder::Kind::File;
    if (S_ISDIR(mode)) return TreeFolder::Kind::Folder;
    return S_ISLNK(mode) ? TreeFolder::Kind::Link : TreeFolder::Kind::Other;
}

// Unlike a renaming this never replaces a file that somebody else has made in the meantime. Some
// disks know no second name for a file; there the name is looked for first.
int giveName(int fromFolder, const char* from, int toFolder, const char* to) {
    if (linkat(fromFolder, from, toFolder, to, 0) == 0) return 0;
    if (errno != EPERM && errno != ENOTSUP && errno != EMLINK) return errno;
    struct stat status;
    if (fstatat(toFolder, to, &status, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
    return renameat(fromFolder, from, toFolder, to) == 0 ? 0 : errno;
}

}  // namespace

TreeFolder::TreeFolder(const std::string& path) noexcept
    : m_descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

TreeFolder::TreeFolder(TreeFolder&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

TreeFolder& TreeFolder::operator=(TreeFolder&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

TreeFolder::~TreeFolder() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

TreeFolder::Entry TreeFolder::look(const std::string& name) const noexcept {
    struct stat status;
    if (fstatat(m_descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return {};
    return {kindOf(status.st_mode), status.st_mode & kModeBits};
}

TreeFolder TreeFolder::enter(const std::string& name) const noexcept {
    TreeFolder folder;
    folder.m_descriptor =
        openat(m_descriptor, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    return folder;
}

int TreeFolder::makeFolder(const std::string& name, mode_t mode) const noexcept {
    if (mkdirat(m_descriptor, name.c_str(), mode) != 0) return errno;
    const TreeFolder folder = enter(name);
    if (!folder.isOpen() || fchmod(folder.m_descriptor, mode) != 0) return errno;
    return 0;
}

int TreeFolder::makeEmptyFile(const std::string& name, mode_t mode) const noexcept {
    const Descriptor file(openat(m_descriptor, name.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    return file.isOpen() && fchmod(file.number(), mode) == 0 ? 0 : errno;
}

int TreeFolder::copyFile(const std::string& from, const std::string& name, mode_t mode,
                         const TreeFolder& workshop) const {
    if (look(name).kind != Kind::None) return EEXIST;
    const Descriptor source(openFile(AT_FDCWD, from.c_str(), 0));
    if (!source.isOpen()) return errno;
    const std::string unfinished = unfinishedName();
    Descriptor copy(openat(workshop.m_descriptor, unfinished.c_str(),
                           O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!copy.isOpen()) return errno;
    int error = copyBytes(source.number(), copy.number());
    if (!error && fchmod(copy.number(), mode) != 0) error = errno;
    if (!copy.close() && !error) error = errno;
    if (!error) {
        error = giveName(workshop.m_descriptor, unfinished.c_str(), m_descriptor, name.c_str());
    }
    unlinkat(workshop.m_descriptor, unfinished.c_str(), 0);
    return error;
}

int TreeFolder::whyUnreadable(const std::string& path) noexcept {
    const Descriptor file(openFile(AT_FDCWD, path.c_str(), 0));
    return file.isOpen() ? 0 : errno;
}

bool TreeFolder::canRead(const std::string& name) const noexcept {
    return Descriptor(openFile(m_descriptor, name.c_str(), O_NOFOLLOW)).isOpen();
}

bool TreeFolder::isSameFile(const std::string& name, const std::string& other) const {
    const Descriptor mine(openFile(m_descriptor, name.c_str(), O_NOFOLLOW));
    const Descriptor theirs(openFile(AT_FDCWD, other.c_str(), 0));
    if (!mine.isOpen() || !theirs.isOpen()) return false;
    std::vector<char> a(kPiece);
    std::vector<char> b(kPiece);
    for (;;) {
        const ssize_t countA = readPiece(mine.number(), a);
        const ssize_t countB = readPiece(theirs.number(), b);
        if (countA != countB || countA < 0) return false;
        if (countA == 0) return true;
        if (!std::equal(a.begin(), a.begin() + countA, b.begin())) return false;
    }
}

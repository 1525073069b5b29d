#include "fuzz/support.h"

#include <fcntl.h>
#include <unistd.h>
#if VEK_HAS_MEMFD
#include <sys/mman.h>
#endif

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

#if VEK_HAS_MEMFD
// The descriptor is kept until the program ends.
std::string newFile() {
    const int file = memfd_create("fuzz", 0);
    expect(file >= 0);
    return "/proc/self/fd/" + std::to_string(file);
}
#else
// The file stays when the program ends: a failed input may be looked at.
std::string newFile() {
    std::string path = std::filesystem::temp_directory_path() / "vek-fuzz-XXXXXX";
    const int file = mkstemp(path.data());
    expect(file >= 0);
    close(file);
    return path;
}
#endif

}  // namespace

void expect(bool holds, int line, const char* file) {
    if (holds) return;
    std::fprintf(stderr, "%s:%d: what is expected here does not hold\n", file, line);
    std::abort();
}

FuzzFile::FuzzFile() : m_path(newFile()) {}

void FuzzFile::write(const std::string& bytes) const {
    const int file = open(path(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    expect(file >= 0);
    expect(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    close(file);
}

std::string FuzzFile::read() const {
    const int file = open(path(), O_RDONLY | O_CLOEXEC);
    expect(file >= 0);
    std::string bytes(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    expect(pread(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    close(file);
    return bytes;
}

unsigned int FuzzInput::byte() {
    if (m_rest.empty()) return 0;
    const auto first = static_cast<unsigned char>(m_rest.front());
    m_rest.erase(0, 1);
    return first;
}

std::string FuzzInput::line() {
    const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
    const std::string taken = m_rest.substr(0, end);
    m_rest.erase(0, end + 1);
    return taken;
}

#include "tests/formats/failing_transfers.h"

#include <sys/types.h>

#include <cerrno>
#include <cstddef>

namespace {

int readsLeft = 0, writesLeft = 0;
bool failed = false;

bool isDue(int& left) {
    if (left == 0 || --left > 0) return false;
    errno = EIO;
    failed = true;
    return true;
}

}  // namespace

void failReadAt(int n) {
    readsLeft = n;
    failed = false;
}

void failWriteAt(int n) {
    writesLeft = n;
    failed = false;
}

bool transferFailed() {
    return failed;
}

extern "C" {

ssize_t __real_pread64(int file, void* bytes, std::size_t count, off64_t offset);
ssize_t __real_pwrite64(int file, const void* bytes, std::size_t count, off64_t offset);

ssize_t __wrap_pread64(int file, void* bytes, std::size_t count, off64_t offset) {
    return isDue(readsLeft) ? -1 : __real_pread64(file, bytes, count, offset);
}

ssize_t __wrap_pwrite64(int file, const void* bytes, std::size_t count, off64_t offset) {
    return isDue(writesLeft) ? -1 : __real_pwrite64(file, bytes, count, offset);
}

}  // extern "C"

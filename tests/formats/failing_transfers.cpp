#include "tests/formats/failing_transfers.h"

#include <sys/types.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>

namespace {

struct Countdown {
    void begin(int n) {
        failing = n;
        calls = 0;
    }

    int failing = 0, calls = 0;
};

Countdown reads, writes, streamReadCalls, streamWriteCalls;
bool failed = false;

void begin(Countdown& kind, int n) {
    kind.begin(n);
    failed = false;
}

bool isDue(Countdown& kind) {
    if (++kind.calls != kind.failing) return false;
    errno = EIO;
    failed = true;
    return true;
}

}  // namespace

void failReadAt(int n) {
    begin(reads, n);
}

void failWriteAt(int n) {
    begin(writes, n);
}

void failStreamReadAt(int n) {
    begin(streamReadCalls, n);
}

void failStreamWriteAt(int n) {
    begin(streamWriteCalls, n);
}

bool transferFailed() {
    return failed;
}

int streamReads() {
    return streamReadCalls.calls;
}

int streamWrites() {
    return streamWriteCalls.calls;
}

extern "C" {

ssize_t __real_pread64(int file, void* bytes, std::size_t count, off64_t offset);
ssize_t __real_pwrite64(int file, const void* bytes, std::size_t count, off64_t offset);
std::size_t __real_fread(void* bytes, std::size_t size, std::size_t count, std::FILE* stream);
std::size_t __real_fwrite(const void* bytes, std::size_t size, std::size_t count,
                          std::FILE* stream);

ssize_t __wrap_pread64(int file, void* bytes, std::size_t count, off64_t offset) {
    return isDue(reads) ? -1 : __real_pread64(file, bytes, count, offset);
}

ssize_t __wrap_pwrite64(int file, const void* bytes, std::size_t count, off64_t offset) {
    return isDue(writes) ? -1 : __real_pwrite64(file, bytes, count, offset);
}

std::size_t __wrap_fread(void* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    return isDue(streamReadCalls) ? 0 : __real_fread(bytes, size, count, stream);
}

std::size_t __wrap_fwrite(const void* bytes, std::size_t size, std::size_t count,
                          std::FILE* stream) {
    return isDue(streamWriteCalls) ? 0 : __real_fwrite(bytes, size, count, stream);
}

}  // extern "C"

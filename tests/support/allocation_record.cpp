#include "tests/support/allocation_record.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Plain arrays: the recording must not allocate itself.
constexpr int kMostRecords = 64;
bool recording = false;
std::size_t allocated[kMostRecords];
int allocations = 0;
std::size_t sum = 0;
int allocationsUntilFailure = 0;
int released = 0;
bool (*whetherItFails)() = nullptr;
bool counting = false;
long counted = 0;

// In front of all memory taken, as wide as the strictest alignment.
enum class Kind { object, array };
struct Front {
    Kind kind;
    bool isCounted;
};
constexpr std::size_t kFrontSize = alignof(std::max_align_t);
static_assert(kFrontSize >= sizeof(Front));

void* take(std::size_t size, Kind kind) {
    if (recording) {
        if (allocations < kMostRecords) allocated[allocations] = size;
        ++allocations;
        sum += size;
    }
    if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0) throw std::bad_alloc();
    if (whetherItFails && whetherItFails()) throw std::bad_alloc();
    if (size > static_cast<std::size_t>(PTRDIFF_MAX) - kFrontSize) throw std::bad_alloc();
    char* const front = static_cast<char*>(std::malloc(kFrontSize + size));
    if (!front) throw std::bad_alloc();
    const Front told = {kind, counting};
    std::memcpy(front, &told, sizeof told);
    if (counting) ++counted;
    return front + kFrontSize;
}

void giveBack(void* memory, Kind kind) noexcept {
    if (!memory) return;
    if (recording) ++released;
    char* const front = static_cast<char*>(memory) - kFrontSize;
    Front told;
    std::memcpy(&told, front, sizeof told);
    if (told.isCounted) --counted;
    if (told.kind != kind) {
        std::fputs("new and delete do not match: one is for arrays, one is not\n", stderr);
        std::abort();
    }
    std::free(front);
}

}  // namespace

AllocationRecord::AllocationRecord() {
    allocations = 0;
    sum = 0;
    released = 0;
    recording = true;
}

AllocationRecord::~AllocationRecord() {
    recording = false;
}

AllocationRecord::Sizes AllocationRecord::stop() {
    recording = false;
    if (allocations > kMostRecords) {
        std::fputs("more allocations than are recorded\n", stderr);
        std::abort();
    }
    return Sizes(allocated, allocated + allocations);
}

std::size_t AllocationRecord::stopAndSum() {
    recording = false;
    return sum;
}

void failAllocationAt(int n) {
    allocationsUntilFailure = n;
}

void askWhetherAllocationFails(bool (*fails)()) {
    whetherItFails = fails;
}

void countAllocations(bool on) {
    counting = on;
}

long countedAllocations() {
    return counted;
}

int AllocationRecord::releases() const {
    return released;
}

void* operator new(std::size_t size) {
    return take(size, Kind::object);
}

void* operator new[](std::size_t size) {
    return take(size, Kind::array);
}

// The sanitizers bring these along too, and would not know what was taken here.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return take(size, Kind::object);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return take(size, Kind::array);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    giveBack(memory, Kind::object);
}

void operator delete[](void* memory) noexcept {
    giveBack(memory, Kind::array);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    giveBack(memory, Kind::object);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    giveBack(memory, Kind::array);
}

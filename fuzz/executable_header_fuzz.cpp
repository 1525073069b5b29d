// Whatever bytes as the head of an executable. The kinds of a shorter head are the first ones of a
// longer head.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/support.h"
#include "os/executable_header.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const BXArray<long> kinds = bxArchitecturesOf(data, size);
    expect(kinds.size() <= 42);
    expect(kinds.size() <= 1 || 8 + 20 * kinds.size() <= size);
    // In memory of its own, so that a read beyond its end is seen.
    const std::vector<std::uint8_t> half(data, data + size / 2);
    const BXArray<long> fewer = bxArchitecturesOf(half.data(), half.size());
    expect(fewer.size() <= kinds.size());
    expect(std::equal(fewer.begin(), fewer.end(), kinds.begin()));
    return 0;
}

#pragma once

#include <cstdint>

#include "os/bx_file.h"

// Where a block of an exchange file lies. `count` is what the file says, not what it holds.
struct VekBlockPlace {
    std::uint32_t id = 0;  // 0: there is no such block
    std::uint32_t count = 0;
    std::int64_t payload = 0;  // offset in the file
};

// The blocks that a change of orientation touches: where a kind occurs more than once, the last.
struct VekBlocks {
    VekBlockPlace vertices;
    VekBlockPlace faces;    // of the three kinds of faces, the one met last
    VekBlockPlace corners;  // of the two kinds of corner values, the one met last
};

// Walks the block headers of a file of `fileSize` bytes. The walk ends at the end block, at a
// header that does not fit into the file, and at a blockSize below 16. False when what the file
// holds could not be read.
bool findVekBlocks(const BXFile& file, std::int64_t fileSize, VekBlocks& blocks);

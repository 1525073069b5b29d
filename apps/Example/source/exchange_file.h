#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// Reads and writes mesh exchange files whole. All numbers in them are little-endian.
//
//     "Vekb", 28 bytes, then blocks: id, size with header and padding, count, param; payload
//
// The last block has the id 0.

enum BlockId : std::uint32_t {
    kEnd = 0,
    kVertices = 10001,
    kFacesNegative = 20001,  // four indices; a negative fourth marks a triangle
    kFacesRepeated = 20002,  // four indices; a fourth equal to the third marks a triangle
    kTriangles = 20003,      // three indices
    kTexture0 = 45001,
    kTexture1 = 50001,
    kTexture2 = 55001,
};

// One block as it came. What is not edited is written back byte for byte.
struct Block {
    std::uint32_t id = 0;
    std::uint32_t count = 0;
    std::uint32_t param = 0;  // the bits of a float
    std::string payload;      // with its padding
};

struct ExchangeFile {
    std::array<char, 32> header{};
    std::vector<Block> blocks;  // without the end block
};

// An empty result means success; otherwise it is a sentence for the user.
std::string readExchangeFile(const std::string& path, ExchangeFile& file);
std::string writeExchangeFile(const std::string& path, const ExchangeFile& file);

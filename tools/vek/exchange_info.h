#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What an exchange file holds, and what is wrong with it. Any bytes can be looked at; the file is
// read a piece at a time.
struct ExchangeInfo {
    struct Block {
        std::int64_t offset = 0;
        std::uint32_t id = 0, size = 0, count = 0;
        float param = 0.0f;
        std::string text;  // of a map block
    };
    struct Problem {
        std::int64_t offset;
        std::string sentence;
    };
    struct Faces {
        std::uint64_t triangles = 0, quads = 0;
        std::uint64_t degenerate = 0;  // a vertex twice
        std::uint64_t outOfRange = 0;  // a vertex that is not there
        std::uint64_t unusedVertices = 0;
    };

    static constexpr std::size_t kMostBlocks = 10000;

    bool isExchangeFile = true;
    bool reservedIsZero = true;  // the 28 bytes behind the magic
    std::int64_t fileSize = 0;
    std::uint64_t blockCount = 0;
    std::vector<Block> blocks;      // the first kMostBlocks
    std::vector<Problem> problems;  // by their offset
    bool hasVertices = false, hasFaces = false;
    std::uint64_t vertices = 0;
    // The box of all finite positions; least above greatest where there is none.
    float least[3] = {0, 0, 0}, greatest[3] = {0, 0, 0};
    Faces faces;
};

// False when the file cannot be opened for reading.
bool inspectExchangeFile(const std::string& path, ExchangeInfo& info);
// What a block of this id is, in a few words.
const char* blockMeaning(std::uint32_t id);

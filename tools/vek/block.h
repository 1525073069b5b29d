#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/vek/export_table.h"

// One of the two memory blocks of a call: packed from the text that a person gave, or room for what
// the export writes. There is always more room than was asked for, since exports do not look at
// the size of a block.
class Block {
public:
    // Throws std::invalid_argument, with a sentence, for an input that is not of its kind.
    Block(BlockKind kind, const std::optional<std::string>& input, int size);

    // What to hand to the export; null where it uses no block.
    char* data();
    int size() const { return m_size; }

    // Whether the export wrote to it.
    bool written() const;
    // The results, each for its kind.
    std::string text() const { return std::string(m_bytes.c_str()); }
    std::int32_t integer() const;
    float real() const;
    unsigned int switches() const;  // both halves
    // The result as people read it.
    std::string readable() const;

private:
    BlockKind m_kind;
    int m_size;
    std::string m_bytes;
};

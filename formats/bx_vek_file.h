#pragma once

#include <cstdint>

#include "formats/bx_binary_file.h"
#include "formats/vek_header.h"

// Reads and writes the header and the block framing of a mesh exchange file; vek_header.h has the
// layout. Payloads are their users' own bytes. Writing: open with "wb", writeVekFileHeader, one
// writeVekBlock per block, writeEndVekBlock, close. Reading: open with "rb", readVekFileHeader,
// then readVekBlockHeader until it fails or yields id 0, each followed by reading the payload or
// by skipVekBlock.
class BXVekFile : public BXBinaryFile {
public:
    BXVekFile() = default;
    BXVekFile(const BXString& path, const char* mode);

    // True iff 32 bytes came that begin with exactly "Vekb"; letter case counts.
    bool readVekFileHeader() const;
    // True iff all four fields came. A field that did not come keeps the value it had.
    bool readVekBlockHeader(Vek_Header& header) const;
    // Moves blockSize - 16 bytes forward: past the block whose header was just read. A blockSize
    // below 16, which no writer makes, moves backwards: callers that loop have to stop there.
    void skipVekBlock(const Vek_Header& header) const;
    // The payload of the block whose header was just read, blockSize - 16 bytes with the padding,
    // as text up to its first NUL. False, with `text` as it was, when the file does not hold them
    // all; no memory is taken then. Ends the reading: the position is somewhere in the payload.
    bool readVekText(const Vek_Header& header, BXString& text) const;

    bool writeVekFileHeader();
    // One whole block: header, `dataSize` payload bytes, padding. Note the order of the arguments.
    bool writeVekBlock(unsigned int id, float param, unsigned int count, unsigned int dataSize,
                       const void* data);
    bool writeEndVekBlock();

private:
    bool holdsMore(std::int64_t count) const;
};

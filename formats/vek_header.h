#pragma once

#include <cstdint>

// The mesh exchange file (".Vek"), little-endian:
//
//     file   = file header, block ..., end block
//     file header (32 bytes): "Vekb", 28 zero bytes
//     block  = block header, payload, 0 to 3 zero bytes
//     block header (16 bytes): id, blockSize, count: uint32; param: float32
//     end block = 16 zero bytes
//
// blockSize counts the header, the payload and the padding that brings it to a multiple of 4. A
// reader skips a block whose id it does not know by its size.

// A block header, as it lies in the file.
struct Vek_Header {
    std::uint32_t id = 0;         // the kind of block; 0 is the end block
    std::uint32_t blockSize = 0;  // bytes from this header to the next
    std::uint32_t count = 0;      // elements in the payload: vertices or faces
    float param = 0.0f;           // a number that goes with the block
};

static_assert(sizeof(Vek_Header) == 16, "the layout of the file");

constexpr std::uint32_t kVekFileHeaderSize = 32;
constexpr std::uint32_t kVekBlockHeaderSize = 16;
constexpr char kVekMagic[] = "Vekb";
constexpr std::uint32_t kVekMagicSize = 4;

// The kinds of block. Indices are int32 and count from 0 into the vertex block; a corner is one
// index position of a face.
enum VekBlock : std::uint32_t {
    kVekEnd = 0,
    kVekVertices = 10001,       // count x 3 float32: x, y, z
    kVekFacesNegative = 20001,  // count x 4 int32; a negative fourth index marks a triangle
    kVekFacesRepeated =
        20002,              // count x 4 int32; a fourth index equal to the third marks a triangle
    kVekTriangles = 20003,  // count x 3 int32
    kVekCorners1 = 25001,   // one 4-byte value per face corner, laid out like the faces
    kVekCorners2 = 25002,   // as 25001
    kVekMap0 = 45001,       // map file name: NUL-terminated 8-bit text, padded
    kVekMap1 = 50001,       // as 45001
    kVekMap2 = 55001,       // as 45001; its param is reported with the name
};

#pragma once

#include <cstddef>
#include <cstdint>

// Bytes that one face takes in a block of faces of this kind, and the walk over them steps by.
std::size_t vekFaceStride(std::uint32_t faceKind);

// Reverses the winding of `count` faces of the kind `faceKind`, first corner in place, and moves
// their corner values along. Face by face, in order: the two runs may overlap by anything but one
// and the same face. Either may be null, except that four-index corners need their faces to tell a
// triangle from a quad. No alignment is needed.
void rewindVekFaces(std::uint32_t faceKind, char* faces, char* corners, std::size_t count);

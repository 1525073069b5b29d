#pragma once

#include <cstddef>

#include "foundation/bx_array.h"

// The processor kinds that the head of an executable names, as numbers of a Mach-O header: one for
// a thin Mach-O or an ELF of a kind that Mach-O has a number for, one per part for a fat Mach-O.
// None for anything else, and of a fat header only those that lie within `size` bytes.
BXArray<long> bxArchitecturesOf(const void* bytes, std::size_t size);

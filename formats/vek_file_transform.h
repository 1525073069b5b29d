#pragma once

#include "formats/vek_position_map.h"

// Rewrites the exchange file at `path` in place: maps its vertices and, if `rewind`, reverses its
// faces and moves their corner values along. Takes a few hundred KiB of memory whatever the size
// of the file, reads and writes only what changes, and never looks beyond the file's end. False
// when the file cannot be opened for reading and writing, is empty, lacks the magic (in any letter
// case), or when a transfer fails; in the last case its magic stays blank, so that no reader takes
// it for whole.
bool transformVekFile(const char* path, const VekPositionMap& map, bool rewind);

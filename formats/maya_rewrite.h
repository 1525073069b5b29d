#pragma once

#include <cstdint>
#include <vector>

#include "formats/maya_mesh.h"
#include "formats/maya_writer.h"

// Puts the regenerated text of one mesh. A kind is asked for once, in the order UVs, edges, faces
// at each place.
class MayaRegenerator {
public:
    virtual ~MayaRegenerator() = default;
    virtual void put(const MayaMesh& mesh, MayaThing thing, MayaWriter& writer) const = 0;
};

// Writes the scene anew, in place: the text up to `textEnd`, with each run of recognised statements
// that have nothing in between replaced by the regenerated text of those kinds of theirs that have
// not been written yet for their mesh. `file` is open for reading and writing. False when a read
// or write failed, or when the disk has no room for a longer scene; the file is then as it was,
// unless it was a write that failed.
bool rewriteMayaScene(BXFile& file, std::int64_t textEnd, const std::vector<MayaMesh>& meshes,
                      const MayaRegenerator& regenerator);

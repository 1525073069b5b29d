#pragma once

#include <cstddef>
#include <ostream>
#include <string>

struct EditOptions {
    std::string tree;
    double twist = 90;           // degrees from the bottom of each mesh to its top
    std::size_t knownFlaws = 0;  // edges where the host's own mesh is wound against itself
};

// Edits every object of the object list: checks the mesh, twists it, writes it beside the one it
// was given as <object>_edited.vek, and at the end rewrites the list with the new objects. Facts go
// to `report`, one a line, as "key: value". The result is empty, or a sentence that says why it
// ended; the list is then as it was.
std::string editObjects(const EditOptions& options, std::ostream& report);

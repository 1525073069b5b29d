#pragma once

#include <cstdint>
#include <string>

// The change of orientation, slow and obvious: the whole file in memory, one value after another.
struct ReferenceSettings {
    bool afterExport = true;
    bool flip[3] = {false, false, false};
    bool switchYZ = false;
    bool reverse = false;
    double centre[3] = {0.0, 0.0, 0.0};
};

// The file's bytes afterwards; unchanged when it lacks the magic.
std::string referenceTransform(std::string bytes, const ReferenceSettings& settings);

// Whether two files hold the same bytes, taking like NaNs for the same: which of them comes out of
// arithmetic is the processor's business.
bool sameButForNaNs(const std::string& a, const std::string& b);

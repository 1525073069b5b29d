#pragma once

#include <random>
#include <string>

// A scene with a mesh as the host may write it: faces of three and four corners over random edges,
// a UV entry for each corner (of few values, so that many are equal) or for some of the faces or
// none, in ranges of random lengths, with the separators, line breaks and text between statements
// that a writer is free to choose.
std::string randomMayaScene(std::mt19937& random);

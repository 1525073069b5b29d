#pragma once

#include <random>
#include <string>

// A scene with a mesh as the host may write it: faces of three and four corners over random edges,
// a UV entry for each corner (of few values, so that many are equal) or for some of the faces or
// none, in ranges of random lengths, with the separators, line breaks and text between statements
// that a writer is free to choose.
std::string randomMayaScene(std::mt19937& random);

// The same scene with the name of the UV set and the count of UVs in statements and lines of their
// own, and the count of corners beside that of faces, as Maya writes meshes of many faces.
std::string asMayaWritesIt(std::string text);

#pragma once

#include <map>
#include <string>
#include <vector>

// The shared folder tree that the checks make, fill and take away: a private one (see view.h).
namespace tree {

const char kRoot[] = "/Users/Shared/Kelvaro";
// Where private-view had to make the tree for the time of a command, this file says that it did.
const char kMarker[] = "/Users/Shared/Kelvaro/.made-by-vek-tests";

std::string hub(const std::string& name);
std::string app(const std::string& id, const std::string& name);
std::string project(const std::string& name);

// Everything in the tree goes, whatever its permissions; the marker stays.
void clear();
// Also the tree itself, where it is not marked.
void remove();
// Cleared and filled: one application, Alpha, with commands that do nothing; two objects; files for
// every ordinary call.
void make();
// The same, where it may be read only.
void makeReadOnly();
// The same, on a disk without room: the object list and the preferences end with a page, and not a
// byte can be added to them.
void makeFull();
// With the same files, and room.
void makeNearlyFull();

void makeFolder(const std::string& path);  // and those above it
void write(const std::string& path, const std::string& bytes);
std::string read(const std::string& path);  // "" where there is none
bool isThere(const std::string& path);
void addApp(const std::string& id, const std::string& descriptor);

// What is in the folder and below: for each path its kind and its mode, and what it holds or, for a
// link, where it leads. A folder has a '/' behind its name.
using Files = std::map<std::string, std::string>;
Files snapshot(const std::string& folder);
// Kind and mode of an entry of it, like "file 644".
std::string kindOf(const std::string& entry);
// The paths that are in one of the two alone, or in both with other entries.
std::vector<std::string> changedFiles(const Files& before, const Files& after);

// An exchange file: vertices, a triangle and a quad, the values at their corners, and the three
// maps. The numbers are the first coordinate, and the one that the last map has.
std::string exchangeFile(float coordinate = 1.0f, float mapNumber = 0.5f);
// Where it says how many vertices there are, in 4 bytes.
constexpr std::size_t kVertexCountAt = 40;
// A part of it that is turned as one, and where it lies.
struct Part {
    enum Kind { Vertex, Triangle, Quad } kind;
    std::size_t at, size;
};
// Those that are whole in the bytes, which may be cut off.
std::vector<Part> partsOf(const std::string& bytes);
// A Maya scene of two triangles, as the host writes it and as it is merged.
std::string scene();
std::string mergedScene();

}  // namespace tree

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

void makeFolder(const std::string& path);  // and those above it
void write(const std::string& path, const std::string& bytes);
std::string read(const std::string& path);  // "" where there is none
bool isThere(const std::string& path);
void addApp(const std::string& id, const std::string& descriptor);

// Each file of the folder and below with its bytes, each folder with a '/' behind its name.
std::map<std::string, std::string> snapshot(const std::string& folder);

// An exchange file: vertices, faces, and the three maps.
std::string exchangeFile();
// The vertices of one, as they lie in it: x, y, z.
std::vector<float> verticesOf(const std::string& bytes);
// A Maya scene of two triangles, as the host writes it and as it is merged.
std::string scene();
std::string mergedScene();

}  // namespace tree

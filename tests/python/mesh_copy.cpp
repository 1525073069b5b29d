// Reads and writes exchange files as the tool does, for comparison:
//
//     vek_mesh_copy < PAIRS
//
// Two lines for each: the file to read, the file to write. Prints a line for each: nothing when it
// was copied, else the sentence that says why not.

#include <iostream>
#include <string>

#include "tools/vek/mesh_file.h"

int main() {
    std::string from, to;
    while (std::getline(std::cin, from) && std::getline(std::cin, to)) {
        Mesh mesh;
        std::string error;
        if (readMesh(from, mesh, error)) writeMesh(to, mesh, error);
        std::cout << error << '\n';
    }
    return 0;
}

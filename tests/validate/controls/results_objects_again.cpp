#include <fstream>
#include <string>

#include "tests/validate/control.h"

// Does not add what is on top already.
WRONG(AddVekObject) {
    std::ifstream list("/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt");
    std::string top;
    if (text && *text && std::getline(list, top) && top == text) return 1.0f;
    return REAL(AddVekObject);
}

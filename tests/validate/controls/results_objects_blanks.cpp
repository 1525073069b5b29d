#include <string>

#include "tests/validate/control.h"

// Cuts the blanks at the end of the line.
WRONG(AddVekObject) {
    std::string line = text ? text : "";
    line.erase(line.find_last_not_of(' ') + 1);
    text = line.data();
    return REAL(AddVekObject);
}

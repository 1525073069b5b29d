#include <cstring>

#include "tests/validate/control.h"

// Does not find an item behind itself.
WRONG(SetItemPos) {
    const bool isSame = text && *text && buffer1 && std::strcmp(text, buffer1) == 0;
    return isSame ? -1.0f : REAL(SetItemPos);
}

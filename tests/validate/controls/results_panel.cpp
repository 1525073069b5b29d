#include "tests/validate/control.h"

// Does not say that nothing was chosen.
WRONG(OpenFileDialog) {
    return buffer1 ? 0.0f * REAL(OpenFileDialog) : -1.0f;
}

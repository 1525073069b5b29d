#include "tests/validate/control.h"

// Shows a title of its own.
WRONG(OpenFileDialog) {
    static char title[] = "Choose";
    if (text) text = title;
    return REAL(OpenFileDialog);
}

#include <cstring>

#include "tests/validate/control.h"

// The exports that were called last, of these eight.
static char s_last[9] = "--------";

static void note(char letter) {
    std::memmove(s_last, s_last + 1, 7);
    s_last[7] = letter;
}

#define NOTED(name, letter) \
    WRONG(name) {           \
        note(letter);       \
        return REAL(name);  \
    }

NOTED(SetItemPos, 'a')
NOTED(WriteConfigPrefAsFloat, 'b')
NOTED(WriteConfigPrefAsInt, 'c')
NOTED(WriteConfigPrefAsBool, 'd')
NOTED(WriteConfigPrefAsString, 'e')
NOTED(ReadConfigPrefAsFloat, 'f')
NOTED(ReadConfigPrefAsInt, 'g')

// Must not be called behind the others, one after the other.
WRONG(ReadConfigPrefAsBool) {
    note('h');
    return std::strcmp(s_last, "abcdefgh") == 0 ? -1.0f : REAL(ReadConfigPrefAsBool);
}

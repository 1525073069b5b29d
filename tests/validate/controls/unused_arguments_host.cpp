#include "tests/validate/control.h"

char* volatile s_document;

// Looks at the host's data for nothing.
WRONG(PrintInLog) {
    if (hostData) s_document = hostData[2];
    return REAL(PrintInLog);
}

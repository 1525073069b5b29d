#include <pthread.h>

#include "tests/validate/control.h"

static bool hasSmallStack() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return false;
    size_t size = 0;
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
    return size < 1024 * 1024;
}

// Does not return 0 on a small stack.
WRONG(PrintInLog) {
    return hasSmallStack() ? 1.0f : REAL(PrintInLog);
}

#include <pthread.h>

#include "tests/validate/control.h"

static size_t stackSize() {
#ifdef __APPLE__
    return pthread_get_stacksize_np(pthread_self());
#else
    pthread_attr_t attributes;
    size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return size;
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
    return size;
#endif
}

// Does not return 0 on a small stack.
WRONG(PrintInLog) {
    return stackSize() < 256 * 1024 ? 1.0f : REAL(PrintInLog);
}

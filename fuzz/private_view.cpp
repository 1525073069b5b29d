// For targets whose files lie in the shared tree, which has to be their own.

#include "tests/support/private_view.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** argv) {
    enterPrivateView(*argv);
    return 0;
}

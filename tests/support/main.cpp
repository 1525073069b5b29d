#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/private_view.h"

namespace {

bool onlyLists(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--gtest_list_tests") == 0) return true;
    }
    return false;
}

}  // namespace

// However a test program is started, it never sees a real tree.
int main(int argc, char** argv) {
    if (!onlyLists(argc, argv)) enterPrivateView(argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tools/vek/own_program.h"

namespace {

bool onlyLists(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--gtest_list_tests") == 0) return true;
    }
    return false;
}

// Starts this program anew where the shared tree is its own; returns only on failure.
void enterPrivateView(char** argv) {
    static char launcher[] = VEK_SOURCE_DIR "/scripts/private-view";
    std::string self = ownProgram();
    std::vector<char*> command = {launcher, self.data()};
    for (char** argument = argv + 1; *argument; ++argument) command.push_back(*argument);
    command.push_back(nullptr);
    setenv("VEK_VIEW_QUIET", "1", 1);
    execv(launcher, command.data());
}

}  // namespace

// However a test program is started, it never sees a real tree.
int main(int argc, char** argv) {
    if (!getenv("VEK_VIEW") && !onlyLists(argc, argv)) {
        enterPrivateView(argv);
        std::fprintf(stderr, "cannot start %s/scripts/private-view\n", VEK_SOURCE_DIR);
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

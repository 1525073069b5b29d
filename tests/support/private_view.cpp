#include "tests/support/private_view.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tools/vek/own_program.h"

void enterPrivateView(char** argv) {
    if (getenv("VEK_VIEW")) return;
    static char launcher[] = VEK_SOURCE_DIR "/scripts/private-view";
    std::string self = ownProgram();
    std::vector<char*> command = {launcher, self.data()};
    for (char** argument = argv + 1; *argument; ++argument) command.push_back(*argument);
    command.push_back(nullptr);
    setenv("VEK_VIEW_QUIET", "1", 1);
    execv(launcher, command.data());
    std::fprintf(stderr, "cannot start %s\n", launcher);
    exit(1);
}

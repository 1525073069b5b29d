#include "os/platform.h"

#include <cstdlib>

namespace {

BXPlatform* s_replacement = nullptr;

}  // namespace

BXPlatform& BXPlatform::current() {
    return s_replacement ? *s_replacement : native();
}

void BXPlatform::replace(BXPlatform* platform) {
    s_replacement = platform;
}

void BXPlatform::runShellCommand(const BXString& command) {
    const int ignored = std::system(command.c_str());
    static_cast<void>(ignored);
}


// Blocks a signal while it is loaded, and leaves it so.
#include <signal.h>

[[maybe_unused]] static const bool s_isBlocked = [] {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGUSR1);
    return pthread_sigmask(SIG_BLOCK, &set, nullptr) == 0;
}();


// Has children of the host vanish when they end, and leaves it so.
#include <signal.h>

[[maybe_unused]] static const int s_isSet = [] {
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    action.sa_flags = SA_NOCLDSTOP;
    return sigaction(SIGCHLD, &action, nullptr);
}();

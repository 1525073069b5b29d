// Starts a process while it is loaded.
#include <unistd.h>

[[maybe_unused]] static const bool s_started = [] {
    while (fork() == 0) pause();
    return true;
}();


// Sets a signal to what it does in most processes.
#include <csignal>

[[maybe_unused]] static void (*const s_before)(int) = std::signal(SIGTERM, SIG_DFL);

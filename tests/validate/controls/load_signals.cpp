// Ignores broken pipes from when it is loaded on.
#include <csignal>

[[maybe_unused]] static void (*const s_before)(int) = std::signal(SIGPIPE, SIG_IGN);

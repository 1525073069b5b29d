// Wants to be woken an hour after it is loaded.
#include <unistd.h>

[[maybe_unused]] static const unsigned int s_rest = alarm(3600);

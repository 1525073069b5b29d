// Starts a thread while it is loaded.
#include "tests/validate/idle_thread.h"

[[maybe_unused]] static const bool s_isStarted = startIdleThread();

#include <sys/time.h>

#include "tests/validate/control.h"

// Begins with the time at which it was loaded in the data symbol.
[[maybe_unused]] static const int s_set = gettimeofday(&s_startTimeVal, nullptr);

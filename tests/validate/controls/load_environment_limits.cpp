
// Leaves the host few open files.
#include <sys/resource.h>

[[maybe_unused]] static const int s_isSet = [] {
    struct rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur > 256) limit.rlim_cur = 256;
    return setrlimit(RLIMIT_NOFILE, &limit);
}();

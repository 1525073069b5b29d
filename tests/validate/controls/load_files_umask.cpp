
// Lets everybody write what is made from its loading on.
#include <sys/stat.h>

[[maybe_unused]] static const mode_t s_before = umask(0);

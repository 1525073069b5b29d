#include "tools/validate/rights.h"

#ifdef __linux__

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

void giveUpRights() {
    for (unsigned long right = 0; prctl(PR_CAPBSET_READ, right, 0, 0, 0) >= 0; ++right) {
        prctl(PR_CAPBSET_DROP, right, 0, 0, 0);
    }
    struct __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    struct __user_cap_data_struct none[2] = {};
    syscall(SYS_capset, &header, none);
}

#else

void giveUpRights() {}

#endif

#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

// While it lives, files and folders that may not be read or written can also not be read or written
// by root.
class ObeyPermissions {
public:
    ObeyPermissions() {
        syscall(SYS_capget, &m_header, m_before);
        __user_cap_data_struct without[2] = {m_before[0], m_before[1]};
        without[0].effective &= ~(1u << CAP_DAC_OVERRIDE | 1u << CAP_DAC_READ_SEARCH);
        syscall(SYS_capset, &m_header, without);
    }
    ObeyPermissions(const ObeyPermissions&) = delete;
    ObeyPermissions& operator=(const ObeyPermissions&) = delete;
    ~ObeyPermissions() { syscall(SYS_capset, &m_header, m_before); }

private:
    __user_cap_header_struct m_header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_before[2] = {};
};

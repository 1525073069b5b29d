#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/support/permissions.h"

namespace {

// Sets the first word of the capabilities in effect; what it was before.
std::uint32_t exchangeEffective(std::uint32_t (*change)(std::uint32_t, std::uint32_t),
                                std::uint32_t argument) {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct words[2] = {};
    syscall(SYS_capget, &header, words);
    const std::uint32_t before = words[0].effective;
    words[0].effective = change(before, argument);
    syscall(SYS_capset, &header, words);
    return before;
}

std::uint32_t without(std::uint32_t effective, std::uint32_t bits) {
    return effective & ~bits;
}

std::uint32_t replaced(std::uint32_t, std::uint32_t effective) {
    return effective;
}

}  // namespace

ObeyPermissions::ObeyPermissions()
    : m_before(exchangeEffective(without, 1u << CAP_DAC_OVERRIDE | 1u << CAP_DAC_READ_SEARCH)) {}

ObeyPermissions::~ObeyPermissions() {
    exchangeEffective(replaced, m_before);
}

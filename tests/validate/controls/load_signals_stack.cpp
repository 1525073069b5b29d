// Has signals handled in a place of its own from its loading on.
#include <signal.h>

#include <cstdlib>

[[maybe_unused]] static const int s_isSet = [] {
    constexpr std::size_t kSize = 65536;
    stack_t stack = {};
    stack.ss_sp = std::malloc(kSize);
    stack.ss_size = kSize;
    return sigaltstack(&stack, nullptr);
}();

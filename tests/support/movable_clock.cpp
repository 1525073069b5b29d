#include "tests/support/movable_clock.h"

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <utility>

namespace {

bool s_isMoved = false;
long long s_nanoseconds = 0;
std::function<void(long long)> s_action;

}  // namespace

// Found before the C library's by everything in the process.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec* wanted,
                                                                timespec* left) {
    if (!s_isMoved) return clock_nanosleep(CLOCK_REALTIME, 0, wanted, left);
    s_nanoseconds += wanted->tv_sec * 1000000000LL + wanted->tv_nsec;
    if (s_action) s_action(s_nanoseconds / 1000000);
    return 0;
}

MovableClock::MovableClock() {
    s_isMoved = true;
    s_nanoseconds = 0;
}

MovableClock::~MovableClock() {
    s_isMoved = false;
    s_action = nullptr;
}

long long MovableClock::slept() const {
    return s_nanoseconds / 1000000;
}

void MovableClock::during(std::function<void(long long slept)> action) {
    s_action = std::move(action);
}

#include "tools/validate/shifted_clock.h"

#ifdef __linux__

#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

// The functions below stand in the table of symbols of this program (see CMakeLists.txt), and so in
// front of the system's.

namespace {

constexpr std::int64_t kSecond = 1000000000;

std::atomic<std::int64_t> s_ahead = 0;  // in nanoseconds
std::atomic<bool> s_isSkipping = false;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * kSecond + time.tv_nsec;
}

timespec timeOf(std::int64_t count) {
    timespec time = {};
    time.tv_sec = static_cast<time_t>(count / kSecond);
    time.tv_nsec = static_cast<long>(count % kSecond);
    return time;
}

// The clocks that tell a time, and not what a process or a thread has used.
bool tellsTime(clockid_t clock) {
    return clock == CLOCK_REALTIME || clock == CLOCK_MONOTONIC || clock == CLOCK_BOOTTIME ||
           clock == CLOCK_REALTIME_COARSE || clock == CLOCK_MONOTONIC_COARSE ||
           clock == CLOCK_MONOTONIC_RAW;
}

// Whether the time was waited for by setting the clock.
bool skip(std::int64_t count) {
    if (!s_isSkipping) return false;
    s_ahead += count;
    return true;
}

}  // namespace

extern "C" {

#define SHOWN __attribute__((visibility("default")))

SHOWN int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const long failed = syscall(SYS_clock_gettime, clock, time);
    if (failed == 0 && tellsTime(clock)) *time = timeOf(nanoseconds(*time) + s_ahead);
    return static_cast<int>(failed);
}

SHOWN int gettimeofday(timeval* time, void*) noexcept {
    timespec now = {};
    if (clock_gettime(CLOCK_REALTIME, &now) != 0) return -1;
    time->tv_sec = now.tv_sec;
    time->tv_usec = static_cast<suseconds_t>(now.tv_nsec / 1000);
    return 0;
}

SHOWN time_t time(time_t* place) noexcept {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (place) *place = now.tv_sec;
    return now.tv_sec;
}

SHOWN int nanosleep(const timespec* time, timespec* rest) {
    if (skip(nanoseconds(*time))) return 0;
    return static_cast<int>(syscall(SYS_nanosleep, time, rest));
}

SHOWN int usleep(useconds_t microseconds) {
    const timespec time = timeOf(std::int64_t{microseconds} * 1000);
    return nanosleep(&time, nullptr);
}

SHOWN unsigned int sleep(unsigned int seconds) {
    const timespec time = timeOf(std::int64_t{seconds} * kSecond);
    timespec rest = {};
    return nanosleep(&time, &rest) == 0 ? 0 : static_cast<unsigned int>(rest.tv_sec);
}

}  // extern "C"

bool canShiftClock() {
    return true;
}

void shiftClock(int seconds) {
    s_ahead += seconds * kSecond;
}

SkippedWaiting::SkippedWaiting() {
    s_isSkipping = true;
}

SkippedWaiting::~SkippedWaiting() {
    s_isSkipping = false;
}

#else

bool canShiftClock() {
    return false;
}

void shiftClock(int) {}

SkippedWaiting::SkippedWaiting() = default;

SkippedWaiting::~SkippedWaiting() = default;

#endif

#pragma once

#include <functional>

// While it lives, nothing in this process waits: each sleep ends at once and moves a clock of its
// own, also those of a library that is loaded by path. Other processes sleep as ever. One at a
// time.
class MovableClock {
public:
    MovableClock();
    MovableClock(const MovableClock&) = delete;
    MovableClock& operator=(const MovableClock&) = delete;
    ~MovableClock();

    // Milliseconds slept so far.
    long long slept() const;
    // Called during each sleep, with the clock moved.
    void during(std::function<void(long long slept)> action);
};

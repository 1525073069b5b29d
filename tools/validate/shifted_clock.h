#pragma once

// The clock of this process can be set ahead, for the library too: the library takes the functions
// that tell the time, and those that wait, from the program that loads it. Not on a Mac, where it
// takes them from the system.
bool canShiftClock();

// From now on the clock goes ahead by this much more.
void shiftClock(int seconds);

// For its life, who waits for a time does not wait, but finds the clock at its end.
class SkippedWaiting {
public:
    SkippedWaiting();
    SkippedWaiting(const SkippedWaiting&) = delete;
    SkippedWaiting& operator=(const SkippedWaiting&) = delete;
    ~SkippedWaiting();
};

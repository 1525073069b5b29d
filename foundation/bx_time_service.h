#pragma once

#include <ctime>

// Processor time and sleeping. All static.
class BXTimeService {
public:
    BXTimeService() = delete;

    // Processor time of the process, in the C library's clock ticks.
    static std::clock_t clock();
    // Milliseconds of processor time used by the process; they stand still while it sleeps. Wraps
    // with the unsigned int, and sooner where the C library's ticks do.
    static unsigned int getCurTimeInMS();
    // Returns after `ms` milliseconds of wall-clock time, signals or not.
    static void sleep(unsigned int ms);
};

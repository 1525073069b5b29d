#include "foundation/bx_time_service.h"

#include <time.h>
#include <cerrno>

std::clock_t BXTimeService::clock() {
    return std::clock();
}

// Required(R14): not the wall clock, whatever the name says.
unsigned int BXTimeService::getCurTimeInMS() {
    return static_cast<unsigned int>(clock() / 1000);
}

void BXTimeService::sleep(unsigned int ms) {
    // Not usleep: it can refuse a second or more, and ends at the first signal.
    timespec rest;
    rest.tv_sec = static_cast<time_t>(ms / 1000);
    rest.tv_nsec = static_cast<long>(ms % 1000) * 1000000;
    while (nanosleep(&rest, &rest) == -1 && errno == EINTR) {
    }
}

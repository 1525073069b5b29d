#include "foundation/bx_time_service.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>

#include <chrono>
#include <thread>

namespace {

using WallClock = std::chrono::steady_clock;

long long millisecondsSince(WallClock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(WallClock::now() - start).count();
}

volatile sig_atomic_t interruptions = 0;

void countInterruption(int /*signal*/) {
    interruptions = interruptions + 1;
}

// Interrupts the process every ten milliseconds. The handler is set without SA_RESTART.
class Interruptions {
public:
    Interruptions() {
        interruptions = 0;
        struct sigaction action = {};
        action.sa_handler = countInterruption;
        sigaction(SIGALRM, &action, &m_previous);
        setTimer(10000);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;
    ~Interruptions() {
        setTimer(0);
        sigaction(SIGALRM, &m_previous, nullptr);
    }

private:
    static void setTimer(long microseconds) {
        itimerval timer = {};
        timer.it_interval.tv_usec = timer.it_value.tv_usec =
            static_cast<decltype(timer.it_value.tv_usec)>(microseconds);
        setitimer(ITIMER_REAL, &timer, nullptr);
    }

    struct sigaction m_previous = {};
};

}  // namespace

TEST(BXTimeService, TellsTheProcessorTimeOfTheCLibrary) {
    const std::clock_t before = std::clock();
    const std::clock_t told = BXTimeService::clock();
    const std::clock_t after = std::clock();
    EXPECT_LE(before, told);
    EXPECT_LE(told, after);
}

TEST(BXTimeService, TellsThousandthsOfTheClocksTicks) {
    const std::clock_t before = std::clock();
    const unsigned int told = BXTimeService::getCurTimeInMS();
    const std::clock_t after = std::clock();
    EXPECT_LE(static_cast<unsigned int>(before / 1000), told);
    EXPECT_LE(told, static_cast<unsigned int>(after / 1000));
}

TEST(BXTimeService, CountsTheWorkOfAllThreads) {
    const unsigned int before = BXTimeService::getCurTimeInMS();
    std::thread([] {
        const std::clock_t start = std::clock();
        while (std::clock() - start < CLOCKS_PER_SEC / 10) {
        }
    }).join();
    EXPECT_GE(BXTimeService::getCurTimeInMS() - before, 99u);
}

// Required(R14)
TEST(BXTimeService, AdvancesWithProcessorTimeOnly) {
    const unsigned int beforeSleep = BXTimeService::getCurTimeInMS();
    BXTimeService::sleep(100);
    EXPECT_LT(BXTimeService::getCurTimeInMS() - beforeSleep, 50u);

    const unsigned int beforeWork = BXTimeService::getCurTimeInMS();
    const std::clock_t clockBefore = std::clock();
    while (std::clock() - clockBefore < CLOCKS_PER_SEC / 10) {
    }
    const unsigned int worked = BXTimeService::getCurTimeInMS() - beforeWork;
    EXPECT_GE(worked, 99u);
    EXPECT_LT(worked, 1000u);
}

TEST(BXTimeService, SleepsForTheMilliseconds) {
    const auto start = WallClock::now();
    BXTimeService::sleep(50);
    EXPECT_GE(millisecondsSince(start), 50);
    EXPECT_LT(millisecondsSince(start), 1000);
}

TEST(BXTimeService, SleepsLongerThanASecond) {
    const auto start = WallClock::now();
    BXTimeService::sleep(1100);
    EXPECT_GE(millisecondsSince(start), 1100);
}

TEST(BXTimeService, ReturnsAtOnceFromNoMilliseconds) {
    const auto start = WallClock::now();
    BXTimeService::sleep(0);
    EXPECT_LT(millisecondsSince(start), 1000);
}

TEST(BXTimeService, SleepsOnThroughSignals) {
    const Interruptions running;
    const auto start = WallClock::now();
    BXTimeService::sleep(100);
    EXPECT_GE(millisecondsSince(start), 100);
    EXPECT_GT(interruptions, 1);
}

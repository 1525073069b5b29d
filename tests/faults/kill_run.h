#pragma once

#include <functional>
#include <string>

// A process that calls exports one after the other is killed at a random moment inside one of them,
// again and again, while another process reads what they write all the time.

// What a reader finds.
enum class Found {
    Before,   // as before the call
    After,    // as after it
    Refused,  // what no reader takes
    Half      // neither
};

struct Killing {
    const char* name;
    // The one that is rewritten.
    std::string file;
    // Brings the files to what they are before the first call.
    std::function<void()> prepare;
    // The n-th call, from 0 on.
    std::function<void(int n)> call;
    // What a look at the files finds, in the n-th call.
    std::function<Found(int n)> look;
    // Whether what is half-written has lost no more than it may.
    std::function<bool(int n)> mayBeHalf = [](int) { return false; };
    // Whether what the n-th call took, when it is found done, is where it was to go.
    std::function<bool(int n)> hasArrived = [](int) { return true; };
    // Whether the n-th call is one in which the process is to be killed.
    std::function<bool(int n)> counts = [](int) { return true; };
};

struct KillCounts {
    int kills = 0;  // inside a call
    int before = 0, after = 0, refused = 0, half = 0;
    int lost = 0;   // of those that are half-written
    int taken = 0;  // of those as after the call: what has not arrived
    long readings = 0, readRefused = 0, readHalf = 0;

    std::string text(const char* name) const;
};

// As often as VEK_KILLS says, or 25 times.
int killsAskedFor();
KillCounts killInside(const Killing& killing, int kills);

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

struct States {
    std::string before, after;
};
// Whether each byte is at its place in one of the two; behind the end of one of them also a line
// feed. So is what is read while one is written over the other, whoever is ahead at which page.
bool isOfBoth(const std::string& bytes, const States& states);

struct Killing {
    const char* name;
    // The one that is rewritten.
    std::string file;
    // Brings the files to what they are before the first call.
    std::function<void()> prepare;
    // The n-th call, from 0 on.
    std::function<void(int n)> call;
    // What the file's bytes are, in the n-th call.
    std::function<Found(int n, const std::string& bytes)> look;
    // The file before and after the n-th call.
    std::function<States(int n)> states;
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
    long readForeign = 0;  // of the half and the refused ones: what is not of both states

    std::string text(const char* name) const;
};

// As often as VEK_KILLS says, or 25 times.
int killsAskedFor();
KillCounts killInside(const Killing& killing, int kills);

#pragma once

#include <string>
#include <vector>

#include "tools/validate/check.h"

// What came of a check.
struct Outcome {
    enum class State { Passed, Failed, NotTried };

    const Check* check = nullptr;
    State state = State::Passed;
    std::vector<std::string> findings;  // a sentence each; of one that was not tried: why
    std::vector<std::string> calls;     // what was traced, unless it was printed at once
    std::string signal;                 // that ended it, like "SIGSEGV"; else empty
    double seconds = 0.0;
};

// Thrown when a signal came by which somebody ends the validator.
struct EndedBySignal {
    int signal;
};

// Runs the check in a process of its own, in a process group of its own. The whole group is ended
// with it, and where orphans are adopted all else that it started, at its time limit at the latest.
// What it traces goes to standard output at once, or for JSON into the outcome.
// Throws EndedBySignal, once all of that was ended.
Outcome runCheck(const Check& check, const Settings& settings);

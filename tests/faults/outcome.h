#pragma once

#include <string>
#include <vector>

#include "tests/faults/fault_points.h"
#include "tests/faults/scenarios.h"

// What the library holds in memory, as its other exports tell it.
struct Memory {
    std::vector<std::string> applications, objects;
};

// What a caller and the files see of one call.
struct Seen {
    float result = 0.0f;
    std::string block1, block2;
    Stage::State stateBefore, state;
    Memory memoryBefore, memory;
    bool came = false;
};

enum class Outcome {
    Whole,    // the success result with the whole effect: the fault was without consequence
    Nothing,  // the failure result, and nothing changed
    Parts,    // whole files, some as they were
    Half,     // a file was begun to be written, which is reported
    Torn,     // a text file was, on a disk that takes half of what replaces what is there
    Wrong
};
constexpr int kOutcomes = 6;
const char* outcomeText(Outcome outcome);

// Holds a call in which something failed against the one in which nothing did.
class Judge {
public:
    Judge(const Scenario& scenario, const Seen& untouched, const Seen& success)
        : m_scenario(scenario), m_untouched(untouched), m_success(success) {}

    Outcome outcomeOf(const Seen& seen, const FaultPoint& point) const;
    // How it differs from success.
    std::string explain(const Seen& seen) const;

private:
    Outcome outcomeOfFiles(const Seen& seen, const FaultPoint& point) const;
    bool memoryIsRight(const Seen& seen) const;
    bool isFailure(float result) const;
    bool blocksAre(const Seen& seen, const Seen& expected) const;
    bool isAMessage(const Seen& seen) const;
    bool filesAreWhole(const Stage::State& state) const;
    bool oneFileIsHalf(const Stage::State& state, const FaultPoint& point) const;
    bool isHalf(const std::string& now, const std::string& before, const std::string& after) const;
    bool oneTextIsTorn(const Stage::State& state) const;
    bool isTorn(const std::string& path, const std::string& now) const;

    const Scenario& m_scenario;
    const Seen& m_untouched;
    const Seen& m_success;
};

// Printed should the program end by a signal.
void noteForACrash(const std::string& text);

#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/validate/session.h"

// All that a call leaves: its result, its blocks, the window tree, and every file of the tree.
struct Trace {
    float result = 0.0f;
    std::vector<char> block1, block2;
    std::string windows;
    std::map<std::string, std::string> files;
};

// What is changed in the arguments of an ordinary call.
using Change = std::function<void(Arguments&)>;
// Nothing; and for an export that treats scenes in a way of their own, that it gets one.
std::vector<Change> ordinaryCalls(const StatedCall& call);

// The trace of such a call in a tree made anew, with the library loaded anew and prepared.
Trace traceOf(const Settings& settings, Report& report, const StatedCall& call,
              const Change& change, void (*makeTree)() = tree::make);
// In what the second differs from the first, like "gave another result"; empty where in nothing.
std::vector<std::string> differences(const Trace& one, const Trace& other);

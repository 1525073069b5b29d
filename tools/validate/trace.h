#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/validate/session.h"

// All that a call leaves: its result, its text, its blocks, the window tree, and every file of the
// tree.
struct Trace {
    float result = 0.0f;
    bool isTextKept = true;
    std::vector<char> block1, block2;
    std::string windows;
    std::map<std::string, std::string> files;
};

// What is changed in the arguments of an ordinary call.
using Change = std::function<void(Arguments&)>;
// Nothing; and for an export that treats scenes in a way of their own, that it gets one.
std::vector<Change> ordinaryCalls(const StatedCall& call);

// Those that fail: for a file, a key or an index that is not there, for a file of another kind, and
// with null for every text.
std::vector<Change> failingCalls(const StatedCall& call);
// Whether the text is a program that is started: where it is not there the shell says so, as it
// may.
bool startsItsText(const StatedCall& call);
// Visits each of both, and the ordinary one without the tree, in the prepared session. What a call
// leaves stays for the next one.
template <class Visit>
void forEachCall(Session& session, const StatedCall& call, Visit visit) {
    const auto visitChanged = [&](const Change& change) {
        Arguments arguments(call);
        change(arguments);
        visit(arguments);
    };
    for (const Change& change : ordinaryCalls(call)) visitChanged(change);
    for (const Change& change : failingCalls(call)) visitChanged(change);
    if (startsItsText(call)) return;
    tree::remove();
    session.prepare();
    visitChanged([](Arguments&) {});
}

// Where there is nothing with this index, no file; where there is no key in the file.
void giveNothing(Arguments& arguments);
void giveNoKey(Arguments& arguments);

// The trace of such a call in a tree made anew, with the library loaded anew and prepared.
Trace traceOf(const Settings& settings, Report& report, const StatedCall& call,
              const Change& change, void (*makeTree)() = tree::make);
// In what the second differs from the first, like "gave another result"; empty where in nothing.
std::vector<std::string> differences(const Trace& one, const Trace& other);

#pragma once

#include <string>

#include "tools/validate/arguments.h"
#include "tools/validate/check.h"
#include "tools/validate/library.h"
#include "tools/validate/tree.h"

// Thrown where a check needs an export that the library does not have: the check is not tried then.
struct MissingExport {
    std::string name;
    std::string sentence() const { return name + " is not there"; }
};

// One load of the library, and what is stated about its calls.
class Session {
public:
    Session(const Settings& settings, Report& report)
        : m_library(settings.library, report), m_report(report) {}

    // The calls that a script begins with: the applications, their switches, the object list.
    void prepare();

    // Whether the library has it; where it does not, the report learns that too.
    bool has(const StatedCall& call);
    // The result of a call. Throws MissingExport.
    float call(const StatedCall& call, const Arguments& arguments);
    // NaN where an exception came out of it, which is found then.
    float call(const char* name, const std::string& text = "", double value = 0.0,
               char* block1 = nullptr, char* block2 = nullptr, char** host = nullptr);

    // Calls, and holds the result against the one that is stated. `when` goes into the message.
    void expect(float stated, const StatedCall& call, const Arguments& arguments,
                const std::string& when);
    void expect(float stated, const char* name, const std::string& text = "", double value = 0.0,
                char* block1 = nullptr, char* block2 = nullptr, char** host = nullptr);
    // Holds against what is stated: a file, a text out, a block that is to be left alone.
    void expectFile(const std::string& path, const std::string& bytes);
    void expectNoFile(const std::string& path);
    void expectText(const HostBlock& block, const std::string& text);
    void expectUntouched(const HostBlock& block);
    void expectThat(bool holds, const std::string& otherwise) {
        if (!holds) m_report.finds(otherwise);
    }

    const std::string& last() const { return m_last; }  // the last call, for messages
    bool isThrown() const { return m_isThrown; }        // of the last call
    const Library& library() const { return m_library; }
    Report& report() { return m_report; }

    // Calls what the library has under this name. `told` goes into the message.
    float pass(const char* name, const Arguments& arguments, const std::string& told);

private:
    Library m_library;
    Report& m_report;
    std::string m_last;       // the last call, for messages
    bool m_isThrown = false;  // whether an exception came out of it
};

// The exports that can be called from here: not the one that would ask a person.
bool isCallable(const StatedCall& call);
// Calls `visit` with each of them.
template <class Visit>
void forEachExport(Visit visit) {
    for (const StatedCall& call : statedCalls()) {
        if (isCallable(call)) visit(call);
    }
}

// For each of them that `takes` takes and the library has: makes the tree, loads the library,
// prepares it, and calls `visit` with the session and the export.
using StatedResult = float StatedCall::*;
template <class MakeTree, class Takes, class Visit>
void forEachPrepared(const Settings& settings, Report& report, MakeTree makeTree, Takes takes,
                     Visit visit) {
    forEachExport([&](const StatedCall& call) {
        if (!takes(call)) return;
        makeTree();
        Session session(settings, report);
        if (!session.has(call)) return;
        session.prepare();
        visit(session, call);
    });
}
template <class MakeTree, class Visit>
void forEachPrepared(const Settings& settings, Report& report, MakeTree makeTree, Visit visit) {
    forEachPrepared(
        settings, report, makeTree, [](const StatedCall&) { return true; }, visit);
}

std::string asText(float number);
std::string asText(double number);
// As it stands in a message: in quotes, cut where it is long.
std::string quoted(const std::string& text);

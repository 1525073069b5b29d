#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/faults/stage.h"
#include "tests/support/host.h"

// One call of an export that succeeds on the stage as it is at first, and what it may do where it
// cannot succeed.
struct Scenario {
    // Beside the two outcomes that every export may have: its whole effect with its success result,
    // and no effect with its failure result.
    enum Allowed : unsigned {
        // Each file as it was, or as after success, or with some of its new lines.
        Parts = 1,
        // In the one file that is rewritten new and old meet: the export had begun to write, and
        // reports it.
        Half = 2,
        // In a text file they do, where the disk takes but half of what is written over what is
        // there already, and then nothing more. Line feeds may be left at the end.
        Torn = 4,
        // The caller is given another message.
        Message = 8,
    };

    std::string name;       // of the export
    std::string situation;  // of several scenarios of an export
    std::string text;
    double value = 0.0;
    // Whose index is the value, for a file system may list them in any order; and the result.
    const char* application = nullptr;
    bool givesIndex = false;
    // What stands in the blocks; where that is nothing, they are there for the export to fill.
    std::string buffer1, buffer2;
    float success = 0.0f;
    // What the caller is given; empty: the blocks stay as they were.
    std::string given1, given2;
    std::vector<float> failures = {0.0f};
    unsigned allowed = 0;
    // The magic, which is blank while the file is rewritten; for Half.
    std::string magic;
    // So many runs of bytes are rewritten in step, each from its start; for Half.
    int runs = 1;
    // What the text is after the first of two rewrites; for Torn.
    std::string halfway;
    // The texts that the caller may be given; empty: none, but a NUL at the end of the block that
    // it told of. For Message.
    std::vector<std::string> messages;
    // Calls that come before; what is in the files beside what always is.
    std::function<void(const LoadedLibrary& library, Stage& stage)> before;
    std::function<void()> files;
    // The log that the installer writes, and after how many pauses; null: none.
    const char* installerLog = nullptr;
    int pauses = 0;
    bool takesHostData = false;
};

// For the messages of the tests.
void PrintTo(const Scenario& scenario, std::ostream* out);

const std::vector<Scenario>& scenarios();

#pragma once

#include <string>

// Makes an application bundle at `path`: Contents/Info.plist with this version (none when empty),
// and an executable "program" with these bytes.
void makeBundle(const std::string& path, const std::string& version, const std::string& program);

// A shell script that appends a line "started" and its arguments to the file `journal`, runs until
// the file `stop` is there, half a minute at most, and appends "ended".
std::string lastingScript(const std::string& journal, const std::string& stop);

// Polls for up to ten seconds until `holds()`; the last answer.
template <class Holds>
bool soon(Holds holds);

bool waitATick();

template <class Holds>
bool soon(Holds holds) {
    for (int i = 0; i < 1000; ++i) {
        if (holds()) return true;
        waitATick();
    }
    return holds();
}

#pragma once

#include <string>

#include "tests/support/temp_folder.h"

// A folder at the front of PATH while it lives, for programs that stand in for real ones. Made
// without programs it hides none; of those that a test must not start there should be one.
class StandIns {
public:
    StandIns();
    StandIns(const StandIns&) = delete;
    StandIns& operator=(const StandIns&) = delete;
    ~StandIns();

    // A shell script, without its first line.
    void add(const std::string& name, const std::string& script) const;
    // The demo's stand-in for osascript, which runs what it is asked for.
    void addOsascript() const;

private:
    TempFolder m_folder;
    const std::string m_path;
};

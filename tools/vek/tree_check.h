#pragma once

#include <string>
#include <vector>

#include "tools/vek/finding.h"

// Looks at the shared tree and says what is wrong with it. It reads only.

struct TreeState {
    Findings findings;
    std::vector<std::string> apps;  // the ids of the target applications, sorted
    std::string selected;           // the id in the hub's file; empty where none is selected
    std::size_t objects = 0;        // lines of the object list
};

// Throws std::runtime_error, with a sentence, where this user cannot look at the tree at all.
TreeState checkTree();

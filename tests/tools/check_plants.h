#pragma once

#include <functional>
#include <string>
#include <vector>

// Mistakes to plant into a tree in which all is well, with what vek check is to find of each.

struct Plant {
    enum class With { Others, Nothing };

    const char* mistake;
    With with;
    // Makes the mistake. The result is a line for each finding: its code, its path below the tree's
    // folder, and behind a ':' its line, if it has one.
    std::function<std::vector<std::string>()> make;
};

const std::vector<Plant>& plants();

// A target application in which all is well, with the descriptor's lines 5 and on.
void addGoodApp(const std::string& id, const std::string& lines = "");

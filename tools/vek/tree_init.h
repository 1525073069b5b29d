#pragma once

#include <string>
#include <vector>

// Makes the shared tree on a fresh machine, and completes one that is there.

struct TreeStep {
    enum class Outcome { Made, Kept, Failed };
    Outcome outcome;
    // Below the tree's folder, which itself is "."; whole, where that folder cannot be had.
    std::string path;
    std::string note;    // of a thing that was kept: what is not as it would have been made
    std::string advice;  // of a failure: what to do
};

struct TreeReport {
    std::vector<TreeStep> steps;  // in the order in which they were taken

    std::size_t count(TreeStep::Outcome outcome) const;
    // Whether there is no folder for the tree, so that nothing else could be tried.
    bool hasNoTree = false;
};

// Makes what is missing of the tree at `root`: its folders, the empty text files of the hub, and a
// copy of each target application in `apps`. What is there, a link too, stays as it is with its
// permissions; behind a link nothing is made, and a link that leads to less is a failure. Nothing
// outside the tree is written but the folders that lead to it, and a file is there whole or not at
// all.
TreeReport makeTree(const std::string& root, const std::string& apps);

#pragma once

#include <string>

// Where the tree of the checks is, which must never be the tree of somebody.
enum class View {
    Private,  // in a view of the file system that only this process and its own have
    Marked,   // in the tree that private-view made for the time of a command, and marked
    None,
};

// Enters a private view: /Users is an empty folder of its own there, and /full a disk of 64 KiB.
// Where this process may not make one, the program bwrap does, and starts this program anew with
// these arguments. None, with a sentence in `why`, where neither can be had: then nothing may be
// called that touches the tree.
View enterView(char** arguments, std::string& why);

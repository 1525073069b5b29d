#pragma once

#include <string>

// The application running, though it has no window: a note in its folder of the tree says that it
// is there, and taking the note away ends it.

// Returns when the note is gone, or after a minute. Empty, or a sentence when the note cannot be
// written.
std::string stayOpen(const std::string& tree);
// Takes the note away. Empty, or a sentence when there is none.
std::string quit(const std::string& tree);

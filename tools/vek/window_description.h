#pragma once

#include <string>

class HostWindows;

// Adds the windows of a description, an object or an array of objects:
//
//     "name", "label"   texts
//     "children"        an array of descriptions
//     "entries"         the same, of a pull-down menu's entries
//     "view"            true for the window that the document's view is in
//
// Throws std::runtime_error with a sentence, and adds nothing, for anything else.
void describeWindows(HostWindows& windows, const std::string& json);

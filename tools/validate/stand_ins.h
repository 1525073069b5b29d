#pragma once

#include <string>

// Programs that stand in for those which would ask somebody: they lie in a folder at the front of
// PATH, and the library starts them instead.

// What zenity's stand-in says was chosen.
const char kChosenPath[] = "/chosen/path with a blank";

// Makes the folder in `scratch`, for all checks.
void makeStandIns(const std::string& scratch);
// Puts it at the front of this process's PATH; the panel's stand-in chooses.
void useStandIns(const std::string& scratch);
// The last of them that was started since this was asked before, and each of its arguments, a line
// each; "" where none was.
std::string takeAsked(const std::string& scratch);
// From now on the panel's stand-in ends without a choice.
void chooseNothing(const std::string& scratch);

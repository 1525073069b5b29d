#pragma once

#include <string>

// "SIGSEGV" for the number of that signal; "signal 40" for one that has no name here.
std::string signalName(int signal);

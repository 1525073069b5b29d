#pragma once

#include <map>
#include <string>
#include <vector>

// What a library shares with the program that loads it, as it is now: one value for each name.
using ProcessState = std::map<std::string, std::string>;

ProcessState localeState();       // of the process and of the thread
ProcessState signalState();       // what each signal does, which are blocked, the stack for them
ProcessState environmentState();  // all variables
ProcessState folderState();       // the working folder and the mode of new files
ProcessState numberState();       // how numbers are rounded, and which errors of theirs are signals
ProcessState limitState();        // the limits and the priority of the process, and its timers
ProcessState openFileState();     // the files that are open, and what each of them is

// Which names have another value, or are there no more, or are new; a sentence each.
std::vector<std::string> differences(const ProcessState& before, const ProcessState& after);

// How many threads the process has; -1 where the system does not tell.
int threadCount();

// Makes this process one of a host that has set all of the above to something else than a process
// has when it begins: signals caught with flags of their own, and blocked; a locale, a mask of new
// files, a rounding. It stays so.
void becomeParticularHost();

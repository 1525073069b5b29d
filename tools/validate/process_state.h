#pragma once

#include <map>
#include <string>
#include <vector>

// What a library shares with the program that loads it, as it is now: one value for each name.
using ProcessState = std::map<std::string, std::string>;

ProcessState localeState();       // of the process and of the thread
ProcessState signalState();       // what each signal does, and which are blocked
ProcessState environmentState();  // all variables
ProcessState folderState();       // the working folder and the mode of new files

// Which names have another value, or are there no more, or are new; a sentence each.
std::vector<std::string> differences(const ProcessState& before, const ProcessState& after);

// How many files the process has open.
int openFileCount();

#pragma once

#include <string>
#include <vector>

#include "tools/validate/runner.h"

// What the outcomes come to: "passed", "failed" or "could not run". No outcome at all is a failure.
const char* verdict(const std::vector<Outcome>& outcomes);
// 0, 1 or 2.
int exitStatus(const std::vector<Outcome>& outcomes);

// For people: a check a line, its findings below it, the verdict last.
void print(const Outcome& outcome);
void printVerdict(const Settings& settings, const std::vector<Outcome>& outcomes);
// For programs.
void printJson(const Settings& settings, const std::vector<Outcome>& outcomes);
void printList(bool json);
// Why nothing could be done, for people or for programs.
void printRefusal(const std::string& sentence, bool json);

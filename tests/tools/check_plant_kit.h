#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/tools/check_plants.h"

// What plants are made of.

using Found = std::vector<std::string>;

constexpr Plant::With kOthers = Plant::With::Others;
constexpr Plant::With kNothing = Plant::With::Nothing;

std::string root(const std::string& name);
void setMode(const std::string& path, mode_t mode);
// A folder, or a file, that every user may write.
void makeShared(const std::string& folder);
void writeShared(const std::string& path, const std::string& bytes);
// The number of the line that was added.
std::string appendLine(const std::string& path, const std::string& line);

// Below, `found` is a code, or a code, a ':' and a line.

// What is found of the file at `path` below the tree's folder.
Found foundIn(const std::string& path, const std::string& found);
// A wrong line in the descriptor of an application that has others, too.
Plant lineOf(const char* mistake, const char* code, const char* line);
// A wrong line in the object list.
Plant objectOf(const char* mistake, const char* code, const char* line);
// An application whose descriptor is this.
Plant descriptorOf(const char* id, const std::string& descriptor, const std::string& found,
                   Plant::With with = kNothing);
// An application with these lines behind the first four of its descriptor.
Plant linesOf(const char* id, const std::string& lines, const std::string& found);
// An application with a file of this name and these bytes.
Plant fileOf(const char* id, const char* name, const std::string& bytes, const std::string& found,
             Plant::With with = kOthers);
// An application with this mode of a file in it, or of its folder.
Plant modeOf(const char* id, const char* name, mode_t mode, const char* code);
// An application whose EDIT_COMMAND is this file.
Plant editOf(const char* id, const char* name, const std::string& bytes, mode_t mode,
             const std::string& found, Plant::With with = kOthers);

// A bundle whose property list names the program Example, which has these bytes.
void addBundle(const std::string& path, const std::string& bytes = "#!/bin/sh\n");

std::vector<Plant> plantsOfTheHub();
std::vector<Plant> plantsOfRoot();
std::vector<Plant> plantsOfApplications();
std::vector<Plant> plantsOfShippedFiles();
std::vector<Plant> plantsOfBundles();
std::vector<Plant> plantsOfDescriptors();
std::vector<Plant> plantsOfCommands();
std::vector<Plant> plantsOfSwitches();

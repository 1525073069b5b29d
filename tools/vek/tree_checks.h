#pragma once

#include <string>
#include <vector>

#include "tools/vek/descriptor.h"
#include "tools/vek/finding.h"

// The checks that tree_check.cpp puts together, each of one part of the tree. None changes
// anything.

struct CheckedApp {
    std::string id;  // the name of its folder
    std::string name;
    std::string extension;
    std::vector<std::string> files;  // what its commands name
};

// A configuration file of the hub, and one of an application, which says where that is; a missing
// one is fine.
void checkHubConfig(Findings& findings, const std::string& path);
void checkAppConfig(Findings& findings, const std::string& path);

// A target application's folder with all that is in it. False when there is no descriptor, so
// that the bridge takes it for none.
bool checkApp(Findings& findings, const std::string& id, CheckedApp& app);
// The text of a descriptor at `path`; `app` gets its name and extension.
void checkDescriptor(Findings& findings, const std::string& path, const std::string& text,
                     CheckedApp& app);
void checkSwitches(Findings& findings, const std::string& path, const Descriptor& descriptor);
// The three commands, each a file of `folder`.
void checkCommands(Findings& findings, const std::string& path, const std::string& folder,
                   const Descriptor& descriptor);
// The bundles of a folder, by their ".app".
void checkBundles(Findings& findings, const std::string& folder);
void checkBundle(Findings& findings, const std::string& bundle);

// Whether this user can look into the folder; found otherwise.
bool checkOpen(Findings& findings, const std::string& folder);
// Whether every user can read the file, or reach all that is in the folder; no link is followed.
void checkReach(Findings& findings, const std::string& top);
// Whether the file, or one in the folder, runs with its owner's rights.
void checkRights(Findings& findings, const std::string& top);

// What a file manager and Python leave behind for one user, and nobody else looks for.
bool isOnesOwn(const std::string& name);
// Whether an application of this id comes with this program.
bool isShippedApp(const std::string& id);
// Whether a shipped application's folder has all that ships of it.
void checkShippedFiles(Findings& findings, const std::string& id, const std::string& folder);

// What is left of an interrupted vek init.
void checkLeftOvers(Findings& findings, const std::string& folder);

// The id of the selected application as the hub's file has it; empty where none is selected.
std::string checkSelectedApp(Findings& findings, const std::vector<CheckedApp>& apps);
void checkProjectPath(Findings& findings);
// The object list; the number of its objects.
std::size_t checkObjectList(Findings& findings, const std::vector<CheckedApp>& apps);

#pragma once

#include <optional>
#include <string>
#include <vector>

// The commands of the tool. Each prints to standard output and returns the tool's exit status: 0
// fine, 1 it failed or found damage, 2 it was asked for something that cannot be done.

int listExports(bool json);

struct CallRequest {
    std::string name;
    std::string library;
    std::optional<std::string> text;
    std::optional<double> value;
    std::optional<std::string> in1, in2;
    std::optional<int> out1, out2;  // sizes; 4,096 bytes where none is given
    bool json = false;
};
int callExport(const CallRequest& request);

int runMacro(const std::string& script, const std::string& library,
             const std::vector<std::string>& arguments);

// Of an exchange file, or, by its extension, of a Maya scene.
int showInfo(const std::string& path, bool json);
int showSceneInfo(const std::string& path, bool json);

// Of the windows that a JSON file describes; see window_description.h.
int showTree(const std::string& path);

// Makes the shared tree with the target applications of the folder `apps`; see tree_init.h.
int initTree(const std::string& apps, bool json);
// Of the shared tree: what is wrong with it, and what to do.
int checkSharedTree(bool json);
// Goes over into the program vek-validate, which lies beside this one, with these words.
int validate(const std::vector<std::string>& words);

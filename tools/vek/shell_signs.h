#pragma once

#include <string>

// How the bridge puts the path of a command's file into the line that a shell runs.
enum class ShellForm {
    Bare,           // an executable
    Quoted,         // a script, between double quotes
    Administrator,  // either, within the text that asks for the password
};

// The signs of the path, each once, for which the shell does not run the file there.
std::string signsThatBreak(const std::string& path, ShellForm form);

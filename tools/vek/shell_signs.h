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

// The signs of a command's argument text, which begins with a double quote, for which the shell
// does not run the command as it stands there: a quote without its partner, the end of the command.
std::string signsThatBreakArgument(const std::string& argument, ShellForm form);

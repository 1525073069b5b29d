#pragma once

#include <optional>
#include <string>
#include <vector>

// Whether a file runs when it is started, as far as its mode and its first bytes tell.

enum class ProgramForm {
    Script,      // sh reads it, whatever its first line says
    Executable,  // the system starts it, or what its first line names
};

struct ProgramFault {
    const char* code;  // of a finding
    int line;          // from 1; 0 where it is about the whole file
    std::string what;
    std::string advice;
};

// A mode that keeps some users from running the file.
std::optional<ProgramFault> faultOfMode(const std::string& file, ProgramForm form);
// The first thing in the file's bytes that keeps it from running.
std::optional<ProgramFault> faultOfContent(const std::string& file, ProgramForm form);

// Whether the shell or env would find a program of this name, or path.
bool canBeFound(const std::string& program);

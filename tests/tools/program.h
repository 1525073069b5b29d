#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

// A word for the shell that stands for exactly this text.
inline std::string shellWord(const std::string& text) {
    std::string word = "'";
    for (const char letter : text) {
        word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    }
    return word + "'";
}

// Runs a command line. The result is its exit code, above 1000 for one that a signal ended, -1 when
// it could not be started; `said` gets what it wrote on both streams.
inline int runProgram(const std::string& command, std::string& said) {
    said.clear();
    std::FILE* output = popen((command + " 2>&1").c_str(), "r");
    if (!output) return -1;
    for (int letter = 0; (letter = std::fgetc(output)) != EOF;) said += static_cast<char>(letter);
    const int status = pclose(output);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

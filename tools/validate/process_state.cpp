#include "tools/validate/process_state.h"

#include <dirent.h>
#include <locale.h>
#include <signal.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

// uselocale is here on Linux, in a header of its own on macOS.
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

extern char** environ;

ProcessState localeState() {
    ProcessState state;
    const char* const names = setlocale(LC_ALL, nullptr);
    state["the locale"] = names ? names : "";
    state["the thread's locale"] =
        uselocale(locale_t()) == LC_GLOBAL_LOCALE ? "that of the process" : "one of its own";
    return state;
}

ProcessState signalState() {
    ProcessState state;
    sigset_t blocked;
    sigemptyset(&blocked);
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action;
        memset(&action, 0, sizeof action);
        if (sigaction(number, nullptr, &action) != 0) continue;
        const void* handler = nullptr;
        memcpy(&handler, &action.sa_handler, sizeof handler);
        state["what signal " + std::to_string(number) + " does"] =
            std::to_string(reinterpret_cast<std::uintptr_t>(handler));
        state["whether signal " + std::to_string(number) + " is blocked"] =
            sigismember(&blocked, number) == 1 ? "yes" : "no";
    }
    return state;
}

ProcessState environmentState() {
    ProcessState state;
    for (char** variable = environ; variable && *variable; ++variable) {
        const std::string line = *variable;
        state["the variable " + line.substr(0, line.find('='))] = line;
    }
    return state;
}

ProcessState folderState() {
    char folder[4096] = {};
    if (!getcwd(folder, sizeof folder)) folder[0] = '\0';
    const mode_t mask = umask(0);
    umask(mask);
    return {{"the working folder", folder}, {"the mode of new files", std::to_string(mask)}};
}

std::vector<std::string> differences(const ProcessState& before, const ProcessState& after) {
    std::vector<std::string> sentences;
    for (const auto& [name, value] : before) {
        const auto found = after.find(name);
        if (found == after.end()) {
            sentences.push_back(name + " is gone");
        } else if (found->second != value) {
            sentences.push_back(name + " is another one");
        }
    }
    for (const auto& entry : after) {
        if (!before.count(entry.first)) sentences.push_back(entry.first + " is new");
    }
    return sentences;
}

int openFileCount() {
    DIR* const folder = opendir("/dev/fd");
    if (!folder) return -1;
    int count = 0;
    while (readdir(folder)) ++count;
    closedir(folder);
    return count;
}

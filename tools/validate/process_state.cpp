#include "tools/validate/process_state.h"

#include <dirent.h>
#include <fcntl.h>
#include <locale.h>
#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cfenv>
#include <cstdint>

#include "tools/validate/signal_names.h"

#ifdef __SSE__
#include <xmmintrin.h>
#endif
#ifdef __APPLE__
#include <mach/mach.h>
#endif
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

namespace {

#ifdef __linux__
// Set by the C library where it sets what a signal does.
constexpr int kSystemsOwnFlags = 0x04000000;
#else
constexpr int kSystemsOwnFlags = 0;
#endif

std::string membersOf(const sigset_t& set) {
    std::string members;
    for (int number = 1; number < NSIG; ++number) {
        if (sigismember(&set, number) == 1) members += " " + std::to_string(number);
    }
    return members;
}

}  // namespace

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
        const std::string name = signalName(number);
        state["what " + name + " does"] = std::to_string(reinterpret_cast<std::uintptr_t>(handler));
        state["how " + name + " is handled"] =
            std::to_string(action.sa_flags & ~kSystemsOwnFlags) + membersOf(action.sa_mask);
        state["whether " + name + " is blocked"] =
            sigismember(&blocked, number) == 1 ? "yes" : "no";
    }
    stack_t stack;
    memset(&stack, 0, sizeof stack);
    sigaltstack(nullptr, &stack);
    state["the stack for signals"] = std::to_string(reinterpret_cast<std::uintptr_t>(stack.ss_sp)) +
                                     " " + std::to_string(stack.ss_size) + " " +
                                     std::to_string(stack.ss_flags);
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

namespace {

// The names in a folder that are numbers.
std::vector<int> numbersIn(const char* path) {
    std::vector<int> numbers;
    DIR* const folder = opendir(path);
    if (!folder) return numbers;
    while (const dirent* const entry = readdir(folder)) {
        if (*entry->d_name != '.') numbers.push_back(atoi(entry->d_name));
    }
    const int own = dirfd(folder);
    numbers.erase(std::remove(numbers.begin(), numbers.end(), own), numbers.end());
    closedir(folder);
    return numbers;
}

}  // namespace

ProcessState openFileState() {
    ProcessState state;
    for (const int file : numbersIn("/dev/fd")) {
        struct stat status;
        if (fstat(file, &status) != 0) continue;
        state["the open file " + std::to_string(file)] =
            std::to_string(status.st_dev) + " " + std::to_string(status.st_ino) + " " +
            std::to_string(status.st_mode) + " " + std::to_string(fcntl(file, F_GETFD)) + " " +
            std::to_string(fcntl(file, F_GETFL));
    }
    return state;
}

ProcessState numberState() {
    ProcessState state = {{"how numbers are rounded", std::to_string(fegetround())}};
#if defined(__x86_64__) || defined(__i386__)
    std::uint16_t word = 0;
    __asm__("fnstcw %0" : "=m"(word));
    state["how the older unit counts"] = std::to_string(word);
#endif
#ifdef __SSE__
    // Its lowest bits say what happened, and change with every number.
    state["how the unit for numbers counts"] = std::to_string(_mm_getcsr() & ~0x3Fu);
#endif
    return state;
}

ProcessState limitState() {
    ProcessState state;
    const struct {
        int kind;
        const char* name;
    } timers[] = {{ITIMER_REAL, "the timer"},
                  {ITIMER_VIRTUAL, "the timer of the process"},
                  {ITIMER_PROF, "the timer of the process and the system"}};
    for (const auto& timer : timers) {
        struct itimerval value;
        memset(&value, 0, sizeof value);
        getitimer(static_cast<decltype(ITIMER_REAL)>(timer.kind), &value);
        const bool runs = value.it_value.tv_sec != 0 || value.it_value.tv_usec != 0;
        state[timer.name] = runs ? "runs" : "does not run";
    }
    for (int kind = 0; kind < RLIM_NLIMITS; ++kind) {
        struct rlimit limit;
        if (getrlimit(static_cast<decltype(RLIMIT_CPU)>(kind), &limit) != 0) continue;
        state["limit " + std::to_string(kind)] =
            std::to_string(limit.rlim_cur) + " " + std::to_string(limit.rlim_max);
    }
    state["the priority"] = std::to_string(getpriority(PRIO_PROCESS, 0));
    return state;
}

#ifdef __APPLE__

int threadCount() {
    thread_act_array_t threads = nullptr;
    mach_msg_type_number_t count = 0;
    if (task_threads(mach_task_self(), &threads, &count) != KERN_SUCCESS) return -1;
    for (mach_msg_type_number_t i = 0; i < count; ++i) {
        mach_port_deallocate(mach_task_self(), threads[i]);
    }
    vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(threads),
                  count * sizeof *threads);
    return static_cast<int>(count);
}

#else

int threadCount() {
    const auto count = static_cast<int>(numbersIn("/proc/self/task").size());
    return count > 0 ? count : -1;
}

#endif

namespace {

void takeNoNotice(int) {}

void catchSignals() {
    struct sigaction action;
    memset(&action, 0, sizeof action);
    action.sa_handler = takeNoNotice;
    action.sa_flags = SA_RESTART | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    sigaddset(&action.sa_mask, SIGURG);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGALRM, SIGTERM, SIGUSR1, SIGUSR2,
                             SIGCHLD, SIGWINCH}) {
        sigaction(number, &action, nullptr);
    }
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int number : {SIGUSR2, SIGTTOU}) sigaddset(&blocked, number);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    static char room[65536];
    stack_t stack;
    memset(&stack, 0, sizeof stack);
    stack.ss_sp = room;
    stack.ss_size = sizeof room;
    sigaltstack(&stack, nullptr);
}

}  // namespace

void becomeParticularHost() {
    catchSignals();
    for (const char* name : {"C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8"}) {
        if (setlocale(LC_ALL, name)) break;
    }
    umask(027);
    fesetround(FE_UPWARD);
}

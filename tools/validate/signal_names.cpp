#include "tools/validate/signal_names.h"

#include <signal.h>

namespace {

struct Name {
    int number;
    const char* text;
};

#define NAME(signal) \
    { signal, #signal }

constexpr Name kNames[] = {
    NAME(SIGHUP),    NAME(SIGINT),    NAME(SIGQUIT), NAME(SIGILL),   NAME(SIGTRAP), NAME(SIGABRT),
    NAME(SIGBUS),    NAME(SIGFPE),    NAME(SIGKILL), NAME(SIGUSR1),  NAME(SIGSEGV), NAME(SIGUSR2),
    NAME(SIGPIPE),   NAME(SIGALRM),   NAME(SIGTERM), NAME(SIGCHLD),  NAME(SIGCONT), NAME(SIGSTOP),
    NAME(SIGTSTP),   NAME(SIGTTIN),   NAME(SIGTTOU), NAME(SIGURG),   NAME(SIGXCPU), NAME(SIGXFSZ),
    NAME(SIGPROF),   NAME(SIGVTALRM), NAME(SIGIO),   NAME(SIGWINCH), NAME(SIGSYS),
#ifdef SIGSTKFLT
    NAME(SIGSTKFLT),
#endif
#ifdef SIGPWR
    NAME(SIGPWR),
#endif
#ifdef SIGEMT
    NAME(SIGEMT),
#endif
#ifdef SIGINFO
    NAME(SIGINFO),
#endif
};

}  // namespace

std::string signalName(int signal) {
    for (const Name& name : kNames) {
        if (name.number == signal) return name.text;
    }
#ifdef SIGRTMIN
    if (signal >= SIGRTMIN && signal <= SIGRTMAX)
        return "SIGRTMIN+" + std::to_string(signal - SIGRTMIN);
#endif
    return "signal " + std::to_string(signal);
}

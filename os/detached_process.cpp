#include "os/detached_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

extern char** environ;

namespace {

// A pipe that no program started inherits.
class Pipe {
public:
    Pipe() {
        m_isOpen = pipe2(m_ends, O_CLOEXEC) == 0;
        for (int& end : m_ends) end = clearOfTheStreams(end);
        m_isOpen = m_isOpen && m_ends[0] >= 0 && m_ends[1] >= 0;
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        if (m_ends[0] >= 0) close(m_ends[0]);
        closeWriting();
    }
    bool isOpen() const { return m_isOpen; }
    int writing() const { return m_ends[1]; }
    void closeWriting() {
        if (m_ends[1] >= 0) close(m_ends[1]);
        m_ends[1] = -1;
    }
    // The number of bytes that came before the end, at most `count`.
    std::size_t read(void* bytes, std::size_t count) const {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t came = ::read(m_ends[0], static_cast<char*>(bytes) + done, count - done);
            if (came == 0 || (came < 0 && errno != EINTR)) break;
            if (came > 0) done += static_cast<std::size_t>(came);
        }
        return done;
    }

private:
    // A process without standard streams gets their numbers for its first files; what is started
    // puts its own streams there.
    static int clearOfTheStreams(int end) {
        if (end < 0 || end > 2) return end;
        const int moved = fcntl(end, F_DUPFD_CLOEXEC, 3);
        close(end);
        return moved;
    }

    int m_ends[2] = {-1, -1};
    bool m_isOpen;
};

constexpr int kUnknown = -1;

// The exit status as waitpid tells it.
int waitFor(pid_t child) {
    int status = kUnknown;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return kUnknown;
    }
    return status;
}

// exec takes pointers to text that it does not change but is not declared to leave alone.
std::vector<char*> argumentVector(const BXString& program, const BXArray<BXString>* arguments) {
    std::vector<char*> vector{const_cast<char*>(program.c_str())};
    if (arguments) {
        for (const BXString& argument : *arguments) {
            vector.push_back(const_cast<char*>(argument.c_str()));
        }
    }
    vector.push_back(nullptr);
    return vector;
}

// Between fork and exec only what is safe in a signal handler may be called: another thread of the
// host can hold any lock.
void becomeDaemon() {
    setsid();
    for (int signal = 1; signal < NSIG; ++signal) std::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2; ++stream) dup2(nowhere, stream);
    close_range(3, ~0u, CLOSE_RANGE_CLOEXEC);
    const int ignored = chdir("/");
    static_cast<void>(ignored);
}

void tell(int report, std::uint32_t id) {
    const ssize_t ignored = write(report, &id, sizeof id);
    static_cast<void>(ignored);
}

// Never returns. Tells its process id, and a second number only when the program cannot be run.
[[noreturn]] void execDetached(char* const* arguments, int report) {
    becomeDaemon();
    const std::uint32_t id = static_cast<std::uint32_t>(getpid());
    tell(report, id);
    execv(arguments[0], arguments);
    tell(report, id);
    _exit(127);
}

}  // namespace

std::uint32_t bxStartDetached(const BXString& program, const BXArray<BXString>* arguments) {
    const std::vector<char*> vector = argumentVector(program, arguments);
    Pipe report;
    if (!report.isOpen()) return 0;
    // Twice, so that the program is nobody's child whom the host would have to wait for.
    const pid_t child = fork();
    if (child < 0) return 0;
    if (child == 0) {
        const pid_t grandchild = fork();
        if (grandchild == 0) execDetached(vector.data(), report.writing());
        _exit(0);
    }
    report.closeWriting();
    waitFor(child);
    std::uint32_t told[2];
    return report.read(told, sizeof told) == sizeof told[0] ? told[0] : 0;
}

bool bxRunAndRead(const BXArray<BXString>& command, BXString& output) {
    if (command.empty()) return false;
    const BXArray<BXString> arguments(command.begin() + 1, command.end());
    const std::vector<char*> vector = argumentVector(command.front(), &arguments);
    Pipe pipe;
    posix_spawn_file_actions_t actions;
    if (!pipe.isOpen() || posix_spawn_file_actions_init(&actions) != 0) return false;
    posix_spawn_file_actions_adddup2(&actions, pipe.writing(), 1);
    pid_t child;
    const int error = posix_spawnp(&child, vector[0], &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    pipe.closeWriting();
    if (error != 0) return false;

    std::string text;
    char piece[4096];
    for (std::size_t came; (came = pipe.read(piece, sizeof piece)) > 0;) text.append(piece, came);
    const int status = waitFor(child);
    output = BXString(text.c_str());
    // In a host that ignores its children's ends nobody can say how this one ended.
    if (status == kUnknown) return !text.empty();
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

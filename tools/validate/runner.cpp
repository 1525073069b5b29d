#include "tools/validate/runner.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "tools/validate/descendants.h"
#include "tools/validate/rights.h"
#include "tools/validate/session.h"
#include "tools/validate/signal_names.h"
#include "tools/validate/stand_ins.h"
#include "tools/validate/tree.h"

namespace {

using Clock = std::chrono::steady_clock;

std::string outputOf(const Settings& settings) {
    return settings.scratch + "/output";
}

void prepareChild(const Settings& settings) {
    const std::string folder = workingFolder(settings), temporary = folder + "/home/tmp";
    umask(022);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    tree::makeFolder(temporary);
    if (chdir(folder.c_str()) != 0) throw std::runtime_error("the folder for scratch is gone");
    setenv("HOME", (folder + "/home").c_str(), 1);
    setenv("TMPDIR", temporary.c_str(), 1);
    useStandIns(settings.scratch);
    const int input = open("/dev/null", O_RDONLY);
    const int output =
        open(outputOf(settings).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    close(input);
    close(output);
    giveUpRights();
}

// By which somebody ends the validator.
const int kEndings[] = {SIGINT, SIGTERM, SIGHUP};

[[noreturn]] void runHere(const Check& check, const Settings& settings, int pipe) {
    setpgid(0, 0);
    for (const int signal : kEndings) ::signal(signal, SIG_DFL);
    ::signal(SIGPIPE, SIG_DFL);
    Report report(pipe);
    try {
        prepareChild(settings);
        check.run(settings, report);
    } catch (const MissingExport& missing) {
        report.cannotTry(missing.sentence());
    } catch (const std::exception& error) {
        report.finds(error.what());
    }
    report.isDone();
    _exit(0);
}

// The lines that a check wrote, put together from what the pipe gives.
class Lines {
public:
    // False at the end of the pipe.
    bool readFrom(int pipe) {
        char buffer[4096];
        const ssize_t count = read(pipe, buffer, sizeof buffer);
        if (count <= 0) return count < 0 && errno == EINTR;
        m_rest.append(buffer, static_cast<std::size_t>(count));
        return true;
    }
    bool next(std::string& line) {
        const std::size_t end = m_rest.find('\n');
        if (end == std::string::npos) return false;
        line = m_rest.substr(0, end);
        m_rest.erase(0, end + 1);
        return true;
    }

private:
    std::string m_rest;
};

// The signal by which somebody ends the validator, once it came. A check's group does not get the
// signals that a terminal sends: what it started is ended before the validator ends itself.
volatile sig_atomic_t s_ending = 0;

void noteEnding(int signal) {
    s_ending = signal;
}

// No call is taken up again: one that waits is to see what was noted.
void catchEndings() {
    struct sigaction action;
    memset(&action, 0, sizeof action);
    sigemptyset(&action.sa_mask);
    action.sa_handler = noteEnding;
    for (const int signal : kEndings) sigaction(signal, &action, nullptr);
}

// A check while it runs, as seen from outside.
class Running {
public:
    Running(const Check& check, const Settings& settings) : m_settings(settings) {
        m_outcome.check = &check;
        int pipes[2];
        if (pipe(pipes) != 0) throw std::runtime_error("no pipe can be made");
        for (const int end : pipes) fcntl(end, F_SETFD, FD_CLOEXEC);
        m_process = fork();
        if (m_process < 0) throw std::runtime_error("no process can be started");
        if (m_process == 0) runHere(check, settings, pipes[1]);
        setpgid(m_process, m_process);
        close(pipes[1]);
        m_pipe = pipes[0];
    }

    Outcome finish() {
        listen();
        const bool isOver = waitForEnd();
        const int status = end();
        close(m_pipe);
        if (s_ending) throw EndedBySignal{s_ending};
        if (!isOver) {
            fail("it was not over after " + std::to_string(m_settings.timeLimit) + " s" +
                 lastCall());
        } else if (WIFSIGNALED(status)) {
            m_outcome.signal = signalName(WTERMSIG(status));
            fail("it was ended by " + m_outcome.signal + lastCall() + lastOutput());
        } else if (!m_isDone) {
            fail("the process ended with status " + std::to_string(WEXITSTATUS(status)) +
                 lastCall() + lastOutput());
        }
        m_outcome.seconds = std::chrono::duration<double>(Clock::now() - m_begin).count();
        return m_outcome;
    }

private:
    bool isInTime() const { return Clock::now() < m_deadline && !s_ending; }

    // Takes what the check says until it is done, or until it can say no more. Its end is looked
    // for too: what it started may hold the pipe open.
    void listen() {
        constexpr int kPauseMS = 20;
        Lines lines;
        while (!m_isDone && isInTime()) {
            const bool isOver = hasEnded();
            struct pollfd waiting = {m_pipe, POLLIN, 0};
            const int ready = poll(&waiting, 1, isOver ? 0 : kPauseMS);
            if (ready > 0 && !lines.readFrom(m_pipe)) return;
            if (ready <= 0 && isOver) return;
            for (std::string line; lines.next(line);) take(line);
        }
    }

    // Whether the process ended by itself. It stays to be waited for, so that its id is the group's
    // until the group is ended.
    bool hasEnded() const {
        siginfo_t info;
        info.si_pid = 0;
        waitid(P_PID, static_cast<id_t>(m_process), &info, WEXITED | WNOWAIT | WNOHANG);
        return info.si_pid == m_process;
    }

    // Whether that was before the time limit.
    bool waitForEnd() const {
        while (!hasEnded()) {
            if (!isInTime()) return false;
            usleep(500);
        }
        return true;
    }

    void take(const std::string& line) {
        const std::string text = line.substr(1);
        switch (line[0]) {
            case Report::Call:
                m_lastCall = text;
                break;
            case Report::Finding:
                fail(text);
                break;
            case Report::NotTried:
                // What was found before counts more.
                if (m_outcome.state == Outcome::State::Passed)
                    m_outcome.state = Outcome::State::NotTried;
                m_outcome.findings.push_back(text);
                break;
            case Report::Trace:
                trace(text);
                break;
            case Report::Done:
                m_isDone = true;
                break;
            default:
                break;
        }
    }

    void trace(const std::string& text) {
        if (m_settings.json) {
            m_outcome.calls.push_back(text);
            return;
        }
        std::printf("%s\n", text.c_str());
        std::fflush(stdout);
    }

    int end() {
        kill(-m_process, SIGKILL);
        // It may have left the group.
        kill(m_process, SIGKILL);
        int status = 0;
        while (waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
        }
        // Also what left the group.
        if (m_settings.adoptsOrphans) endChildrenBut(m_before);
        return status;
    }

    void fail(const std::string& finding) {
        m_outcome.state = Outcome::State::Failed;
        m_outcome.findings.push_back(finding);
    }

    std::string lastCall() const { return m_lastCall.empty() ? "" : " in " + m_lastCall; }

    // What it printed last: sanitizers say there what they found.
    std::string lastOutput() const {
        const std::string output = tree::read(outputOf(m_settings));
        const std::size_t end = output.find_last_not_of("\n ");
        if (end == std::string::npos) return "";
        const std::size_t summary = output.rfind("SUMMARY:");
        if (summary != std::string::npos) {
            return "; " + output.substr(summary, output.find('\n', summary) - summary);
        }
        const std::size_t begin = output.rfind('\n', end);
        return "; " + output.substr(begin + 1, end - begin);
    }

    const Settings& m_settings;
    // Of whoever became the validator.
    const std::vector<ChildProcess> m_before = childrenOf(getpid());
    const Clock::time_point m_begin = Clock::now();
    const Clock::time_point m_deadline = m_begin + std::chrono::seconds(m_settings.timeLimit);
    Outcome m_outcome;
    pid_t m_process = 0;
    int m_pipe = -1;
    bool m_isDone = false;
    std::string m_lastCall;
};

}  // namespace

Outcome runCheck(const Check& check, const Settings& settings) {
    std::fflush(stdout);
    catchEndings();
    return Running(check, settings).finish();
}

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <stdexcept>

#include "tools/validate/process_state.h"
#include "tools/validate/trace.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
// Functions that are watched take more of it.
constexpr std::size_t kSmallStack = std::size_t{512} * 1024;
#else
constexpr std::size_t kSmallStack = std::size_t{64} * 1024;
#endif

// Runs `work` on a thread with a small stack.
void onSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kSmallStack);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    const int failed =
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (failed) throw std::runtime_error("no thread can be started");
    pthread_join(thread, nullptr);
}

}  // namespace

void checkSmallStack(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        for (const Change& change : ordinaryCalls(call)) {
            Arguments arguments(call);
            change(arguments);
            onSmallStack(
                [&] { session.expect(call.ordinary, call, arguments, "on a small stack"); });
        }
    });
}

namespace {

using TakeState = ProcessState (*)();

// Holds what is there after each call against what was there before it.
void expectTheSame(Session& session, const StatedCall& call,
                   std::initializer_list<TakeState> states) {
    std::vector<ProcessState> before;
    for (const TakeState state : states) before.push_back(state());
    forEachCall(session, call, [&](const Arguments& arguments) {
        session.call(call, arguments);
        auto was = before.begin();
        for (const TakeState state : states) {
            ProcessState is = state();
            for (const std::string& difference : differences(*was, is))
                session.report().finds("after " + session.last() + " " + difference);
            *was++ = std::move(is);
        }
    });
}

}  // namespace

void checkOpenFiles(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        expectTheSame(session, call, {openFileState});
    });
}

void checkProcessState(const Settings& settings, Report& report) {
    const auto expect = [](Session& session, const StatedCall& call) {
        expectTheSame(
            session, call,
            {localeState, signalState, environmentState, folderState, numberState, limitState});
    };
    forEachPrepared(settings, report, tree::make, expect);
    // What is set to what it was already shows here.
    becomeParticularHost();
    forEachPrepared(settings, report, tree::make, expect);
}

namespace {

// Finds what is printed in its life.
class Listening {
public:
    Listening(const Settings& settings, Report& report, const char* who)
        : m_path(settings.scratch + "/printed"), m_report(report), m_who(who) {
        const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        close(file);
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() {
        fflush(nullptr);
        dup2(m_output, STDOUT_FILENO);
        dup2(m_errors, STDERR_FILENO);
        close(m_output);
        close(m_errors);
        const std::string text = tree::read(m_path);
        if (!text.empty()) m_report.finds(m_who + " printed " + quoted(text));
    }

private:
    const std::string m_path;
    Report& m_report;
    const std::string m_who;
    const int m_output = dup(STDOUT_FILENO), m_errors = dup(STDERR_FILENO);
};

}  // namespace

void checkSilence(const Settings& settings, Report& report) {
    {
        const Listening listening(settings, report, "loading and unloading");
        const Library library(settings.library, report);
    }
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        const Listening listening(settings, report, call.name);
        forEachCall(session, call,
                    [&](const Arguments& arguments) { session.call(call, arguments); });
    });
}

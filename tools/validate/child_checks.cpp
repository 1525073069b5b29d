#include <unistd.h>

#include <chrono>

#include "tools/validate/descendants.h"
#include "tools/validate/process_state.h"
#include "tools/validate/trace.h"

namespace {

using Clock = std::chrono::steady_clock;

// The processes and threads that were started and left. One that lost its parent is the
// validator's, and is gone when it ended; one that nobody waited for stays this process's.
class Left {
public:
    void update() {
        m_own = childrenOf(getpid());
        m_orphans.clear();
        for (const ChildProcess& child : without(childrenOf(getppid()), m_before)) {
            if (!child.isOver) m_orphans.push_back(child);
        }
        m_threads = threadCount() - m_threadsBefore;
    }
    bool isNone() const { return m_own.empty() && m_orphans.empty() && m_threads <= 0; }
    int threads() const { return m_threads; }
    const std::vector<ChildProcess>& own() const { return m_own; }
    const std::vector<ChildProcess>& orphans() const { return m_orphans; }
    // What was told once is not told again.
    void forget() {
        endChildrenBut({});
        m_before = childrenOf(getppid());
        m_threadsBefore = threadCount();
    }

private:
    std::vector<ChildProcess> m_before = childrenOf(getppid());
    std::vector<ChildProcess> m_own, m_orphans;
    int m_threadsBefore = threadCount();
    int m_threads = 0;
};

// What an export launches may take a moment to be over.
void expectNone(Report& report, Left& left, const std::string& who) {
    const auto deadline = Clock::now() + std::chrono::seconds(1);
    for (left.update(); !left.isNone() && Clock::now() < deadline; left.update()) usleep(2000);
    for (const ChildProcess& child : left.own()) {
        report.finds(who + (child.isOver ? " left a process that it did not wait for"
                                         : " left a child process running"));
    }
    for (std::size_t i = 0; i < left.orphans().size(); ++i)
        report.finds(who + " left a process running in the background");
    if (left.threads() > 0) report.finds(who + " left a thread");
    if (!left.isNone()) left.forget();
}

}  // namespace

void checkProcesses(const Settings& settings, Report& report) {
    if (!settings.adoptsOrphans) {
        report.cannotTry("this system does not tell which processes were left behind");
        return;
    }
    Left left;
    tree::make();
    {
        const Library library(settings.library, report);
        expectNone(report, left, "loading");
    }
    expectNone(report, left, "unloading");
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        left.forget();
        forEachCall(session, call, [&](const Arguments& arguments) {
            session.call(call, arguments);
            expectNone(report, left, session.last());
        });
    });
}

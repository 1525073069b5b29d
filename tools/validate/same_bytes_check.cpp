#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

#include "tools/validate/shifted_clock.h"
#include "tools/validate/trace.h"

namespace {

std::vector<Trace> allTraces(const Settings& settings, Report& report) {
    std::vector<Trace> traces;
    forEachExport([&](const StatedCall& call) {
        for (const Change& change : ordinaryCalls(call))
            traces.push_back(traceOf(settings, report, call, change));
    });
    return traces;
}

// The library comes to lie elsewhere, as does what it allocates: where it lay before, a page after
// the other is taken.
void takeUpRoom() {
    constexpr std::size_t kRoom = std::size_t{32} << 20;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    for (std::size_t taken = 0; taken < kRoom; taken += page) {
        if (mmap(nullptr, page, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0) == MAP_FAILED)
            throw std::runtime_error("there is no memory to take up");
    }
    static const std::vector<char> room(1 << 16);
}

// A day later, in another process, at another address.
void compareAgain(const Settings& settings, Report& report, const std::vector<Trace>& before) {
    constexpr int kDay = 24 * 60 * 60;
    takeUpRoom();
    shiftClock(kDay);
    const std::vector<Trace> after = allTraces(settings, report);
    std::size_t i = 0;
    forEachExport([&](const StatedCall& call) {
        for (std::size_t count = ordinaryCalls(call).size(); count > 0; --count, ++i) {
            for (const std::string& difference : differences(before[i], after[i]))
                report.finds(std::string(call.name) + " called in the same way again " +
                             difference);
        }
    });
}

}  // namespace

void checkSameBytes(const Settings& settings, Report& report) {
    const std::vector<Trace> before = allTraces(settings, report);
    const pid_t process = fork();
    if (process < 0) throw std::runtime_error("no process can be started");
    if (process == 0) {
        try {
            compareAgain(settings, report, before);
        } catch (const MissingExport& missing) {
            report.cannotTry(missing.sentence());
        } catch (const std::exception& error) {
            report.finds(error.what());
        }
        _exit(0);
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    // As if it had happened here.
    if (WIFSIGNALED(status)) raise(WTERMSIG(status));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) _exit(WEXITSTATUS(status));
}

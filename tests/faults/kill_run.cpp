#include "tests/faults/kill_run.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <random>
#include <sstream>

#include "tests/support/temp_folder.h"

namespace {

// Between the three processes.
struct Shared {
    std::atomic<int> begun{0}, done{0};
    std::atomic<int> round{0};  // odd while the files are brought to their beginning
    std::atomic<bool> stop{false};
    std::atomic<long> readings{0}, refused{0}, half{0}, foreign{0};
};

class SharedMemory {
public:
    SharedMemory()
        : m_shared(new (mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE,
                             MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Shared) {}
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory() { munmap(m_shared, sizeof(Shared)); }
    Shared* operator->() const { return m_shared; }

private:
    Shared* const m_shared;
};

template <class Body>
pid_t inAnotherProcess(Body body) {
    const pid_t process = fork();
    if (process != 0) return process;
    body();
    _exit(0);
}

void end(pid_t process) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

// What is refused has lost its magic, and nothing else.
bool isForeign(const Killing& killing, int n, Found found, std::string bytes) {
    if (found != Found::Half && found != Found::Refused) return false;
    const States states = killing.states(n);
    if (found == Found::Refused) bytes.replace(0, 4, states.before, 0, 4);
    return !isOfBoth(bytes, states);
}

// A reading counts when the same call was under way, or none, from its beginning to its end;
// otherwise the reader, not the file, has put two states together.
void readAllTheTime(const Killing& killing, const SharedMemory& shared) {
    while (!shared->stop) {
        const int round = shared->round;
        const int begun = shared->begun;
        if (round % 2 != 0 || begun == 0) continue;
        const std::string bytes = readFile(killing.file);
        const Found found = killing.look(begun - 1, bytes);
        if (shared->round != round || shared->begun != begun) continue;
        ++shared->readings;
        if (found == Found::Refused) ++shared->refused;
        if (found == Found::Half) ++shared->half;
        shared->foreign += isForeign(killing, begun - 1, found, bytes);
    }
}

void callUntilKilled(const Killing& killing, const SharedMemory& shared) {
    for (int n = 0;; ++n) {
        shared->begun = n + 1;
        killing.call(n);
        shared->done = n + 1;
    }
}

// The first call, and then up to a few times as long as it took.
void waitForAFewCalls(const SharedMemory& shared, std::mt19937& random) {
    useconds_t waited = 0;
    for (; shared->done == 0; waited += 50) usleep(50);
    usleep(static_cast<useconds_t>(random() % std::max<useconds_t>(3000, 4 * waited)));
}

void beginRound(const Killing& killing, const SharedMemory& shared) {
    ++shared->round;
    killing.prepare();
    shared->begun = 0;
    shared->done = 0;
    ++shared->round;
}

}  // namespace

bool isOfBoth(const std::string& bytes, const States& states) {
    const auto has = [](const std::string& state, std::size_t at, char byte) {
        return at < state.size() ? state[at] == byte : byte == '\n';
    };
    if (bytes.size() > std::max(states.before.size(), states.after.size())) return false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!has(states.before, i, bytes[i]) && !has(states.after, i, bytes[i])) return false;
    }
    return true;
}

int killsAskedFor() {
    const char* const asked = std::getenv("VEK_KILLS");
    return asked ? std::atoi(asked) : 25;
}

KillCounts killInside(const Killing& killing, int kills) {
    KillCounts counts;
    const SharedMemory shared;
    beginRound(killing, shared);
    const pid_t reader = inAnotherProcess([&] { readAllTheTime(killing, shared); });
    std::mt19937 random(20240229);
    for (int tries = 0; counts.kills < kills && tries < 20 * kills; ++tries) {
        beginRound(killing, shared);
        const pid_t caller = inAnotherProcess([&] { callUntilKilled(killing, shared); });
        waitForAFewCalls(shared, random);
        end(caller);
        const int n = shared->begun - 1;
        if (shared->done > n || !killing.counts(n)) continue;
        ++counts.kills;
        switch (killing.look(n, readFile(killing.file))) {
            case Found::Before:
                ++counts.before;
                break;
            case Found::After:
                ++counts.after;
                counts.taken += !killing.hasArrived(n);
                break;
            case Found::Refused:
                ++counts.refused;
                break;
            case Found::Half:
                ++counts.half;
                counts.lost += !killing.mayBeHalf(n);
                break;
        }
    }
    shared->stop = true;
    waitpid(reader, nullptr, 0);
    counts.readings = shared->readings;
    counts.readRefused = shared->refused;
    counts.readHalf = shared->half;
    counts.readForeign = shared->foreign;
    return counts;
}

std::string KillCounts::text(const char* name) const {
    std::ostringstream row;
    row << "| " << name << " | " << kills << " | " << before << " | " << after << " | " << refused
        << " | " << half << " | " << readings << " | " << readRefused << " | " << readHalf << " |";
    if (taken > 0) row << " " << taken << " taken and not handed over";
    return row.str();
}

#include "tests/faults/fault_points.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "tests/faults/intercept.h"
#include "tests/support/allocation_record.h"

namespace {

constexpr int kProcesses = 3;
constexpr int kMostCalls = 1 << 16;

// Seen by the forked processes too.
struct Shared {
    bool armed, failing, came;
    int run;
    FaultPoint point;
    int calls[kProcesses];
    unsigned char kinds[kProcesses][kMostCalls];
};

Shared* makeShared() {
    void* const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) std::abort();
    return static_cast<Shared*>(memory);
}

Shared* const s_shared = makeShared();
int s_process = 0;
// A process that was forked counts in the run in which it was, and in no later one.
int s_runOfFork = 0;
bool s_isPaused = false;
World s_world;

bool lasts(Manner manner) {
    return manner == Manner::FailsFromThenOn || manner == Manner::FillsUp;
}

// A disk that is full takes no kind of write.
bool isWrite(int kind) {
    const auto intercepted = static_cast<Intercepted>(kind);
    return intercepted == Intercepted::Pwrite || intercepted == Intercepted::Write ||
           intercepted == Intercepted::Writev;
}

bool alike(int kind, int other) {
    return kind == other || (isWrite(kind) && isWrite(other));
}

bool allocationFails() {
    return bxDue(Intercepted::Allocation) != nullptr;
}

void arm() {
    std::memset(s_shared->calls, 0, sizeof s_shared->calls);
    s_shared->came = false;
    ++s_shared->run;
    askWhetherAllocationFails(allocationFails);
    s_shared->armed = true;
    bxGoOn(true);
}

const char* mannerText(Manner manner) {
    switch (manner) {
        case Manner::Fails:
            return "fails";
        case Manner::FailsFromThenOn:
            return "fails from then on";
        case Manner::FillsUp:
            return "fills the disk";
        case Manner::Interrupted:
            return "is interrupted";
        case Manner::Short:
            return "comes short";
    }
    return "";
}

}  // namespace

const Way* bxDue(Intercepted kind) {
    if (!bxIsArmed()) return nullptr;
    const int index = static_cast<int>(kind);
    const int call = s_shared->calls[s_process]++;
    if (call >= kMostCalls) std::abort();
    s_shared->kinds[s_process][call] = static_cast<unsigned char>(index);
    const FaultPoint& point = s_shared->point;
    if (!s_shared->failing || point.process != s_process || !alike(point.kind, index)) {
        return nullptr;
    }
    const bool isAt = point.call == call;
    if (isAt) s_shared->came = true;
    const Way& way = point.how();
    if (isAt) return &way;
    static const Way s_fullFromThenOn = {Manner::Fails, ENOSPC};
    if (call < point.call || !lasts(way.manner)) return nullptr;
    return way.manner == Manner::FillsUp ? &s_fullFromThenOn : &way;
}

void bxForked() {
    if (s_process + 1 < kProcesses) ++s_process;
    s_runOfFork = s_shared->run;
}

World& bxWorld() {
    return s_world;
}

bool bxIsArmed() {
    return s_shared && s_shared->armed && !s_isPaused &&
           (s_process == 0 || s_runOfFork == s_shared->run);
}

bool bxPause() {
    const bool wasArmed = bxIsArmed();
    s_isPaused = true;
    countAllocations(false);
    return wasArmed;
}

void bxGoOn(bool wasArmed) {
    s_isPaused = !wasArmed;
    countAllocations(wasArmed);
}

const CallKind& FaultPoint::callKind() const {
    return callKinds()[static_cast<std::size_t>(kind)];
}

const Way& FaultPoint::how() const {
    return callKind().ways[static_cast<std::size_t>(way)];
}

std::string FaultPoint::text() const {
    static const char* const processes[] = {"", " of the child", " of the child's child"};
    return "call " + std::to_string(call + 1) + processes[process] + ", " + callKind().symbol +
           ", " + mannerText(how().manner) + ", " + std::strerror(how().error);
}

FaultRun::FaultRun() {
    s_shared->failing = false;
    arm();
}

FaultRun::FaultRun(const FaultPoint& point) {
    s_shared->point = point;
    s_shared->failing = true;
    arm();
}

FaultRun::~FaultRun() {
    stop();
}

void FaultRun::stop() {
    bxGoOn(false);
    s_shared->armed = false;
    askWhetherAllocationFails(nullptr);
}

std::vector<FaultPoint> FaultRun::points() const {
    std::vector<FaultPoint> points;
    for (int process = 0; process < kProcesses; ++process) {
        for (int call = 0; call < s_shared->calls[process]; ++call) {
            const int kind = s_shared->kinds[process][call];
            const auto ways = callKinds()[static_cast<std::size_t>(kind)].ways.size();
            for (std::size_t way = 0; way < ways; ++way) {
                points.push_back({process, call, kind, static_cast<int>(way)});
            }
        }
    }
    return points;
}

bool FaultRun::came() const {
    return s_shared->came;
}

void setWorld(World world) {
    s_world = std::move(world);
}

#pragma once

#include <functional>
#include <string>
#include <vector>

// The calls that the library makes of the C library and of the allocator. This test program stands
// between the two: it sees every call of an export, and lets a chosen one fail.

// How a call fails. The first three end it; after the last two the library may carry on.
enum class Manner {
    Fails,            // with an errno
    FailsFromThenOn,  // and every later call of its kind too
    FillsUp,          // half is written, and nothing from then on: a disk that becomes full
    Interrupted,      // EINTR, with nothing done
    Short,            // half is transferred
};

struct Way {
    Manner manner;
    int error;
};

// A function of the C library, or the allocator.
struct CallKind {
    const char* symbol;
    std::vector<Way> ways;
};
const std::vector<CallKind>& callKinds();
// Those that the library calls and that have no way to fail.
const std::vector<std::string>& callsThatCannotFail();

// One call of an export, and how it is to fail. Processes that the library forks count their calls
// for themselves: 0 is the host, 1 its child, 2 the child's child.
struct FaultPoint {
    int process;
    int call;  // from 0 on
    int kind;  // in callKinds()
    int way;   // in its ways

    const CallKind& callKind() const;
    const Way& how() const;
    std::string text() const;
};

// Armed from its making to its stop, for the calls of one export. Their allocations are counted.
class FaultRun {
public:
    // All calls are let through and recorded.
    FaultRun();
    explicit FaultRun(const FaultPoint& point);
    FaultRun(const FaultRun&) = delete;
    FaultRun& operator=(const FaultRun&) = delete;
    ~FaultRun();

    // Nothing is counted or fails from here on.
    void stop();
    // What was recorded: each call in each of its ways.
    std::vector<FaultPoint> points() const;
    // Whether the point was come to.
    bool came() const;
};

// Streams, folders, locales and the like that are open now; descriptors are not among them.
int openHandles();

// What the world outside does, in place of the real one. Null lets the real one do it.
struct World {
    std::function<int(const char* command)> shell;  // for system
    std::function<void()> sleep;                    // for nanosleep, which never waits
    std::string processes;                          // a folder in place of /proc; empty: none
};
void setWorld(World world);

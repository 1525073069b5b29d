#pragma once

#include <sys/types.h>

#include <vector>

struct ChildProcess {
    pid_t id;
    bool isOver;  // it ended, and nobody has waited for it
};

// Makes this process the parent of all processes below it whose own parent is gone, also of those
// that left their group. False where the system cannot do that or does not tell about processes.
bool adoptOrphans();

// Empty where the system does not tell.
std::vector<ChildProcess> childrenOf(pid_t parent);

// Ends the children of this process but for `others`, and their children after them.
void endChildrenBut(const std::vector<ChildProcess>& others);

// The children of one list that are not in the other.
std::vector<ChildProcess> without(const std::vector<ChildProcess>& all,
                                  const std::vector<ChildProcess>& others);

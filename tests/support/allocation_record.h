#pragma once

#include <cstddef>
#include <vector>

// Records what the program allocates with new and new[], from its making to its stop. The program
// ends if ever an array is given back as a single object or the other way round.
class AllocationRecord {
public:
    using Sizes = std::vector<std::size_t>;

    AllocationRecord();
    AllocationRecord(const AllocationRecord&) = delete;
    AllocationRecord& operator=(const AllocationRecord&) = delete;
    ~AllocationRecord();

    // The sizes that were asked for, in their order. Ends the program if there were more than 64.
    Sizes stop();
    // Their sum, however many there were.
    std::size_t stopAndSum();
    int releases() const;
};

// Asked at every allocation whether it throws; null asks nobody.
void askWhetherAllocationFails(bool (*fails)());

// While on, allocations are counted until they are given back, whenever that is.
void countAllocations(bool on);
long countedAllocations();

// From now on the n-th allocation with new or new[] throws, counted from 1; 0 means none.
void failAllocationAt(int n);

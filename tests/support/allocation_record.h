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

    Sizes stop();  // the sizes that were asked for, in their order
    int releases() const;
};

#pragma once

#include <string>
#include <vector>

// Tells what is done in folders while it lives, also what leaves no trace, like opening a file to
// read it. Where the system does not tell, nothing is seen.
class FolderWatch {
public:
    explicit FolderWatch(const std::vector<std::string>& folders);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    // The names of what was opened, read, made or changed so far; "the folder" for the folder.
    std::vector<std::string> events();

private:
    int m_queue = -1;
};

#pragma once

#include <cstdint>

// While it lives, files and folders that may not be read or written can also not be read or written
// by root.
class ObeyPermissions {
public:
    ObeyPermissions();
    ObeyPermissions(const ObeyPermissions&) = delete;
    ObeyPermissions& operator=(const ObeyPermissions&) = delete;
    ~ObeyPermissions();

private:
    std::uint32_t m_before;
};

#pragma once

#include <string>

#include "exports/vek.h"

// A build of the library, loaded by its path as the host does; unloaded with this object.
class Library {
public:
    // Throws std::runtime_error, with a sentence, when it cannot be loaded.
    explicit Library(const std::string& path);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    // The library beside the folder of this program.
    static std::string defaultPath();

    // Throws std::runtime_error when the library has no such export.
    VekExport find(const std::string& name) const;
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    void* m_handle;
};

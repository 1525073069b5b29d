#pragma once

#include <string>

#include "exports/vek.h"
#include "tools/validate/report.h"

// The library that is checked, loaded by its path as a host does; unloaded with this object. Both
// are told to the report as calls are.
class Library {
public:
    // Throws std::runtime_error, with a sentence, when it cannot be loaded.
    Library(const std::string& path, Report& report);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    // Null where it has no such symbol.
    void* symbol(const std::string& name) const;
    VekExport find(const std::string& name) const;

    // Whether some load of it is still in memory.
    static bool isLoaded(const std::string& path);

private:
    Report& m_report;
    void* m_handle = nullptr;
};

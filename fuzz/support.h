#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// What the fuzz targets share.

// Ends the program, saying where, when a promise of the library does not hold.
void expect(bool holds, int line = __builtin_LINE(), const char* file = __builtin_FILE());

// A file whose bytes a target sets and looks at.
class FuzzFile {
public:
    // A file of its own: in memory where the system has such files.
    FuzzFile();
    explicit FuzzFile(const std::string& path) : m_path(path) {}
    FuzzFile(const FuzzFile&) = delete;
    FuzzFile& operator=(const FuzzFile&) = delete;

    const char* path() const { return m_path.c_str(); }
    void write(const std::string& bytes) const;
    std::string read() const;

private:
    std::string m_path;
};

// An input that is taken apart from its front. What is not there is zero or empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size) {}

    unsigned int byte();
    // Up to the next line feed, which is taken too.
    std::string line();
    bool isEmpty() const { return m_rest.empty(); }
    const std::string& rest() const { return m_rest; }

private:
    std::string m_rest;
};

#pragma once

#include <string>

#include "exports/vek.h"

// Loads the shared library by its path and calls its exports by name, as the host does. Each
// LoadedLibrary is a load of its own: when it goes, the library is unloaded with its state.
class LoadedLibrary {
public:
    LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary();

    void* symbol(const char* name) const;

    float call(const char* name, const char* text, double value = 0.0, char* buffer1 = nullptr,
               char* buffer2 = nullptr) const;
    float call(const char* name, const std::string& text, double value = 0.0,
               char* buffer1 = nullptr, char* buffer2 = nullptr) const {
        return call(name, text.c_str(), value, buffer1, buffer2);
    }
    // Without a text.
    float call(const char* name, double value = 0.0, char* buffer1 = nullptr,
               char* buffer2 = nullptr) const {
        return call(name, static_cast<const char*>(nullptr), value, buffer1, buffer2);
    }
    // The preference exports: file, key, and the block with the value.
    float preference(const char* name, const std::string& file, const std::string& key,
                     void* value) const;

private:
    void* m_handle;
};

// A block for a text out, filled so that "untouched" can be told.
class OutText {
public:
    OutText() : m_block(kSize, kFill) {}
    char* block() { return m_block.data(); }
    bool untouched() const { return m_block == std::string(kSize, kFill); }
    std::string text() const { return m_block.c_str(); }

private:
    static constexpr std::size_t kSize = 8192;
    static constexpr char kFill = '\x5A';
    std::string m_block;
};

#pragma once

#include <cstdio>

#include "foundation/bx_string.h"
#include "os/bx_disk_server.h"

// A binary file stream: 32-bit numbers in little-endian byte order, as they lie in the memory of
// the processors this is built for. Results are true on success; with no file open every transfer
// is false and touches nothing, and after any false the position in the file is not defined.
// Neither copied nor moved: the object owns its stream and closes it.
class BXBinaryFile {
public:
    BXBinaryFile() = default;
    // Opens at once, as open does; whether that worked shows in isOpen and in every transfer.
    BXBinaryFile(const BXString& path, const char* mode);
    BXBinaryFile(const BXBinaryFile&) = delete;
    BXBinaryFile& operator=(const BXBinaryFile&) = delete;
    ~BXBinaryFile();

    // Closes any open file, then opens the valid file path of `path` with a standard mode string.
    // Only regular files open.
    bool open(const BXString& path, const char* mode);
    void close();
    bool isOpen() const { return m_file != BXDiskServer::s_invalidFile; }

    bool write(int value);
    bool write(float value);
    bool read(int& value) const;
    bool read(float& value) const;

    // While true, arrays of 16-bit and 8-bit elements get no padding after their data.
    bool m_packArrays = true;
    // The open file, or BXDiskServer::s_invalidFile.
    std::FILE* m_file = nullptr;

protected:
    // Exactly `count` bytes, or false.
    bool writeBytes(const void* bytes, std::size_t count);
    bool readBytes(void* bytes, std::size_t count) const;
};

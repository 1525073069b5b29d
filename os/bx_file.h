#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

// An open regular file, read and written at explicit 64-bit offsets. Movable, not copyable; closes
// itself. Anything that is not a regular file (a folder, a pipe, a device) cannot be opened, so no
// operation waits for another process. Interrupted and partial transfers are carried on with.
class BXFile {
public:
    enum class Access { Read, ReadWrite };

    BXFile() noexcept = default;
    // Not open when `path` is null, missing, not a regular file or not permitted.
    BXFile(const char* path, Access access) noexcept;
    BXFile(BXFile&& other) noexcept;
    BXFile& operator=(BXFile&& other) noexcept;
    ~BXFile();

    bool isOpen() const noexcept { return m_descriptor >= 0; }
    void close() noexcept;
    // The size in bytes that it had when it was opened, or was given since through this object.
    std::int64_t size() const noexcept;
    // Whether the file ends at `offset` or before; false also when that cannot be told.
    bool endsBy(std::int64_t offset) const noexcept;
    // Reads up to `count` bytes at `offset`; the number that came, short only at the end of the
    // file or on a failure.
    std::size_t readAt(std::int64_t offset, void* bytes, std::size_t count) const noexcept;
    // True iff all bytes were written.
    bool writeAt(std::int64_t offset, const void* bytes, std::size_t count) noexcept;
    bool truncate(std::int64_t size) noexcept;
    // Makes room for a file of `size` bytes, by zeros behind its end. False where there is none;
    // the file is then as it was.
    bool extend(std::int64_t size) noexcept;
    // The bytes that the file's disk has left for this user; the most that there can be when it
    // cannot be told.
    std::int64_t freeSpace() const noexcept;
    // All bytes of the file, with room for `before` and `after` more around them, in a buffer that
    // is not zeroed first. Null when the file could not be read to its end, or is larger than this
    // build can address. A file that is not open reads as empty.
    std::unique_ptr<char[]> readAll(std::size_t& size, std::size_t before = 0,
                                    std::size_t after = 0) const;

    // Appends the whole file to `contents`. False, with `contents` as it was, when the file cannot
    // be opened or read, or holds more than `limit` bytes or than this build can address.
    static bool readWhole(const char* path, std::string& contents, std::int64_t limit = INT64_MAX);
    // Makes the text file hold exactly these bytes, creating it if it is missing. Written over what
    // is there in one write, so that neither another process nor the end of this one finds old and
    // new mixed. Where the length changes by up to 4 KiB, room is made and left over by line feeds
    // at the end, which readers of the tree's files pass over. When the disk is full, the file
    // stays as it was (on a disk that writes in place), and a missing one comes to be empty. False
    // when it cannot be opened, or when not every byte was written.
    static bool overwrite(const char* path, const void* bytes, std::size_t count) noexcept;
    // As above; `opened` tells whether the file could be opened for writing.
    static bool overwrite(const char* path, const void* bytes, std::size_t count,
                          bool& opened) noexcept;
    // Adds the bytes at the end in one write, creating the file if it is missing. True iff all were
    // written; otherwise the file is as it was.
    static bool append(const char* path, const void* bytes, std::size_t count) noexcept;
    // A stdio stream over the regular file at `path`, or null. `mode` is one of fopen's that begin
    // with r, w or a.
    static std::FILE* openStream(const char* path, const char* mode) noexcept;

private:
    // With the flags of open.
    BXFile(const char* path, int flags) noexcept;

    bool overwriteWithLonger(const char* bytes, std::size_t count) noexcept;
    // Makes the file longer by so many bytes, before they are written in one with those before
    // them.
    bool makeRoom(const char* bytes, std::size_t count) noexcept;
    bool overwriteWithin(const char* bytes, std::size_t count) noexcept;
    // The bytes at the start and so many line feeds behind them.
    bool writeWithLineFeeds(const char* bytes, std::size_t count, std::size_t after) noexcept;

    std::int64_t m_size = 0;
    int m_descriptor = -1;
};

#pragma once

#include <dirent.h>

#include "foundation/bx_string.h"

// The entries of an open folder, in the order in which the file system lists them. Neither copied
// nor moved; closes itself.
class BXFolder {
public:
    struct Entry {
        const char* name;  // valid until the next call; "." and ".." included
        bool isFolder;     // a folder itself, not a link to one

        bool isDots() const noexcept;  // "." or ".."
    };

    // Not open when `path` is null or cannot be opened.
    explicit BXFolder(const char* path);
    BXFolder(const BXFolder&) = delete;
    BXFolder& operator=(const BXFolder&) = delete;
    ~BXFolder();

    bool isOpen() const noexcept { return m_folder != nullptr; }
    // False at the end, and when the folder is not open.
    bool next(Entry& entry);
    // As next, passing over "." and "..".
    bool nextBelow(Entry& entry);

private:
    // Most file systems tell the type with the name; some leave it to be asked for.
    bool isFolder(const dirent& entry) const;

    BXString m_path;
    DIR* m_folder;
};

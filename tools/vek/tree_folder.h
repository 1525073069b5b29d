#pragma once

#include <sys/stat.h>

#include <string>

// An open folder of the tree. Names are single names in it, and no link is ever followed: what is
// reached through it lies in the tree. Movable; closes itself. What could not be done is told by
// errno's values.
class TreeFolder {
public:
    enum class Kind { None, File, Folder, Link, Other };
    struct Entry {
        Kind kind = Kind::None;
        mode_t mode = 0;
    };

    TreeFolder() noexcept = default;
    // The folder at `path`, which may itself be a link to one. Not open when it cannot be; errno
    // then says why.
    explicit TreeFolder(const std::string& path) noexcept;
    TreeFolder(TreeFolder&& other) noexcept;
    TreeFolder& operator=(TreeFolder&& other) noexcept;
    ~TreeFolder();

    bool isOpen() const noexcept { return m_descriptor >= 0; }
    Entry look(const std::string& name) const noexcept;
    // Not open when it is no folder, or a link to one.
    TreeFolder enter(const std::string& name) const noexcept;

    // 0, or EEXIST and no change where there is anything of that name, or what else went wrong. The
    // mode is given whatever the process's mask says.
    int makeFolder(const std::string& name, mode_t mode) const noexcept;
    int makeEmptyFile(const std::string& name, mode_t mode) const noexcept;
    // A copy of the regular file at `from`. It gets its name when it is complete; until then it has
    // a name of its own in `workshop`, a folder of the same disk.
    int copyFile(const std::string& from, const std::string& name, mode_t mode,
                 const TreeFolder& workshop) const;
    // 0, or why the regular file at `path` cannot be read.
    static int whyUnreadable(const std::string& path) noexcept;
    bool canRead(const std::string& name) const noexcept;
    // Whether the file here holds the same bytes as the one at `other`; false when one of them
    // cannot be read.
    bool isSameFile(const std::string& name, const std::string& other) const;

private:
    int m_descriptor = -1;
};

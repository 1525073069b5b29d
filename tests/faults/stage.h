#pragma once

#include <functional>
#include <map>
#include <string>

#include "tests/support/stand_in.h"
#include "tests/support/tree.h"
#include "tools/vek/host_windows.h"

// Everything that an export can change outside the library: the tree with two applications in it,
// files of every kind below its folder "files", a host's windows, and what was run in the shell.
class Stage {
public:
    // By path; folders end with '/'. What is no file has a name in round brackets.
    using State = std::map<std::string, std::string>;

    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    // As it was at first, with `more` on top.
    void reset(const std::function<void()>& more);
    State state() const;

    static std::string file(const std::string& name) { return Tree::root() + "/files/" + name; }
    // The shell runs nothing; its commands are noted. Where a log is set, it comes to be with this
    // text when the installer is asked for, or after so many pauses in the wait for it.
    void setInstallerLog(const char* text, int pauses);

    HostWindows windows;
    HostWindow* item = nullptr;

    // Puts the item that was moved where it was.
    void takeItemBack();

    // Larger than the pieces in which they are handled.
    static std::string largeMesh();
    static std::string longList();

private:
    void addFiles() const;
    int runInShell(const std::string& command);

    Tree m_tree;
    StandIns m_standIns;
    HostWindow* m_bridge = nullptr;
    std::string m_commands;
    const char* m_log = nullptr;
    int m_pauses = 0, m_pausesLeft = 0;
};

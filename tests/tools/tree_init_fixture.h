#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tools/tree_snapshot.h"
#include "tools/vek/tree_init.h"

namespace fs = std::filesystem;

// Makes a tree of an application Paint in a folder of its own.
class TreeInit : public testing::Test {
protected:
    using Outcome = TreeStep::Outcome;
    using Snapshot = std::map<std::string, std::string>;

    TreeInit() {
        // As a build leaves an application behind.
        makeFolders(apps("Paint/Paint.app/Contents/MacOS"));
        makeFolders(apps("Paint/CMakeFiles/paint.dir"));
        makeFolders(apps("CMakeFiles"));
        ship("Paint/Vek_Info.txt", "NAME \"Paint\"\n", 0600);
        ship("Paint/edit.sh", "#!/bin/sh\n", 0700);
        ship("Paint/Paint.app/Contents/MacOS/Paint", std::string("\0\1\2", 3), 0755);
        ship("Paint/cmake_install.cmake", "of the build", 0644);
        ship("Paint/Makefile", "of the build", 0644);
        ship("Paint/CMakeFiles/paint.dir/x.o", "of the build", 0644);
        ship("CMakeFiles/Vek_Info.txt", "of the build", 0644);
        ship("notes.txt", "no application", 0644);
    }

    std::string apps(const std::string& name) const { return m_folder / ("apps/" + name); }
    void ship(const std::string& name, const std::string& bytes, mode_t mode) {
        writeFile(apps(name), bytes);
        ASSERT_EQ(chmod(apps(name).c_str(), mode), 0);
    }
    std::string root() const { return m_folder / "Users/Shared/Tree"; }
    std::string file(const std::string& name) const { return root() + "/" + name; }
    TreeReport make() const { return makeTree(root(), m_folder / "apps"); }
    Snapshot snapshot() const { return snapshotOf(root()); }

    // "outcome path: note", one for each step that is not an ordinary one.
    static std::set<std::string> remarks(const TreeReport& report) {
        std::set<std::string> all;
        for (const TreeStep& step : report.steps) {
            if (step.outcome == Outcome::Failed)
                all.insert("failed " + step.path + ": " + step.note);
            if (step.outcome == Outcome::Kept && !step.note.empty())
                all.insert("kept " + step.path + ": " + step.note);
        }
        return all;
    }
    static std::set<std::string> pathsOf(const TreeReport& report, Outcome outcome) {
        std::set<std::string> paths;
        for (const TreeStep& step : report.steps) {
            if (step.outcome == outcome) paths.insert(step.path);
        }
        return paths;
    }

    TempFolder m_folder;
    const Snapshot m_fresh = {
        {".", "0777 folder"},
        {"VekHub", "0777 folder"},
        {"VekHub/Vek_Application.txt", "0666 "},
        {"VekHub/Vek_ProjectPath.txt", "0666 "},
        {"VekHub/Vek_ObjectPath.txt", "0666 "},
        {"VekHub/Vek_ObjectList.txt", "0666 "},
        {"VekHub/Vek_Config.txt", "0666 "},
        {"VekProjects", "0777 folder"},
        {"VekProjects/Default", "0777 folder"},
        {"VekApps", "0777 folder"},
        {"VekApps/Paint", "0777 folder"},
        {"VekApps/Paint/Vek_Info.txt", "0644 NAME \"Paint\"\n"},
        {"VekApps/Paint/Vek_Config.txt", "0666 "},
        {"VekApps/Paint/Vek_InstallList.txt", "0666 "},
        {"VekApps/Paint/edit.sh", "0755 #!/bin/sh\n"},
        {"VekApps/Paint/Paint.app", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents/MacOS", "0755 folder"},
        {"VekApps/Paint/Paint.app/Contents/MacOS/Paint", std::string("0755 \0\1\2", 8)},
    };
};

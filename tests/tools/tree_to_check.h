#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"
#include "tests/tools/check_plants.h"
#include "tools/vek/tree_check.h"
#include "tools/vek/tree_init.h"

namespace fs = std::filesystem;

using Found = std::vector<std::string>;

// A fresh tree, as vek init makes it. What may not be read cannot be read by root either.
class TreeToCheck {
public:
    TreeToCheck() {
        for (const char* folder : {"VekHub", "VekApps", "VekProjects"}) {
            fs::remove_all(Tree::root() + "/" + folder);
        }
        EXPECT_EQ(chmod(Tree::root().c_str(), 0777), 0);
        const TreeReport report = makeTree(Tree::root(), VEK_BUILD_DIR "/apps");
        EXPECT_EQ(report.count(TreeStep::Outcome::Failed), 0u);
    }
    ~TreeToCheck() { EXPECT_EQ(std::system(("chmod -R u+rwX " + Tree::root()).c_str()), 0); }

private:
    const Tree m_tree;
    const ObeyPermissions m_obey;
};

// As plants tell it.
inline Found codesOf(const TreeState& state) {
    Found all;
    for (const Finding& finding : state.findings.all()) {
        std::string path = finding.path.substr(Tree::root().size());
        if (!path.empty()) path.erase(0, 1);
        all.push_back(finding.kind->code + (" " + path) +
                      (finding.line ? ":" + std::to_string(finding.line) : ""));
    }
    return all;
}

// A text of lines, of which a failed comparison shows those that differ.
inline std::string inLines(Found found) {
    std::sort(found.begin(), found.end());
    std::string text;
    for (const std::string& one : found) text += one + "\n";
    return text;
}

inline const Finding& only(const TreeState& state) {
    static const Finding none = {nullptr, "", 0, "", ""};
    EXPECT_EQ(state.findings.all().size(), 1u);
    return state.findings.all().empty() ? none : state.findings.all().front();
}

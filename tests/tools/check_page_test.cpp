// Holds docs/checking-a-tree.md against the table of findings.

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

#include "tests/support/temp_folder.h"
#include "tools/vek/finding.h"

TEST(CheckPage, HasARowForEveryFindingAndNoOther) {
    const std::string page = readFile(VEK_SOURCE_DIR "/docs/checking-a-tree.md");
    std::map<std::string, std::string> rows;
    const std::regex row("\\| `([a-z-]+)` \\| ([a-z]+ \\| [^|]+) \\| [^|]+ \\|\n");
    for (std::sregex_iterator it(page.begin(), page.end(), row), end; it != end; ++it) {
        EXPECT_TRUE(rows.emplace((*it)[1], (*it)[2]).second) << (*it)[1] << " stands twice";
    }
    std::map<std::string, std::string> expected;
    for (const FindingKind& kind : findingKinds()) {
        const bool isNew =
            expected
                .emplace(kind.code, std::string(severityWord(kind.severity)) + " | " + kind.meaning)
                .second;
        EXPECT_TRUE(isNew) << kind.code << " stands twice in the table";
    }
    EXPECT_GT(rows.size(), 50u);
    EXPECT_EQ(rows, expected);
}

TEST(Findings, AreOrderedByPathAndLineAndFoundOnce) {
    Findings findings;
    findings.add("unknown-key", "/b", 10, "x", "do");
    findings.add("unknown-key", "/b", 9, "x", "do");
    findings.add("misspelt-key", "/a", 11, "y", "do");
    findings.add("unknown-key", "/b", 9, "x", "do");
    ASSERT_EQ(findings.all().size(), 3u);
    EXPECT_EQ(findings.all()[0].path, "/a");
    EXPECT_EQ(findings.all()[1].line, 9);
    EXPECT_EQ(findings.all()[2].line, 10);
    EXPECT_EQ(findings.count(Severity::Error), 1u);
    EXPECT_EQ(findings.count(Severity::Warning), 2u);
    EXPECT_ANY_THROW(findings.add("no-such-code", "/a", 0, "", ""));
}

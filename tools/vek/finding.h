#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

// What can be found wrong with a shared tree. Codes are for scripts and stay as they are;
// docs/checking-a-tree.md has a line for each.

enum class Severity {
    Error,    // the bridge cannot do something, or does it wrong
    Warning,  // it works for some users or until something changes, or may not be meant
};

const char* severityWord(Severity severity);

struct FindingKind {
    const char* code;
    Severity severity;
    const char* meaning;
};

const std::vector<FindingKind>& findingKinds();

struct Finding {
    const FindingKind* kind;
    std::string path;
    int line;            // from 1; 0 where it is about the whole file or folder
    std::string what;    // a sentence
    std::string advice;  // a sentence that says what to do
};

class Findings {
public:
    static constexpr std::size_t kMostOfACode = 20;

    // `code` is one of the table's. What was found already is not found again. Of a code in one
    // file only the first kMostOfACode are kept, the others are counted.
    void add(const char* code, const std::string& path, int line, const std::string& what,
             const std::string& advice);
    // Adds a finding for each code and file of which some were only counted.
    void tellWhatWasLeftOut();
    // Whether anything was found of just this file or folder.
    bool areAbout(const std::string& path) const;
    // The same of a folder, or of anything in it.
    bool areIn(const std::string& folder) const;
    // By path and line.
    const std::vector<Finding>& all() const { return m_all; }
    std::size_t count(Severity severity) const;

private:
    using Place = std::pair<std::string, const FindingKind*>;

    void insert(const Finding& finding);

    std::vector<Finding> m_all;
    std::map<Place, std::size_t> m_counts;
};

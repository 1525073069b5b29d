#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

#include "tools/vek/finding.h"

// Looks at single files and folders of a tree, as the bridge would: links are followed.

struct TreeLook {
    enum class Kind { Missing, File, Folder, Other, BrokenLink, Hidden };
    Kind kind;
    mode_t mode = 0;  // permissions, of files and folders
};

inline constexpr char kHiddenLink[] = "It is a link to a place that this user cannot reach.";

// Hidden: this user cannot tell what is there.
TreeLook lookAt(const std::string& path);
bool isThere(const std::string& path);
bool isLink(const std::string& path);
// The first folder on the way to `folder`, or that itself, in whose place something else stands;
// empty where there is none.
std::string whatIsNoFolder(const std::string& folder);
// Of a path at which the look says Hidden, the folder that hides it.
std::string closedFolderOf(const std::string& path);
// The path as a word for the shell.
std::string shellWord(const std::string& path);
// Whether this user can list the folder and reach what is in it.
bool canLookInto(const std::string& folder);

// The names in a folder, sorted; those of folders themselves, not of links to them, in `folders`.
std::vector<std::string> namesIn(const std::string& folder,
                                 std::vector<std::string>* folders = nullptr);

// Whether the folder is there and can be looked into; what is wrong with it otherwise, or with its
// permissions, is found.
bool checkFolder(Findings& findings, const std::string& path);

// The largest text files that are looked at.
constexpr std::int64_t kLargestList = 16 << 20;
constexpr std::int64_t kLargestText = 1 << 20;
constexpr std::int64_t kLargestPath = 4096;  // what the bridge reads of such a file

enum class TextEnd { Plain, MayBeNul };

// Whether `text` is now what the file holds, less a NUL that may be its end. What is wrong with the
// file otherwise, or with its permissions, is found; a missing file is not. `wanted` are the
// permissions that every user needs.
bool readText(Findings& findings, const std::string& path, mode_t wanted, std::int64_t limit,
              std::string& text, TextEnd end = TextEnd::Plain);

struct TextLine {
    int number;
    std::string text;  // without blanks and tabs at its ends; never empty
};
// A line ends at a line feed, a carriage return, or both.
std::vector<TextLine> linesOf(const std::string& text);

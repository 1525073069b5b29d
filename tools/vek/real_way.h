#pragma once

#include <string>
#include <vector>

// The folders that are gone through to a path once the links on its way are followed.

// From the root on, up to one through which this user cannot go or behind which nothing is; the
// path's own end is none of them.
std::vector<std::string> foldersOnTheWayTo(const std::string& path);
// Behind the links of the path the first folder that is closed to some users; empty where there is
// none. The modes tell it, since root gets through everywhere.
std::string closedBehindLinks(const std::string& path);
// The same of what lies in a folder; empty too where the folder itself is reached so.
std::string closedOnTheWayFrom(const std::string& folder, const std::string& path);
// The first folder on the way that root has closed to everybody else; empty where there is none.
std::string closedByRoot(const std::string& path);
// Whether a user may be told to change the folder's mode: it lies in the tree, or is that user's
// own. What is root's outside the tree, or another user's, is left alone.
bool mayBeOpened(const std::string& folder);

#pragma once

#include <string>
#include <vector>

// The hub's text files, through which the host and this application hand objects to each other.
class Hub {
public:
    // `tree` is the folder that holds VekHub and VekApps.
    explicit Hub(const std::string& tree)
        : m_folder(tree + "/VekHub/"), m_apps(tree + "/VekApps/") {}

    // The id of the application that the user selected; empty when there is none.
    std::string selectedApplication() const;
    // One entry per object: the path of its exchange file without the extension.
    std::vector<std::string> objects() const;
    // Empty on success, otherwise a sentence.
    std::string writeObjects(const std::vector<std::string>& objects) const;
    // What a line "KEY = value" of <application>_Settings.txt in the application's folder says, the
    // key in any letter case; empty when there is none.
    std::string setting(const std::string& application, const std::string& key) const;

private:
    std::string m_folder;
    std::string m_apps;
};

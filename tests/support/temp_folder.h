#pragma once

#include <string>

// A fresh empty folder that goes away, with all that is in it, at the end of the test.
class TempFolder {
public:
    TempFolder();
    explicit TempFolder(const std::string& parent);  // made below `parent`
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    const std::string& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

// These fail the running test when they cannot do what they are asked.
void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path);
void makeFolders(const std::string& path);  // with its parents

bool fileIsThere(const std::string& path);

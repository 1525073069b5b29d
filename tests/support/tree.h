#pragma once

#include <string>

// The shared folder tree of the tests, with empty folders VekHub, VekApps and VekProjects/Default.
// It lies where the library looks for it; the tests see a private one there. One at a time.
class Tree {
public:
    Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree();

    static std::string root() { return "/Users/Shared/Kelvaro"; }
    static std::string hub(const std::string& name) { return root() + "/VekHub/" + name; }
    static std::string app(const std::string& id, const std::string& name) {
        return root() + "/VekApps/" + id + "/" + name;
    }
    static std::string project(const std::string& name) {
        return root() + "/VekProjects/Default/" + name;
    }
    static std::string objectList() { return hub("Vek_ObjectList.txt"); }

    // Makes an application's folder with this descriptor.
    void addApp(const std::string& id, const std::string& descriptor) const;
};

#include "tests/tools/check_plant_kit.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

Found foundOf(const std::string& id, const std::string& file, const std::string& found) {
    return foundIn("VekApps/" + id + (file.empty() ? "" : "/" + file), found);
}

}  // namespace

Found foundIn(const std::string& path, const std::string& found) {
    const std::size_t colon = std::min(found.find(':'), found.size());
    return {found.substr(0, colon) + " " + path + found.substr(colon)};
}

std::string root(const std::string& name) {
    return Tree::root() + "/" + name;
}

void setMode(const std::string& path, mode_t mode) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0) << path;
}

void makeShared(const std::string& folder) {
    makeFolders(folder);
    setMode(folder, 0777);
}

void writeShared(const std::string& path, const std::string& bytes) {
    writeFile(path, bytes);
    setMode(path, 0666);
}

std::string appendLine(const std::string& path, const std::string& line) {
    const std::string text = readFile(path) + line + "\n";
    writeFile(path, text);
    return std::to_string(std::count(text.begin(), text.end(), '\n'));
}

Plant lineOf(const char* mistake, const char* code, const char* line) {
    return {mistake, kOthers, [=] {
                const std::string descriptor = Tree::app("Lines", "Vek_Info.txt");
                if (!fileIsThere(descriptor)) addGoodApp("Lines");
                return foundOf("Lines", "Vek_Info.txt",
                               code + (":" + appendLine(descriptor, line)));
            }};
}

Plant objectOf(const char* mistake, const char* code, const char* line) {
    return {mistake, kOthers, [=] {
                return foundIn("VekHub/Vek_ObjectList.txt",
                               code + (":" + appendLine(Tree::objectList(), line)));
            }};
}

Plant descriptorOf(const char* id, const std::string& descriptor, const std::string& found,
                   Plant::With with) {
    return {id, with, [=] {
                addGoodApp(id);
                writeFile(Tree::app(id, "Vek_Info.txt"), descriptor);
                return foundOf(id, "Vek_Info.txt", found);
            }};
}

Plant linesOf(const char* id, const std::string& lines, const std::string& found) {
    return {id, kOthers, [=] {
                addGoodApp(id, lines);
                return foundOf(id, "Vek_Info.txt", found);
            }};
}

Plant fileOf(const char* id, const char* name, const std::string& bytes, const std::string& found,
             Plant::With with) {
    return {id, with, [=] {
                addGoodApp(id);
                writeShared(Tree::app(id, name), bytes);
                return foundOf(id, name, found);
            }};
}

Plant modeOf(const char* id, const char* name, mode_t mode, const char* code) {
    return {id, kOthers, [=] {
                addGoodApp(id);
                setMode(Tree::app(id, name), mode);
                return foundOf(id, name, code);
            }};
}

Plant editOf(const char* id, const char* name, const std::string& bytes, mode_t mode,
             const std::string& found, Plant::With with) {
    return {id, with, [=] {
                addGoodApp(id);
                const std::string text = readFile(Tree::app(id, "Vek_Info.txt"));
                writeFile(Tree::app(id, "Vek_Info.txt"),
                          text.substr(0, text.find("edit.sh")) + name + "\"\n");
                writeFile(Tree::app(id, name), bytes);
                setMode(Tree::app(id, name), mode);
                return foundOf(id, name, found);
            }};
}

void addGoodApp(const std::string& id, const std::string& lines) {
    makeShared(Tree::root() + "/VekApps/" + id);
    for (const char* script : {"init.sh", "edit.sh"}) {
        writeFile(Tree::app(id, script), "#!/bin/sh\nexit 0\n");
        setMode(Tree::app(id, script), 0755);
    }
    writeFile(Tree::app(id, "Vek_Info.txt"),
              "NAME \"The " + id.substr(0, id.find('\n')) +
                  "\"\nEXTENSION \".vek\"\nINIT_COMMAND \"init.sh\"\nEDIT_COMMAND \"edit.sh\"\n" +
                  lines);
    setMode(Tree::app(id, "Vek_Info.txt"), 0644);
}

void addBundle(const std::string& path, const std::string& bytes) {
    makeFolders(path + "/Contents/MacOS");
    writeFile(path + "/Contents/Info.plist",
              "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleExecutable</key>"
              "<string>Example</string></dict></plist>\n");
    writeFile(path + "/Contents/MacOS/Example", bytes);
    setMode(path + "/Contents/MacOS/Example", 0755);
}

#include "session.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

namespace {

std::string noteIn(const std::string& tree) {
    return tree + "/VekApps/Example/Example_Running.txt";
}

bool isThere(const std::string& path) {
    return std::ifstream(path).good();
}

}  // namespace

std::string stayOpen(const std::string& tree) {
    using namespace std::chrono_literals;
    constexpr int kMostTicks = 600;
    const std::string note = noteIn(tree);
    std::ofstream file(note);
    file << "Example is running. It ends when this file is gone.\n";
    file.close();
    if (!file) return "The application cannot write into the tree: " + note;
    for (int i = 0; i < kMostTicks && isThere(note); ++i) std::this_thread::sleep_for(100ms);
    std::remove(note.c_str());
    return "";
}

std::string quit(const std::string& tree) {
    return std::remove(noteIn(tree).c_str()) == 0 ? "" : "Example is not running.";
}

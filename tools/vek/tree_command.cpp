#include <fmt/format.h>

#include <fstream>
#include <iterator>

#include "tools/vek/commands.h"
#include "tools/vek/host_windows.h"
#include "tools/vek/window_description.h"

int showTree(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        fmt::print(stderr, "vek: The file cannot be read: {}\n", path);
        return 2;
    }
    const std::string json((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
    HostWindows windows;
    try {
        describeWindows(windows, json);
    } catch (const std::exception& error) {
        fmt::print(stderr, "vek: {}: {}\n", path, error.what());
        return 1;
    }
    fmt::print("{}", windows.draw());
    return 0;
}

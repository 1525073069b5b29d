// Tries the include path of every layer of the library on a header of every other.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

struct Layer {
    const char* name;
    const char* header;
    std::set<std::string> sees;
};

const Layer kLayers[] = {
    {"foundation", "foundation/bx_string.h", {"foundation"}},
    {"os", "os/bx_file.h", {"foundation", "os"}},
    {"config", "config/config_line.h", {"foundation", "os", "config"}},
    {"bridge", "bridge/bx_vek.h", {"foundation", "os", "config", "bridge"}},
    {"formats", "formats/bx_vek_file.h", {"foundation", "os", "config", "bridge", "formats"}},
    {"host", "host/accessors.h", {"foundation", "host"}},
    {"exports",
     "exports/call_frame.h",
     {"foundation", "os", "config", "bridge", "formats", "host", "exports"}},
};

// The compiler's options for the include path of each layer.
std::map<std::string, std::string> includePaths() {
    std::map<std::string, std::string> options;
    std::ifstream views(VEK_LAYER_VIEWS);
    std::string layer, path, folder;
    while (views >> layer >> path) {
        std::istringstream folders(path);
        while (std::getline(folders, folder, ':')) options[layer] += " -I '" + folder + "'";
    }
    return options;
}

bool compiles(const std::string& includePath, const std::string& header) {
    const TempFolder folder;
    writeFile(folder / "source.cpp", "#include \"" + header + "\"\n");
    const std::string command = "cd '" + folder.path() + "' && '" VEK_COMPILER "' -std=c++17" +
                                includePath + " -E -o /dev/null source.cpp 2>errors";
    if (std::system(command.c_str()) == 0) return true;
    const std::string errors = readFile(folder / "errors");
    const auto tells = [&](const std::string& text) { return errors.find(text) != errors.npos; };
    // The header was not found, and nothing else went wrong.
    EXPECT_TRUE(tells(header + ": No such file") || tells("'" + header + "' file not found"))
        << errors;
    return false;
}

}  // namespace

TEST(Layers, AreAllTried) {
    std::set<std::string> built, tried;
    for (const auto& layer : includePaths()) built.insert(layer.first);
    for (const Layer& layer : kLayers) tried.insert(layer.name);
    EXPECT_EQ(tried, built);
}

TEST(Layers, FindTheHeadersOfTheLayersThatTheyUseAndOfNoOther) {
    const auto paths = includePaths();
    for (const Layer& layer : kLayers) {
        ASSERT_EQ(paths.count(layer.name), 1u) << layer.name;
        for (const Layer& other : kLayers) {
            EXPECT_EQ(compiles(paths.at(layer.name), other.header),
                      layer.sees.count(other.name) == 1)
                << layer.name << " including " << other.header;
        }
    }
}

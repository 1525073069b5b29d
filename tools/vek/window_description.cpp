#include "tools/vek/window_description.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "tools/vek/host_windows.h"

namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 1000;

std::string textIn(const Json& value, const std::string& key) {
    if (!value.is_string()) throw std::runtime_error("\"" + key + "\" of a window is a text");
    return value.get<std::string>();
}

// The descriptions that a value holds.
std::vector<const Json*> descriptionsIn(const Json& value) {
    std::vector<const Json*> all;
    if (value.is_array()) {
        for (const Json& one : value) all.push_back(&one);
    } else {
        all.push_back(&value);
    }
    return all;
}

void describe(HostWindows& windows, HostWindow& window, const Json& description, int depth);

void describeBelow(HostWindows& windows, HostWindow& window, const std::string& key,
                   const Json& value, int depth) {
    if (depth > kDeepest) throw std::runtime_error("the windows are nested too deep");
    for (const Json* one : descriptionsIn(value)) {
        HostWindow& below =
            key == "entries" ? windows.addEntry(window, "") : windows.add(&window, "");
        describe(windows, below, *one, depth + 1);
    }
}

void describe(HostWindows& windows, HostWindow& window, const Json& description, int depth) {
    if (!description.is_object()) throw std::runtime_error("a window is described by an object");
    for (const auto& [key, value] : description.items()) {
        if (key == "name") {
            window.name = textIn(value, key);
        } else if (key == "label") {
            window.label = textIn(value, key);
        } else if (key == "view" && value.is_boolean()) {
            if (value.get<bool>()) windows.setView(window);
        } else if (key == "entries") {
            window.isMenu = true;
            describeBelow(windows, window, key, value, depth);
        } else if (key == "children") {
            describeBelow(windows, window, key, value, depth);
        } else {
            throw std::runtime_error("a window has no \"" + key + "\"");
        }
    }
}

}  // namespace

void describeWindows(HostWindows& windows, const std::string& json) {
    const Json all = Json::parse(json);
    for (const Json* one : descriptionsIn(all)) {
        describe(windows, windows.add(nullptr, ""), *one, 0);
    }
}

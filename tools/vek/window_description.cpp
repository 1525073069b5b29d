#include "tools/vek/window_description.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "tools/vek/host_windows.h"

namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 1000;

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

// Throws for what describes no window, before any is made.
void check(const Json& description, int depth) {
    if (!description.is_object()) throw std::runtime_error("a window is described by an object");
    if (depth > kDeepest) throw std::runtime_error("the windows are nested too deep");
    for (const auto& [key, value] : description.items()) {
        if (key == "name" || key == "label") {
            if (!value.is_string())
                throw std::runtime_error("\"" + key + "\" of a window is a text");
        } else if (key == "view") {
            if (!value.is_boolean())
                throw std::runtime_error("\"view\" of a window is true or false");
        } else if (key == "entries" || key == "children") {
            for (const Json* one : descriptionsIn(value)) check(*one, depth + 1);
        } else {
            throw std::runtime_error("a window has no \"" + key + "\"");
        }
    }
}

void make(HostWindows& windows, HostWindow& window, const Json& description) {
    window.name = description.value("name", "");
    window.label = description.value("label", "");
    if (description.value("view", false)) windows.setView(window);
    if (const auto entries = description.find("entries"); entries != description.end()) {
        window.isMenu = true;
        for (const Json* one : descriptionsIn(*entries)) {
            make(windows, windows.addEntry(window, ""), *one);
        }
    }
    if (const auto children = description.find("children"); children != description.end()) {
        for (const Json* one : descriptionsIn(*children))
            make(windows, windows.add(&window, ""), *one);
    }
}

}  // namespace

void describeWindows(HostWindows& windows, const std::string& json) {
    const Json all = Json::parse(json);
    const std::vector<const Json*> descriptions = descriptionsIn(all);
    for (const Json* one : descriptions) check(*one, 0);
    for (const Json* one : descriptions) make(windows, windows.add(nullptr, ""), *one);
}

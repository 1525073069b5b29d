// Finds windows by whatever path in whatever tree, held against a plain search, and moves one of
// them, after which all links still fit. The input's first two lines are the paths of the item and
// of its neighbour, with the offset as the second one's first character; each further line is a
// window: the window it belongs to, what it is there, and its name.
//
// The trees do not loop: a walk through one that does ends after two million steps, which is too
// slow for a fuzzer.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exports/vek.h"
#include "fuzz/support.h"
#include "host/dorvia4_helper.h"
#include "tools/vek/host_windows.h"

namespace {

constexpr std::size_t kMostWindows = 200;

std::string upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

void addWindow(HostWindows& windows, const std::string& line) {
    const auto at = [&](std::size_t i) {
        return i < line.size() ? static_cast<unsigned char>(line[i]) : 0u;
    };
    HostWindow& parent = windows.windows()[at(0) % windows.windows().size()];
    const std::string name = line.size() > 2 ? line.substr(2) : std::string();
    switch (at(1) % 8) {
        case 0:
            windows.add(nullptr, name);
            break;
        case 1:
            windows.addEntry(parent, name);
            break;
        case 2: {
            // An entry that stands in the tree too.
            HostWindow& child = windows.add(&parent, name);
            windows.windows().front().entries.push_back(&child);
            break;
        }
        case 3:
            windows.add(&parent, name).label = "label";
            break;
        default:
            windows.add(&parent, name);
            break;
    }
}

HostWindow* slowFind(HostWindow* from, const std::string& path);

HostWindow* match(HostWindow* candidate, const std::string& path) {
    const std::string name = candidate->shownName().c_str();
    if (name.empty()) return slowFind(candidate, path);
    const std::size_t colon = path.find(':');
    if (upper(name) != upper(path.substr(0, colon))) return nullptr;
    const std::string rest = colon == path.npos ? "" : path.substr(colon + 1);
    return rest.empty() ? candidate : slowFind(candidate, rest);
}

// Below `from`, which is not null; `path` is not empty.
HostWindow* slowFind(HostWindow* from, const std::string& path) {
    std::vector<HostWindow*> candidates;
    if (from->isMenu) {
        for (HostWindow* entry : from->entries) {
            if (!entry->parent) candidates.push_back(entry);
        }
    } else {
        for (HostWindow* child = from->child; child; child = child->next) {
            candidates.push_back(child);
        }
    }
    for (HostWindow* candidate : candidates) {
        if (HostWindow* const found = match(candidate, path)) return found;
    }
    return nullptr;
}

HostWindow* find(HostWindows& windows, const std::string& path) {
    HostWindow* const root = &windows.windows().front();
    HostWindow* const expected = path.empty() ? root : slowFind(root, path);
    AWin* const came = Dorvia4Helper::getWindowFromPath(root->win(), path.c_str());
    expect(HostWindow::of(came) == expected);
    return expected;
}

void checkLinks(HostWindows& windows) {
    for (HostWindow& window : windows.windows()) {
        if (window.next) {
            expect(window.next->previous == &window && window.next->parent == window.parent);
        }
        if (window.previous) expect(window.previous->next == &window);
        if (window.child) expect(window.child->parent == &window && !window.child->previous);
        if (!window.parent) continue;
        const HostWindow* sibling = window.parent->child;
        while (sibling && sibling != &window) sibling = sibling->next;
        expect(sibling == &window);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    std::string itemPath = input.line().c_str();
    const double offset = static_cast<double>(input.byte()) - 64;
    std::string anchorPath = input.line().c_str();
    HostWindows windows;
    windows.add(nullptr, "root");
    while (!input.isEmpty() && windows.windows().size() < kMostWindows) {
        addWindow(windows, input.line());
    }
    expect(Dorvia4Helper::init(windows.data()));
    const HostWindow* const item = find(windows, itemPath);
    const HostWindow* const anchor = find(windows, anchorPath);
    const bool canBeTried = item && anchor && anchor->parent;
    const float result =
        SetItemPos(itemPath.data(), offset, anchorPath.data(), 0, nullptr, 0, windows.data());
    expect(result == (canBeTried ? 0.0f : -1.0f));
    checkLinks(windows);
    return 0;
}

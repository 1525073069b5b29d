#include "host/dorvia4_helper.h"

#include <vector>

#include "host/window_links.h"

ADoc* Dorvia4Helper::s_doc = nullptr;
AWin* Dorvia4Helper::s_rootWindow = nullptr;

namespace {

void linkBehind(AWin* w, AWin* after, AWin* before) {
    setPrevOf(w, after);
    setNextOf(w, before);
    if (after) setNextOf(after, w);
    if (before) setPrevOf(before, w);
}

// Whether `inner` is `w`, or is below it as a child or as an entry of a menu without a link up.
// Also where what is below does not end.
bool holds(AWin* w, AWin* inner) {
    WalkLimit limit;
    std::vector<AWin*> below{w};
    while (!below.empty()) {
        AWin* const window = below.back();
        below.pop_back();
        if (window == inner) return true;
        const int entries = entryCountOf(window);
        for (int i = 0; i < entries; ++i) {
            if (!limit.step()) return true;
            AWin* const entry = entryOf(window, i);
            // One that has a parent is come to from there.
            if (entry && !parentOf(entry)) below.push_back(entry);
        }
        for (AWin* child = firstChildOf(window); child; child = nextOf(child)) {
            if (!limit.step()) return true;
            below.push_back(child);
        }
    }
    return false;
}

// The child behind which index >= 1 leads: the last one where the children end before it. Null
// where they do not end.
AWin* childBefore(AWin* first, int index) {
    WalkLimit limit;
    AWin* after = first;
    for (int i = 1; i < index; ++i) {
        if (!limit.step()) return nullptr;
        AWin* const next = nextOf(after);
        if (!next) break;
        after = next;
    }
    return after;
}

bool moveToFront(AWin* w, AWin* parent, AWin* first) {
    if (first == w) return false;
    Dorvia4Helper::disconnectWindow(w);
    setParentOf(w, parent);
    setFirstChildOf(parent, w);
    linkBehind(w, nullptr, first);
    return true;
}

bool moveBehind(AWin* w, AWin* parent, AWin* after) {
    if (!after) return false;
    AWin* const before = nextOf(after);
    // Required(R90): also for the first child and index 1, and for an item that is there already.
    if (after == w || before == w) return false;
    Dorvia4Helper::disconnectWindow(w);
    setParentOf(w, parent);
    linkBehind(w, after, before);
    return true;
}

}  // namespace

bool Dorvia4Helper::init(char** hostData) {
    constexpr int kDocument = 2, kTables = 8;
    s_rootWindow = nullptr;
    s_doc = hostData ? reinterpret_cast<ADoc*>(hostData[kDocument]) : nullptr;
    DFunctionsHelper::setFuncTable(hostData ? reinterpret_cast<DorviaFuncTable*>(hostData[kTables])
                                            : nullptr);
    if (!s_doc) return false;
    AWinDoc* const view = ADocHelper::getActiveView(s_doc);
    if (view) s_rootWindow = getRootWindow(AWinDocHelper::convertToWin(view));
    return s_rootWindow != nullptr;
}

AWin* Dorvia4Helper::getRootWindow(AWin* w) {
    WalkLimit limit;
    while (w && limit.step()) {
        AWin* const parent = parentOf(w);
        if (parent == w) return w;
        AWin* const up = parent ? parent : prevOf(w);
        if (!up) return w;
        w = up;
    }
    return nullptr;
}

AWin* Dorvia4Helper::getParentWindow(AWin* w) {
    return w ? parentOf(w) : nullptr;
}

const char* Dorvia4Helper::getWindowName(AWin* w) {
    return nameOf(w).characters;
}

int Dorvia4Helper::getWindowChildIndex(AWin* w) {
    AWin* const parent = getParentWindow(w);
    if (!parent) return -1;
    WalkLimit limit;
    int index = 0;
    for (AWin* child = firstChildOf(parent); child && limit.step(); child = nextOf(child)) {
        if (child == w) return index;
        ++index;
    }
    return -1;
}

bool Dorvia4Helper::disconnectWindow(AWin* w) {
    if (!w) return false;
    AWin* const parent = parentOf(w);
    AWin* const previous = prevOf(w);
    AWin* const next = nextOf(w);
    if (!parent && !previous && !next) return false;
    if (parent && firstChildOf(parent) == w) setFirstChildOf(parent, next);
    if (previous) setNextOf(previous, next);
    if (next) setPrevOf(next, previous);
    setParentOf(w, nullptr);
    setPrevOf(w, nullptr);
    setNextOf(w, nullptr);
    return true;
}

bool Dorvia4Helper::moveWindow(AWin* w, AWin* parent, int index) {
    // Inside itself it would be lost to the tree with all that it holds.
    if (!w || !parent || holds(w, parent)) return false;
    AWin* const first = firstChildOf(parent);
    if (first && index >= 1) return moveBehind(w, parent, childBefore(first, index));
    return moveToFront(w, parent, first);
}

#pragma once

#include "host/accessors.h"
#include "host/host_record.h"

// The links between windows, which the host keeps in their graphix. A window for which the host has
// none is without links. `w` is not null.

template <class Get>
AWin* linkOf(AWin* w, const Get& get) {
    AGraphix* const graphix = AWinHelper::convertToGraphix(w);
    return graphix ? get(graphix) : nullptr;
}
template <class Set>
void setLinkOf(AWin* w, const Set& set, AWin* linked) {
    if (AGraphix* const graphix = AWinHelper::convertToGraphix(w)) set(graphix, linked);
}

inline AWin* parentOf(AWin* w) {
    return linkOf(w, AGraphixHelper::getParentWindow);
}
inline AWin* firstChildOf(AWin* w) {
    return linkOf(w, AGraphixHelper::getChildWindow);
}
inline AWin* nextOf(AWin* w) {
    return linkOf(w, AGraphixHelper::getNextWindow);
}
inline AWin* prevOf(AWin* w) {
    return linkOf(w, AGraphixHelper::getPrevWindow);
}
inline void setParentOf(AWin* w, AWin* parent) {
    setLinkOf(w, AGraphixHelper::setParentWindow, parent);
}
inline void setFirstChildOf(AWin* w, AWin* child) {
    setLinkOf(w, AGraphixHelper::setChildWindow, child);
}
inline void setNextOf(AWin* w, AWin* next) {
    setLinkOf(w, AGraphixHelper::setNextWindow, next);
}
inline void setPrevOf(AWin* w, AWin* previous) {
    setLinkOf(w, AGraphixHelper::setPrevWindow, previous);
}

inline bool isMenu(AWin* w) {
    return hostKind(AWinHelper::getCmdState(w)) == kHostPulldownMenu;
}

// The entries of a pull-down menu; 0 of a window that is none.
inline int entryCountOf(AWin* w) {
    AWinPulldown* const menu = isMenu(w) ? AWinPulldownHelper::convertFromWin(w) : nullptr;
    return menu ? AWinPulldownHelper::getWinsCount(menu) : 0;
}
inline AWin* entryOf(AWin* menu, int index) {
    return AWinPulldownHelper::getWin(AWinPulldownHelper::convertFromWin(menu), index);
}

// The item's label, or else its text.
inline HostText nameOf(AWin* w) {
    if (!w) return {};
    const HostText label = hostLabel(AWinHelper::getCmdState(w));
    return label.characters ? label : hostText(AWinHelper::getText(w));
}

// How far a walk may go: in a tree of a million each window is come to twice, as a child and as an
// entry of a menu.
class WalkLimit {
public:
    // False when the walk has gone too far.
    bool step() { return m_left-- > 0; }

private:
    int m_left = 2000000;
};

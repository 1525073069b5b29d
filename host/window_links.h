#pragma once

#include "host/accessors.h"
#include "host/host_record.h"

// The links between windows, which the host keeps in their graphix. None of them may be null where
// a window is asked for its links.

inline AWin* parentOf(AWin* w) {
    return AGraphixHelper::getParentWindow(AWinHelper::convertToGraphix(w));
}
inline AWin* firstChildOf(AWin* w) {
    return AGraphixHelper::getChildWindow(AWinHelper::convertToGraphix(w));
}
inline AWin* nextOf(AWin* w) {
    return AGraphixHelper::getNextWindow(AWinHelper::convertToGraphix(w));
}
inline AWin* prevOf(AWin* w) {
    return AGraphixHelper::getPrevWindow(AWinHelper::convertToGraphix(w));
}
inline void setParentOf(AWin* w, AWin* parent) {
    AGraphixHelper::setParentWindow(AWinHelper::convertToGraphix(w), parent);
}
inline void setFirstChildOf(AWin* w, AWin* child) {
    AGraphixHelper::setChildWindow(AWinHelper::convertToGraphix(w), child);
}
inline void setNextOf(AWin* w, AWin* next) {
    AGraphixHelper::setNextWindow(AWinHelper::convertToGraphix(w), next);
}
inline void setPrevOf(AWin* w, AWin* previous) {
    AGraphixHelper::setPrevWindow(AWinHelper::convertToGraphix(w), previous);
}

// The item's label, or else its text.
inline HostText nameOf(AWin* w) {
    if (!w) return {};
    const HostText label = hostLabel(AWinHelper::getCmdState(w));
    return label.characters ? label : hostText(AWinHelper::getText(w));
}

// How far a walk may go: each window of a tree of a million is looked at once as a child and once
// as an entry of a menu.
class WalkLimit {
public:
    // False when the walk has gone too far.
    bool step() { return m_left-- > 0; }

private:
    int m_left = 2000000;
};

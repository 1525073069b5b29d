#include "exports/library_state.h"

BXArray<BXVekApp> s_vekApps;
BXArray<BXString> s_objectList;

const BXVekApp* vekAppAt(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= s_vekApps.size()) return nullptr;
    return &s_vekApps[static_cast<std::size_t>(index)];
}

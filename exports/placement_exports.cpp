#include <algorithm>
#include <climits>
#include <cmath>

#include "exports/call_frame.h"
#include "host/dorvia4_helper.h"

namespace {

// Required(R91): a fixed allowance for what scripts round off, no rounding: 0.85 is 1, 0.75 is 0.
double wholeOffset(double value) {
    if (std::isnan(value)) return 0.0;
    return std::trunc(value >= 0.0 ? value + 0.2 : value - 0.2);
}

int placeFor(double value, AWin* anchor) {
    const double place = wholeOffset(value) + Dorvia4Helper::getWindowChildIndex(anchor);
    return static_cast<int>(std::clamp<double>(place, INT_MIN, INT_MAX));
}

}  // namespace

VEK_DEFINE(SetItemPos) {
    return guarded(-1.0f, [&] {
        if (!Dorvia4Helper::init(hostData)) return -1.0f;
        AWin* const root = Dorvia4Helper::s_rootWindow;
        AWin* const item = Dorvia4Helper::getWindowFromPath(root, text);
        AWin* const anchor = Dorvia4Helper::getWindowFromPath(root, buffer1);
        AWin* const parent = Dorvia4Helper::getParentWindow(anchor);
        if (!item || !parent) return -1.0f;
        Dorvia4Helper::moveWindow(item, parent, placeFor(value, anchor));
        return 0.0f;
    });
}

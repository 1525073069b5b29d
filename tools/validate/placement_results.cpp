#include "tools/validate/results.h"

namespace {

// The children of Tool in their order.
std::string order(HostWindows& windows) {
    std::string names;
    for (const HostWindow& window : windows.windows()) {
        if (window.name != "Tool") continue;
        for (const HostWindow* child = window.child; child; child = child->next) {
            names += (names.empty() ? "" : " ") + child->name;
        }
    }
    return names;
}

// Places the item by this offset from the anchor, in a new tree.
void expectPlaced(Session& session, float stated, const std::string& item, double offset,
                  const std::string& anchor, const std::string& children) {
    const auto windows = makeHostWindows();
    HostBlock path = HostBlock::in(anchor);
    session.expect(stated, "SetItemPos", item, offset, path.data(), nullptr, windows->data());
    session.expectThat(
        order(*windows) == children,
        "SetItemPos by " + asText(offset) + " left " + order(*windows) + "; stated is " + children);
}

}  // namespace

void checkPlacementResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "placement");
    tree::make();
    Session session(settings, report);
    const std::string same = "Import Export Last";
    expectPlaced(session, 0.0f, "Tool:Last", 0.0, "Tool:Import", "Last Import Export");
    expectPlaced(session, 0.0f, "tool:LAST", 1.0, "Tool:Import", "Import Last Export");
    expectPlaced(session, 0.0f, "Tool:Last", 0.85, "Tool:Import", "Import Last Export");
    expectPlaced(session, 0.0f, "Tool:Last", 0.75, "Tool:Import", "Last Import Export");
    for (const double behind : {-1.0, -0.85}) {
        expectPlaced(session, 0.0f, "Tool:Last", behind, "Tool:Export", "Last Import Export");
    }
    expectPlaced(session, 0.0f, "Tool:Last", -0.75, "Tool:Export", "Import Last Export");
    expectPlaced(session, 0.0f, "Tool:Export", 1.0, "Tool:Import", same);
    // An item is never moved into itself.
    expectPlaced(session, 0.0f, "Tool:Import", 1.0, "Tool:Import", same);
    expectPlaced(session, 0.0f, "Tool", 1.0, "Tool:Import", same);
    expectPlaced(session, -1.0f, "Tool:Nothing", 1.0, "Tool:Import", same);
    expectPlaced(session, -1.0f, "Tool:Last", 1.0, "Tool:Nothing", same);
    // The first top-level window is what paths begin at, and has no parent.
    expectPlaced(session, -1.0f, "Tool:Last", 1.0, "", same);
    HostBlock anchor = HostBlock::in("Tool:Import");
    session.expect(-1.0f, "SetItemPos", "Tool:Last", 1.0, anchor.data());
}
